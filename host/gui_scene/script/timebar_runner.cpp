#include "timebar_runner.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "event_runner.h"
#include "gui_scene/gui_plug_scene.h"
#include "script/script_runtime.h"

#include <algorithm>
#include <array>

namespace tarn {

namespace {

QString time_text(float time)
{
    return lang(u"%1 秒", u"%1 s").arg(double(time), 0, 'f', 2);
}

/// Whether a verb that is no method has that name.
bool is_verb(const ScriptRuntime& scripts, const QString& name)
{
    const auto& verbs = scripts.verbs();
    return std::any_of(verbs.begin(), verbs.end(),
                       [&](const ScriptVerb& verb) { return !verb.of && name == QLatin1String(verb.name); });
}

} // namespace

void TimebarRunner::script_key_passed(CTimebar& bar, float time, const QString& function)
{
    ScriptLogEntry entry;
    entry.object = bar.name();
    entry.event = lang(u"脚本关键帧 %1", u"Script Key at %1").arg(time_text(time));
    entry.function = function;
    if (!m_scene.is_playing()) {
        entry.text = not_run(function, QStringLiteral("%1, \"ScriptKey\", %2").arg(bar.name()).arg(double(time)));
        tell(std::move(entry));
        return;
    }
    const std::array<ScriptValue, 3> arguments{bar.shared_from_this(), Value(QStringLiteral("ScriptKey")),
                                               Value(double(time))};
    ScriptRuntime& scripts = m_scene.world()->scripts();
    tell_result(scripts.call(function, arguments, bar.shared_from_this()), std::move(entry), true);
}

void TimebarRunner::command_due(CTCommandScript& object)
{
    CTimebar& bar = *object.timebar();
    ScriptRuntime& scripts = m_scene.world()->scripts();
    const CommandLine command = object.command();
    ScriptLogEntry entry;
    entry.object = bar.name();
    entry.event = lang(u"脚本对象", u"Script Object");
    entry.function = command.call;
    QStringList names;
    std::vector<ScriptValue> values;
    for (const CTVar* variable : object.variables()) {
        names.append(variable->name());
        values.emplace_back(variable->value_at(bar.current_time()).to_value());
    }
    const bool is_plain = std::none_of(command.call.begin(), command.call.end(),
                                       [](QChar c) { return c == u'(' || c == u':'; });
    const bool is_function = m_scene.functions().find_function(command.call)
        || (is_plain && !is_verb(scripts, command.call));
    const auto text = command.lua(names, is_function);
    tell_result(scripts.call_text(object.script(), text, values, bar.shared_from_this()), std::move(entry), false);
}

void TimebarRunner::bar_ended(CTimebar& bar)
{
    ScriptLogEntry entry;
    entry.object = bar.name();
    entry.event = lang(u"时间轴结束", u"Timebar Ended");
    entry.function = bar.end_function();
    if (entry.function.isEmpty() || !m_scene.is_playing()) {
        if (!entry.function.isEmpty())
            entry.text = not_run(entry.function, QStringLiteral("%1, \"Ended\"").arg(bar.name()));
        return tell(std::move(entry));
    }
    const std::array<ScriptValue, 2> arguments{bar.shared_from_this(), Value(QStringLiteral("Ended"))};
    ScriptRuntime& scripts = m_scene.world()->scripts();
    tell_result(scripts.call(bar.end_function(), arguments, bar.shared_from_this()), std::move(entry), true);
}

QString TimebarRunner::not_run(const QString& function, const QString& arguments) const
{
    const QString text = m_scene.functions().find_function(function)
        ? lang(u"编辑时不运行；参数：%1", u"not run while editing; it would be called with: %1")
        : lang(u"编辑时不运行；函数不存在；参数：%1",
               u"not run while editing; there is no such function; it would be called with: %1");
    return text.arg(arguments);
}

void TimebarRunner::tell_result(const ScriptResult& result, ScriptLogEntry entry, bool every)
{
    if (result.error) {
        entry.kind = ScriptLogEntry::Kind::Error;
        entry.function = result.error->function;
        entry.line = result.error->line;
        entry.text = result.error->text();
    } else if (result.suspended) {
        entry.text = lang(u"等待中", u"waiting");
        entry.call = result.call;
    } else {
        entry.text = log_text(result.value);
        if (!every)
            return;
    }
    tell(std::move(entry));
}

void TimebarRunner::tell(ScriptLogEntry entry) const
{
    entry.time = m_scene.world()->scripts().now();
    m_scene.world()->script_log().add(std::move(entry));
}

} // namespace tarn
