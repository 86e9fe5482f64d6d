#include "event_manager.h"

#include "gui_core/gui_event.h"
#include "script/config_scene.h"

#include <span>

using namespace tarn;

namespace {

constexpr const char* entry = "events.json";

quint64 key_of(quint32 control, quint32 type)
{
    return quint64(control) << 32 | type;
}

/// Empty for an event that lacks its control, type or function.
QString unique_key(const ObjectState& state)
{
    const auto& event = static_cast<const EventState&>(state);
    if (event.control.id == 0 || event.type == 0 || event.function.isEmpty())
        return {};
    return QString::number(event.control.id) + QLatin1Char('/') + QString::number(event.type);
}

} // namespace

const FieldTable& EventState::field_table()
{
    using S = EventState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::control>("control", {}, read_only()),
        field<S, &S::type>("type", 0u, read_only()),
        field<S, &S::function>("function", {}, {.max_length = IFunc::max_name, .function = true}));
    return table;
}

const FieldTable& EventsState::field_table()
{
    using S = EventsState;
    static const FieldTable table(nullptr, field<S, &S::events>("event_ids", {}, children()));
    return table;
}

CEventManager::CEventManager(Document& document) : ModelObject(document, new EventsState)
{
    document.add_part({.entry = entry, .container = this, .recorded = false});
    document.add_kind(
        {.part = entry,
         .key = "events",
         .chinese = u"事件",
         .english = u"event",
         .container = this,
         .make_state = [](int) -> ObjectState* { return new EventState; },
         .make_object = [&document](StatePtr state) { return std::make_shared<CGuiEvent>(document, std::move(state)); },
         .children =
             [](ObjectState& parent) {
                 auto* events = dynamic_cast<EventsState*>(&parent);
                 return events ? &events->events : nullptr;
             },
         .unique_key = unique_key,
         .most = max_events});
    m_kind = &document.kinds().back();
}

QString CEventManager::new_function_name(quint32 control, quint32 type)
{
    return QStringLiteral("GUI_FUNC_%1_%2").arg(control).arg(GetEventStrName(type));
}

void CEventManager::find_events() const
{
    m_stale = false;
    m_events.clear();
    m_by_key.clear();
    for (const ObjectRef child : state<EventsState>().events) {
        auto* event = static_cast<CGuiEvent*>(document().find(child.id));
        m_events.push_back(event);
        m_by_key.insert(key_of(event->control(), event->type()), event);
    }
}

const std::vector<CGuiEvent*>& CEventManager::events() const
{
    if (m_stale)
        find_events();
    return m_events;
}

CGuiEvent* CEventManager::GetFunc(quint32 control, quint32 type) const
{
    if (m_stale)
        find_events();
    return m_by_key.value(key_of(control, type));
}

CGuiEvent* CEventManager::CreateEventW(quint32 control, quint32 type, const QString& function)
{
    if (CGuiEvent* present = GetFunc(control, type)) {
        present->set_function(function);
        return present;
    }
    const quint32 id = events().size() < max_events ? document().take_id(false) : 0;
    if (id == 0)
        return nullptr;
    auto* fresh = new EventState;
    StatePtr state(fresh);
    fresh->id = id;
    fresh->control = {control};
    fresh->type = type;
    fresh->function = function;
    auto* event = static_cast<CGuiEvent*>(document().create(*m_kind, std::move(state)).get());
    document().attach(*event, *this, qsizetype(m_events.size()));
    m_events.push_back(event);
    m_by_key.insert(key_of(control, type), event);
    m_stale = false; // It was not before: many that are added one by one need no search each.
    return event;
}

void CEventManager::RemoveEvent(CGuiEvent* event)
{
    ModelObject* gone = event;
    document().detach(std::span(&gone, 1));
}

std::size_t CEventManager::remove_if(const std::function<bool(const CGuiEvent&)>& gone)
{
    std::vector<ModelObject*> removed;
    for (CGuiEvent* event : events())
        if (gone(*event))
            removed.push_back(event);
    document().detach(removed);
    return removed.size();
}
