#include "str_cmd.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "script/command_line.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"

#include <QRegularExpression>

#include <algorithm>

namespace tarn {

namespace {

/// What stands before the parameters, taken apart: `kind("name"):method`, or a name alone.
struct Callee {
    QString kind;
    QString object; ///< as it was written, with its quotes
    QString name;

    static Callee parse(const QString& command)
    {
        static const QRegularExpression method(QStringLiteral(R"(^(\w+)\s*\(\s*(.*?)\s*\)\s*:\s*(\w+)$)"));
        const auto match = method.match(command);
        return match.hasMatch() ? Callee{match.captured(1), match.captured(2), match.captured(3)}
                                : Callee{{}, {}, command};
    }
};

/// What the text of a function calls that which it is given: `local life, mana = ...`.
QStringList names_in(const QString& text)
{
    static const QRegularExpression taken(QStringLiteral(R"(\blocal\s+([\w\s,]+?)\s*=\s*\.\.\.)"));
    const auto match = taken.match(text);
    static const QRegularExpression between(QStringLiteral(R"(\s*,\s*)"));
    return match.hasMatch() ? match.captured(1).split(between, Qt::SkipEmptyParts) : QStringList();
}

QStringList kinds_of(const ScriptVerb& verb, const std::vector<ScriptObjects::Kind>& kinds)
{
    QStringList all;
    for (const ScriptObjects::Kind& kind : kinds)
        all.append(QLatin1String(kind.name));
    const QString of = QString::fromLatin1(verb.of ? verb.of : "");
    if (of.isEmpty() || of == QLatin1String("object"))
        return of.isEmpty() ? QStringList() : all;
    // A method of one type of controls.
    return all.contains(of) ? QStringList(of) : all.mid(0, 1);
}

QString unquoted(const QString& text)
{
    const bool is_quoted = text.size() > 1 && (text.front() == u'"' || text.front() == u'\'')
        && text.back() == text.front();
    return is_quoted ? text.mid(1, text.size() - 2) : text;
}

bool is_quoted(const QString& text)
{
    return unquoted(text) != text;
}

/// Whether what is written, as far as it is a plain text or number, can be what the parameter takes.
bool fits(const QString& written, ScriptType type)
{
    bool is_number = false;
    written.toDouble(&is_number);
    switch (type) {
    case ScriptType::Bool: return !is_number && !is_quoted(written);
    case ScriptType::Integer:
    case ScriptType::Number: return !is_quoted(written) && written != u"true" && written != u"false";
    case ScriptType::Text: return !is_number;
    case ScriptType::Any:
    case ScriptType::TextOrNumber:
    case ScriptType::Object:
    case ScriptType::Function: break;
    }
    return true;
}

QString refusal_of_object(CBaseWorld& world, const StrCommand& command, const Callee& callee)
{
    if (callee.object.isEmpty())
        return lang(u"请输入“%1”所属对象的名称。", u"Name the object whose \"%1\" is called.").arg(command.name);
    const ScriptObjects* objects = world.scripts().objects();
    bool is_id = false;
    const quint32 id = callee.object.toUInt(&is_id);
    if (!is_id && !is_quoted(callee.object))
        return {}; // Worked out when it runs.
    const QByteArray kind_name = callee.kind.toLatin1();
    const ScriptObject found = is_id ? objects->find(QLatin1String(kind_name), id)
                                     : objects->find(QLatin1String(kind_name), unquoted(callee.object));
    return found ? QString()
                 : lang(u"没有名为 %2 的 %1。", u"There is no %1 called %2.").arg(callee.kind, callee.object);
}

} // namespace

QString StrCommand::caption() const
{
    if (kinds.isEmpty())
        return name;
    return (kinds.size() == 1 ? kinds.front() : lang(u"对象", u"object")) + u':' + name;
}

std::vector<StrCommand> str_commands(CBaseWorld& world)
{
    std::vector<StrCommand> commands;
    for (const FuncPtr& function : world.config_scene().functions())
        commands.push_back({.name = function->name(),
                            .is_function = true,
                            .parameter_names = names_in(function->text()),
                            .about = lang(u"场景的脚本函数", u"a function of the scene"),
                            .takes_more = true});
    const ScriptObjects* objects = world.scripts().objects();
    const auto kinds = objects ? objects->kinds() : std::vector<ScriptObjects::Kind>();
    for (const ScriptVerb& verb : world.scripts().verbs()) {
        const bool finds = std::any_of(kinds.begin(), kinds.end(), [&](const ScriptObjects::Kind& kind) {
            return qstrcmp(kind.name, verb.name) == 0;
        });
        if (finds)
            continue;
        StrCommand command{.name = QLatin1String(verb.name),
                           .kinds = kinds_of(verb, kinds),
                           .parameters = verb.parameters,
                           .about = verb.about.text(),
                           .takes_more = verb.more};
        for (const ScriptParameter& parameter : verb.parameters)
            command.parameter_names.append(QLatin1String(parameter.name));
        commands.push_back(std::move(command));
    }
    return commands;
}

QString refusal_of_command(CBaseWorld& world, const QString& line)
{
    const CommandLine parsed = CommandLine::parse(line);
    if (!parsed.is_complete)
        return lang(u"引号或括号没有闭合。", u"A quote or a bracket is not closed.");
    const auto commands = str_commands(world);
    const int id = get_cmd_id_from_str(parsed.call, world);
    if (id < 0)
        return lang(u"没有可调用的“%1”。", u"There is nothing to call that is named \"%1\".").arg(parsed.call);
    const StrCommand& command = commands[std::size_t(id)];
    if (!command.kinds.isEmpty())
        if (const QString refusal = refusal_of_object(world, command, Callee::parse(parsed.call)); !refusal.isEmpty())
            return refusal;
    for (std::size_t i = 0; i < command.parameters.size(); ++i) {
        const ScriptParameter& parameter = command.parameters[i];
        const QString written = parsed.parameters.value(qsizetype(i));
        const QString name = QLatin1String(parameter.name);
        if (written.isEmpty() && !parameter.optional && parameter.type != ScriptType::Any)
            return lang(u"缺少参数“%1”。", u"The parameter \"%1\" is missing.").arg(name);
        if (!written.isEmpty() && !fits(written, parameter.type))
            return lang(u"参数“%1”不能是 %2。", u"The parameter \"%1\" cannot be %2.").arg(name, written);
    }
    if (!command.takes_more && parsed.parameters.size() > qsizetype(command.parameters.size()))
        return lang(u"参数过多（最多 %1 个）。", u"There are too many parameters (at most %1).")
            .arg(command.parameters.size());
    const auto faults = ScriptRuntime::check(parsed.lua(parsed.names(), command.is_function));
    return faults.empty() ? QString() : faults.front().message;
}

} // namespace tarn

void g_seperate_cmd_line_with_pars(const QString& line, QString& command, QStringList& parameters)
{
    const auto parsed = tarn::CommandLine::parse(line);
    command = parsed.call;
    parameters = parsed.parameters;
}

int get_cmd_id_from_str(const QString& command, CBaseWorld& world)
{
    const auto callee = tarn::Callee::parse(command);
    const auto commands = tarn::str_commands(world);
    const auto found = std::find_if(commands.begin(), commands.end(), [&](const tarn::StrCommand& candidate) {
        return candidate.name == callee.name
            && (callee.kind.isEmpty() ? candidate.kinds.isEmpty() : candidate.kinds.contains(callee.kind));
    });
    return found == commands.end() ? -1 : int(found - commands.begin());
}
