#pragma once

#include "core/value.h"
#include "gui_core/gui_event.h"

#include <QString>

#include <deque>
#include <memory>

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
    void tell(ScriptLogEntry entry) const;
    void tell_error(const ScriptError& error, ScriptLogEntry entry) const;

    CGuiPlugScene& m_scene;
    std::deque<Waiting> m_waiting;
    double m_last_advance = 0; ///< seconds of the preview
    bool m_delivering = false;
    const GuiEvent* m_answered = nullptr; ///< whose function runs now
};

} // namespace tarn
