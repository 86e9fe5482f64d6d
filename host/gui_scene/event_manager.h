#pragma once

#include "core/model_object.h"

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace tarn {

struct EventState : StateOf<EventState> {
    ObjectRef control; ///< kept when the control is gone
    quint32 type = 0;  ///< GuiEventType
    QString function;  ///< the function's name; there need not be one of that name

    static const FieldTable& field_table();
};

/// The table of events as an object: what the events hang on.
struct EventsState : StateOf<EventsState> {
    IdList events;

    static const FieldTable& field_table();
};

} // namespace tarn

/// The binding of an event of a control to the scene function that runs when it happens.
class CGuiEvent final : public tarn::ModelObject {
public:
    CGuiEvent(tarn::Document& document, tarn::StatePtr state) : ModelObject(document, std::move(state)) {}

    quint32 control() const { return event_state().control.id; }
    quint32 type() const { return event_state().type; }
    const QString& function() const { return event_state().function; }
    void set_function(const QString& name) { change<&tarn::EventState::function>(name); }

    const char* class_name() const override { return "CGuiEvent"; }

private:
    const tarn::EventState& event_state() const { return state<tarn::EventState>(); }
};

/// The event bindings of a scene, in the order in which they were made. They stand outside the undo journal, but come and
/// go with a step that replaces or merges whole contents.
class CEventManager final : public tarn::ModelObject {
public:
    static constexpr std::size_t max_events = 1'000'000;

    /// The bindings become a part of the document.
    explicit CEventManager(tarn::Document& document);

    /// The name of the function that is made for an event that has none yet.
    static QString new_function_name(quint32 control, quint32 type);

    bool IsFuncExist(quint32 control, quint32 type) const { return GetFunc(control, type) != nullptr; }
    /// Null when nothing is tied to the event.
    CGuiEvent* GetFunc(quint32 control, quint32 type) const;
    /// Binds the function to the event, in place of what was bound to it. Null when there is no room for more events.
    CGuiEvent* CreateEventW(quint32 control, quint32 type, const QString& function);
    void RemoveEvent(CGuiEvent* event);
    /// Removes the events for which `gone` answers true; answers how many.
    std::size_t remove_if(const std::function<bool(const CGuiEvent&)>& gone);

    const std::vector<CGuiEvent*>& events() const;
    const tarn::ObjectKind& event_kind() const { return *m_kind; }

    tarn::ObjectState* fresh_state() const override { return new tarn::EventsState; }
    const char* class_name() const override { return "CEventManager"; }
    void children_changed() override { m_stale = true; }

private:
    void find_events() const;

    const tarn::ObjectKind* m_kind = nullptr; ///< of the events
    // Worked out from the list of ids, and found anew after that changed.
    mutable std::vector<CGuiEvent*> m_events;
    mutable QHash<quint64, CGuiEvent*> m_by_key;
    mutable bool m_stale = false;
};
