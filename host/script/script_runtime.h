#pragma once

#include "script_api.h"
#include "script_limits.h"

#include <optional>

class CConfigScene;
class QRandomGenerator;

namespace tarn {

namespace scene_script {
class Machine;
}

/// What went wrong in a scene function, for a person. `line` is 0 where no line is to blame.
struct ScriptError {
    QString function{};
    int line = 0;
    QString message{};
    bool stopped = false; ///< at a limit, rather than by an error of its own

    QString text() const; ///< all of it in one line
};

struct ScriptResult {
    Value value{};          ///< what the function returned; none where that has no form as a Value
    bool suspended = false; ///< it waits; tick() goes on with it
    quint64 call = 0;       ///< what on_ended calls a call that waits; none other of the runtime ever has it
    std::optional<ScriptError> error{};

    bool ok() const { return !error; }
};

/// Runs the functions of a scene in a sandbox of their own. Globals that they write last until reset(). Any of this may
/// be called from inside a verb, the destructor too.
class ScriptRuntime {
public:
    /// `functions` must outlive the runtime.
    explicit ScriptRuntime(CConfigScene& functions, ScriptApi api = {}, const ScriptLimits& limits = {});
    ~ScriptRuntime();
    ScriptRuntime(const ScriptRuntime&) = delete;
    ScriptRuntime& operator=(const ScriptRuntime&) = delete;

    /// Runs the function with the arguments as its `...`. A call that waits is dropped when its `owner` is deleted;
    /// a null owner: it belongs to nobody.
    ScriptResult call(const QString& name, std::span<const ScriptValue> arguments = {}, const ScriptObject& owner = {});
    /// The same with a text that no function has; `name` is what errors call it. What is compiled is kept for the next time.
    ScriptResult call_text(const QString& name, const QString& text, std::span<const ScriptValue> arguments = {},
                           const ScriptObject& owner = {});
    /// Until the next reset() the function `name` runs as `text`, whatever the table holds; of several names the last
    /// one counts. Fails when the text is too long for a function.
    Status try_text(const QString& name, const QString& text);
    /// The scene's clock, in seconds: goes on with the calls whose wait has ended. What does not fit into the time of
    /// one call is left for the next tick.
    void tick(double now);
    /// While paused, tick() does nothing: scripts that wait stand still, and their clock with them. Calls still run.
    void set_paused(bool on) { m_paused = on; }
    /// From the next reset() on the random numbers are those of the seed, the same after each reset; without one they
    /// are others each time.
    void set_random_seed(std::optional<quint32> seed) { m_seed = seed; }
    std::optional<quint32> random_seed() const { return m_seed; }
    double now() const { return m_now; } ///< of the last tick; 0 before the first
    /// Drops all globals and all calls that wait, and stops what runs.
    void reset();

    std::size_t suspended() const;
    std::size_t memory() const; ///< bytes that the scripts hold
    /// Every verb that scripts can call, the runtime's own first.
    const std::vector<ScriptVerb>& verbs() const { return *m_verbs; }

    /// The names of the objects' fields; empty when there are no objects.
    const ScriptObjects* objects() const { return m_api.objects.get(); } ///< null when there are none
    QStringList field_names() const { return m_api.objects ? m_api.objects->field_names() : QStringList(); }
    /// What scripts have of Lua itself: "ipairs", "string", "string.rep", sorted.
    static QStringList library();

    /// Faults of a text that keep it from being compiled. Nothing is run.
    static std::vector<ScriptError> check(const QString& text);

    std::function<void(const QString&)> on_print;
    /// Errors of calls that had waited; call() answers its own.
    std::function<void(const ScriptError&)> on_error;
    /// A call that had waited is over, with that result; one that was dropped before its end has a suspended one.
    std::function<void(quint64 call, const ScriptResult&)> on_ended;

    /// For a new call; from 1.
    quint64 take_call_number() { return ++m_last_call; }

private:
    std::shared_ptr<scene_script::Machine> make_machine();

    CConfigScene& m_functions;
    ScriptApi m_api;
    ScriptLimits m_limits;
    std::optional<quint32> m_seed;
    std::shared_ptr<QRandomGenerator> m_random; ///< the verbs share it
    std::shared_ptr<const std::vector<ScriptVerb>> m_verbs;
    double m_now = 0;
    quint64 m_last_call = 0;
    bool m_paused = false;
    std::shared_ptr<scene_script::Machine> m_machine;
};

} // namespace tarn
