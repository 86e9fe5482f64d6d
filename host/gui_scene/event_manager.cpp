#include "event_manager.h"

#include "core/language.h"
#include "core/utf8.h"
#include "gui_core/gui_event.h"
#include "script/config_scene.h"

#include <utility>

using tarn::lang;
using tarn::Status;

namespace {

quint64 key_of(quint32 control, quint32 type)
{
    return quint64(control) << 32 | type;
}

quint64 key_of(const CGuiEvent& event)
{
    return key_of(event.control, event.type);
}

Status read_event(tarn::JsonCursor& cursor, CGuiEvent& event)
{
    return cursor.each_member([&](std::string_view key, tarn::JsonCursor& value) -> Status {
        if (key == "control")
            return value.read(event.control);
        if (key == "type")
            return value.read(event.type);
        if (key == "function")
            return value.read(event.function);
        QByteArray json;
        auto status = value.read_raw(json);
        event.unknown.append({tarn::from_utf8(key), json});
        return status;
    });
}

} // namespace

QString CEventManager::new_function_name(quint32 control, quint32 type)
{
    return QStringLiteral("GUI_FUNC_%1_%2").arg(control).arg(GetEventStrName(type));
}

CGuiEvent* CEventManager::GetFunc(quint32 control, quint32 type) const
{
    return m_by_key.value(key_of(control, type));
}

void CEventManager::add(CGuiEvent event)
{
    m_events.push_back(std::make_unique<CGuiEvent>(std::move(event)));
    m_by_key.insert(key_of(*m_events.back()), m_events.back().get());
}

void CEventManager::tell_changed() const
{
    if (on_changed)
        on_changed();
}

CGuiEvent* CEventManager::CreateEventW(quint32 control, quint32 type, const QString& function)
{
    if (CGuiEvent* present = GetFunc(control, type)) {
        if (std::exchange(present->function, function) != function)
            tell_changed();
        return present;
    }
    if (m_events.size() >= max_events)
        return nullptr;
    add({.control = control, .type = type, .function = function});
    tell_changed();
    return GetFunc(control, type);
}

void CEventManager::RemoveEvent(CGuiEvent* event)
{
    remove_if([event](const CGuiEvent& candidate) { return &candidate == event; });
}

std::size_t CEventManager::take_out(const std::function<bool(const CGuiEvent&)>& gone, std::vector<CGuiEvent>* taken)
{
    return std::erase_if(m_events, [&](const std::unique_ptr<CGuiEvent>& event) {
        const bool goes = gone(*event);
        if (goes)
            m_by_key.remove(key_of(*event));
        if (goes && taken)
            taken->push_back(std::move(*event));
        return goes;
    });
}

std::size_t CEventManager::remove_if(const std::function<bool(const CGuiEvent&)>& gone)
{
    const auto removed = take_out(gone, nullptr);
    if (removed > 0)
        tell_changed();
    return removed;
}

void CEventManager::swap(CEventManager& other)
{
    m_events.swap(other.m_events);
    m_by_key.swap(other.m_by_key);
}

std::vector<CGuiEvent> CEventManager::attach(std::vector<CGuiEvent> events)
{
    std::erase_if(events, [this](const CGuiEvent& event) {
        const bool refused = m_events.size() >= max_events || IsFuncExist(event.control, event.type);
        if (!refused)
            add(event);
        return refused;
    });
    return events;
}

std::vector<CGuiEvent> CEventManager::detach(const std::vector<CGuiEvent>& events)
{
    QHash<quint64, bool> keys;
    for (const CGuiEvent& event : events)
        keys.insert(key_of(event), true);
    std::vector<CGuiEvent> detached;
    take_out([&keys](const CGuiEvent& event) { return keys.contains(key_of(event)); }, &detached);
    return detached;
}

void CEventManager::write(tarn::JsonWriter& writer, const std::function<bool(const CGuiEvent&)>& wanted) const
{
    writer.begin_array();
    for (const auto& event : m_events) {
        if (!wanted(*event))
            continue;
        writer.new_line();
        writer.begin_object();
        writer.key("control");
        writer.value(event->control);
        writer.key("type");
        writer.value(event->type);
        writer.key("function");
        writer.value(event->function);
        for (const auto& [name, json] : event->unknown)
            writer.raw_member(name, std::string_view(json.constData(), std::size_t(json.size())));
        writer.end_object();
    }
    writer.new_line();
    writer.end_array();
}

Status CEventManager::read(tarn::JsonCursor& cursor)
{
    return cursor.each_element([this](tarn::JsonCursor& element) {
        CGuiEvent event;
        if (auto status = read_event(element, event); !status)
            return status;
        if (event.control == 0 || event.type == 0 || event.function.isEmpty())
            return element.fail(lang(u"事件缺少控件、类型或函数", u"an event lacks its control, type or function"));
        if (event.function.size() > IFunc::max_name)
            return element.fail(lang(u"函数名过长", u"the name of the function is too long"));
        if (IsFuncExist(event.control, event.type))
            return element.fail(
                lang(u"控件 %1 的事件出现了两次", u"an event of control %1 appears twice").arg(event.control));
        if (m_events.size() >= max_events)
            return element.fail(
                lang(u"事件过多（最多 %1 个）", u"there are too many events (at most %1)").arg(max_events));
        add(std::move(event));
        return Status();
    });
}
