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

#include <array>

namespace tarn {

namespace {

QString time_text(float time)
{
    return lang(u"%1 秒", u"%1 s").arg(double(time), 0, 'f', 2);
}

/// What a command's parameter stands for at the bar's time: a number, a text in quotes, or a variable of that name.
Value value_of(const QString& parameter, const CTCommandScript& command, float time)
{
    bool is_number = false;
    const double number = parameter.toDouble(&is_number);
    if (is_number)
        return number;
    if (parameter.startsWith(u'"') || parameter.startsWith(u'\''))
        return parameter.mid(1, parameter.size() - 1 - (parameter.size() > 1 && parameter.back() == parameter.front()));
    for (const CTVar* variable : command.variables())
        if (variable->name() == parameter)
            return variable->value_at(time).to_value();
    return {};
}

} // namespace

void TimebarRunner::script_key_passed(CTimebar& bar, float time, const QString& function)
{
    ScriptLogEntry entry;
    entry.object = bar.name();
    entry.event = lang(u"脚本关键帧 %1", u"Script Key at %1").arg(time_text(time));
    entry.function = function;
    if (!m_scene.is_playing()) {
        entry.text = not_run(function);
        tell(std::move(entry));
        return;
    }
    const std::array<ScriptValue, 3> arguments{bar.shared_from_this(), Value(QStringLiteral("ScriptKey")),
                                               Value(double(time))};
    call(bar, std::move(entry), arguments, true);
}

void TimebarRunner::command_due(CTCommandScript& object)
{
    CTimebar& bar = *object.timebar();
    const CTCommandScript::Command command = object.analyze_script();
    ScriptLogEntry entry;
    entry.object = bar.name();
    entry.event = lang(u"脚本对象", u"Script Object");
    entry.function = command.function;
    std::vector<ScriptValue> arguments;
    for (const QString& parameter : command.parameters)
        arguments.emplace_back(value_of(parameter, object, bar.current_time()));
    call(bar, std::move(entry), arguments, false); // It runs in every frame.
}

void TimebarRunner::bar_ended(CTimebar& bar)
{
    ScriptLogEntry entry;
    entry.object = bar.name();
    entry.event = lang(u"时间轴结束", u"Timebar Ended");
    entry.function = bar.end_function();
    if (entry.function.isEmpty() || !m_scene.is_playing()) {
        if (!entry.function.isEmpty())
            entry.text = not_run(entry.function);
        return tell(std::move(entry));
    }
    const std::array<ScriptValue, 2> arguments{bar.shared_from_this(), Value(QStringLiteral("Ended"))};
    call(bar, std::move(entry), arguments, true);
}

QString TimebarRunner::not_run(const QString& function) const
{
    return m_scene.functions().find_function(function)
        ? lang(u"编辑时不运行", u"not run while editing")
        : lang(u"编辑时不运行；函数不存在", u"not run while editing; there is no such function");
}

void TimebarRunner::call(CTimebar& bar, ScriptLogEntry entry, std::span<const ScriptValue> arguments, bool every)
{
    const ScriptResult result = m_scene.world()->scripts().call(entry.function, arguments, bar.shared_from_this());
    if (result.error) {
        entry.kind = ScriptLogEntry::Kind::Error;
        entry.function = result.error->function;
        entry.line = result.error->line;
        entry.text = result.error->text();
    } else if (result.suspended) {
        entry.text = lang(u"等待中", u"waiting");
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
