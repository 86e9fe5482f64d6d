#include "event_runner.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_scene/gui_plug_scene.h"
#include "script/script_log.h"
#include "script/script_runtime.h"

#include <QScopedValueRollback>

#include <array>
#include <utility>

namespace tarn {

namespace {

constexpr qsizetype most_unheard = 100;  ///< calls of movies that are told
constexpr qsizetype longest_text = 1000; ///< characters of a result or print that the log keeps

ModelObject* owner_of(const GuiEvent& event)
{
    return event.control ? static_cast<ModelObject*>(event.control) : event.dialog;
}

ModelObject* object_of(const GuiEvent& event)
{
    return event.menu_item ? event.menu_item : owner_of(event);
}

QString shortened(const QString& text)
{
    return text.size() <= longest_text ? text : cut_text(text, longest_text) + QChar(0x2026);
}

/// What the entry of a call that had waited says now.
QString ended_text(const ScriptResult& result)
{
    if (result.error)
        return lang(u"错误：", u"Error: ") + shortened(result.error->text());
    return result.suspended ? lang(u"已停止", u"stopped") : log_text(result.value);
}

ScriptLogEntry entry_for(const GuiEvent& event)
{
    ScriptLogEntry entry;
    if (event.menu_item) {
        entry.object = event.menu_item->item_state().text;
        entry.event = lang(u"选中菜单项", u"Item Chosen");
        return entry;
    }
    entry.object = event.control ? event.control->name() : event.dialog->name();
    entry.event = event_caption(event.type);
    return entry;
}

} // namespace

QString log_text(const Value& value)
{
    if (const auto* text = std::get_if<QString>(&value))
        return shortened(*text);
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? QStringLiteral("true") : QStringLiteral("false");
    if (const auto* whole = std::get_if<qint64>(&value))
        return QString::number(*whole);
    if (const auto* number = std::get_if<double>(&value))
        return QString::number(*number, 'g', 12);
    return {};
}

void EventRunner::begin()
{
    m_scene.gui_core().on_event = [this](const GuiEvent& event) { note(event); };
    CBaseWorld* world = m_scene.world();
    if (!world)
        return;
    world->script_log().clear();
    ScriptRuntime& scripts = world->scripts();
    scripts.reset();
    scripts.tick(0);
    m_last_advance = 0;
    scripts.on_print = [this](const QString& text) {
        ScriptLogEntry entry = m_answered ? entry_for(*m_answered) : ScriptLogEntry();
        entry.kind = ScriptLogEntry::Kind::Print;
        entry.text = shortened(text);
        tell(std::move(entry));
    };
    scripts.on_error = [this](const ScriptError& error) { tell_error(error, {}); };
    scripts.on_ended = [world](quint64 call, const ScriptResult& result) {
        world->script_log().end_call(call, ended_text(result));
    };
}

void EventRunner::end()
{
    m_scene.gui_core().on_event = nullptr;
    m_waiting.clear();
    m_unheard.clear();
    if (CBaseWorld* world = m_scene.world()) {
        world->scripts().on_print = nullptr;
        world->scripts().on_error = nullptr;
        world->scripts().reset();
        world->scripts().on_ended = nullptr;
    }
}

void EventRunner::note(const GuiEvent& event)
{
    m_waiting.push_back({event, object_of(event)->weak_from_this()});
}

void EventRunner::deliver()
{
    if (m_delivering)
        return;
    const QScopedValueRollback delivering(m_delivering, true);
    while (!m_waiting.empty()) {
        const Waiting next = std::move(m_waiting.front());
        m_waiting.pop_front();
        const auto object = next.object.lock();
        if (object && object->is_attached())
            answer(next.event, object);
    }
}

QString EventRunner::function_of(const GuiEvent& event) const
{
    if (event.menu_item) {
        const QString& function = event.menu_item->item_state().function;
        return function.isEmpty() ? QString() : function;
    }
    if (event.control) {
        const CGuiEvent* bound = m_scene.events().GetFunc(event.control->id(), event.type);
        return bound ? bound->function() : QString();
    }
    const QString name = event.dialog->get_func_str(event.type);
    return m_scene.functions().find_function(name) ? name : QString();
}

void EventRunner::answer(const GuiEvent& event, const std::shared_ptr<ModelObject>& object)
{
    if (event.type == EVENT_MENU_OPENS)
        return m_scene.gui_core().open_bound_menu(*object, event.menu_field, event.place);
    const QString function = function_of(event);
    if (function.isNull() || !m_scene.world())
        return;
    const QScopedValueRollback answered(m_answered, &event);
    ScriptLogEntry entry = entry_for(event);
    entry.function = function;
    const QString name = event.menu_item ? QStringLiteral("MenuItem") : GetEventStrName(event.type);
    ModelObject* owner = event.menu_item ? owner_of(event) : nullptr;
    const std::array<ScriptValue, 4> arguments{object, Value(name), event.value,
                                               owner ? owner->shared_from_this() : nullptr};
    const ScriptResult result = m_scene.world()->scripts().call(function, arguments, object);
    if (result.error) {
        tell_error(*result.error, std::move(entry));
        return;
    }
    entry.text = result.suspended ? lang(u"等待中", u"waiting") : log_text(result.value);
    entry.call = result.call;
    tell(std::move(entry));
}

QString EventRunner::callback_of(const CDXUTFlash& movie, const QString& name) const
{
    const QStringList& callbacks = static_cast<const FlashState&>(movie.shown_state()).callbacks;
    const CGuiEvent* click = m_scene.events().GetFunc(movie.id(), EVENT_BUTTON_CLICKED);
    for (const QString& function :
         {name, movie.name() + QLatin1Char('_') + name, click ? click->function() : QString()})
        if (!function.isEmpty() && callbacks.contains(function))
            return function;
    return {};
}

void EventRunner::call_back(CDXUTFlash& movie, const QString& name, const std::vector<Value>& given)
{
    if (!m_scene.world())
        return;
    ScriptLogEntry entry;
    entry.object = movie.name();
    entry.event = lang(u"影片调用 %1", u"The movie calls %1").arg(shortened(name));
    entry.function = callback_of(movie, name);
    if (entry.function.isNull()) {
        const QString key = movie.name() + QLatin1Char('\n') + name;
        if (m_unheard.size() >= most_unheard || m_unheard.contains(key))
            return;
        m_unheard.insert(key);
        entry.text = lang(u"没有这样的回调函数", u"there is no callback of that name");
        return tell(std::move(entry));
    }
    const ScriptObject object = movie.shared_from_this();
    std::vector<ScriptValue> arguments{object, Value(name)};
    arguments.insert(arguments.end(), given.begin(), given.end());
    const ScriptResult result = m_scene.world()->scripts().call(entry.function, arguments, object);
    if (result.error)
        return tell_error(*result.error, std::move(entry));
    entry.text = result.suspended ? lang(u"等待中", u"waiting") : log_text(result.value);
    entry.call = result.call;
    tell(std::move(entry));
}

void EventRunner::tell(ScriptLogEntry entry) const
{
    entry.time = m_scene.world()->scripts().now();
    m_scene.world()->script_log().add(std::move(entry));
}

void EventRunner::tell_error(const ScriptError& error, ScriptLogEntry entry) const
{
    entry.kind = ScriptLogEntry::Kind::Error;
    entry.function = error.function;
    entry.line = error.line;
    entry.text = shortened(error.text());
    tell(std::move(entry));
}

void EventRunner::advance(double now)
{
    CBaseWorld* world = m_scene.world();
    if (!world)
        return;
    // The scripts' own clock goes on from where it stands: it may have been paused.
    const double passed = now - std::exchange(m_last_advance, now);
    world->scripts().tick(world->scripts().now() + passed);
}

} // namespace tarn
