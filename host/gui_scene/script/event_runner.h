#pragma once

#include "core/value.h"
#include "gui_core/gui_event.h"

#include <QSet>
#include <QString>

#include <deque>
#include <memory>
#include <vector>

class CDXUTFlash;
class CGuiPlugScene;

namespace tarn {

class ModelObject;
struct ScriptError;
struct ScriptLogEntry;
struct ScriptResult;

/// A function's result as the log tells it; long ones are cut short.
QString log_text(const Value& value);

/// Lets the scene's functions answer the events of the running interface, and tells the log.
///
/// Events wait until the input that caused them is done with, since a function may change or remove anything. What a
/// function does raises no further events.
class EventRunner {
public:
    explicit EventRunner(CGuiPlugScene& scene) : m_scene(scene) {}

    /// The scene begins to run: globals of the functions are forgotten, the clock stands at 0.
    void begin();
    void end();
    /// Calls the functions of the events that came since the last time. Each is called with the control or dialog, the
    /// event's name and its value; that of an item of a menu with the item, "MenuItem", whether the item is checked now,
    /// and what the menu was opened for. Bound menus open in their turn.
    void deliver();
    /// A movie called `name`: the callback of its control that bears that name, alone or behind the control's, is called
    /// with the control, the name and what the movie gave. A control with a function for clicks has that for every name.
    void call_back(CDXUTFlash& movie, const QString& name, const std::vector<Value>& given);
    /// The scene's clock, seconds since it began to run: functions that waited go on.
    void advance(double now);

private:
    struct Waiting {
        GuiEvent event;
        std::weak_ptr<ModelObject> object;
    };
    void note(const GuiEvent& event);
    void answer(const GuiEvent& event, const std::shared_ptr<ModelObject>& object);
    /// Null where nothing is bound.
    QString function_of(const GuiEvent& event) const;
    /// Null where none is meant.
    QString callback_of(const CDXUTFlash& movie, const QString& name) const;
    void tell(ScriptLogEntry entry) const;
    void tell_error(const ScriptError& error, ScriptLogEntry entry) const;

    CGuiPlugScene& m_scene;
    std::deque<Waiting> m_waiting;
    double m_last_advance = 0; ///< seconds of the preview
    bool m_delivering = false;
    QSet<QString> m_unheard;              ///< what movies called and nothing answers
    const GuiEvent* m_answered = nullptr; ///< whose function runs now
};

} // namespace tarn
