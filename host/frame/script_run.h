#pragma once

#include "script/script_runtime.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

class CBaseWorld;

namespace tarn {

class ScriptRunLog;

/// Runs a scene function's text, which the scene does not keep, and goes on with it while it waits. What a run changes in
/// the scene is one step of undo. Once something ran,
/// nothing that scripts hold outlives this object.
class ScriptRun : public QObject {
    Q_OBJECT

public:
    /// Both must outlive it.
    /// `arguments` are what the function is called with.
    ScriptRun(QString function_name, CBaseWorld& world, ScriptRunLog& log, std::vector<ScriptValue> arguments = {});
    ~ScriptRun() override;

    /// Ends the run before it.
    void start(const QString& text);
    /// Drops what waits.
    void stop();
    bool is_waiting() const { return m_ticks.isActive(); }

Q_SIGNALS:
    /// Something was added to the log, or the run waits, or waits no longer.
    void went_on();

private:
    void hear_runtime();
    void tick();
    void finish();
    void take_back();
    void tell(const ScriptResult& result);
    void tell_arguments();
    void add_error(const ScriptError& error);
    ScriptRuntime& runtime() const;

    QString m_name;
    CBaseWorld& m_world;
    ScriptRunLog& m_log;
    std::vector<ScriptValue> m_arguments;
    QTimer m_ticks;
    QElapsedTimer m_since_tick;
    bool m_started = false;
    /// The step of undo of the run under way, which the world may not have.
    std::optional<std::shared_ptr<void>> m_edit;
    std::function<void(const QString&)> m_printed_before;
    std::function<void(const ScriptError&)> m_failed_before;
};

} // namespace tarn
