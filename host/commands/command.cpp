#include "command.h"

#include "command_table.h"
#include "core/language.h"

#include <algorithm>

namespace tarn {

namespace {

/// Options that may stand in front of a command's name, each with a value.
bool is_general(const QString& option)
{
    return option == QLatin1String("--lang") || option == QLatin1String("--theme");
}

CommandResult usage_fault(const Command& command, const QString& why)
{
    auto result = CommandResult::refused(QStringLiteral("%1: %2").arg(QLatin1String(command.name), why));
    const QString usage = QString::fromLatin1(command.usage).section(QLatin1Char('\n'), 0, 0);
    result.errors += lang(u"用法：tarn-studio %1", u"Usage: tarn-studio %1").arg(usage) + QLatin1Char('\n');
    return result;
}

} // namespace

CommandResult CommandResult::refused(const QString& why)
{
    return {.status = Refused, .errors = QStringLiteral("tarn-studio: ") + why + QLatin1Char('\n')};
}

CommandArguments::CommandArguments(const QStringList& arguments)
{
    const qsizetype end = arguments.indexOf(QStringLiteral("--"));
    m_options = end < 0 ? arguments : arguments.mid(0, end);
    m_operands = end < 0 ? QStringList() : arguments.mid(end + 1);
}

bool CommandArguments::flag(const char* name)
{
    return m_options.removeAll(QLatin1String(name)) > 0;
}

QStringList CommandArguments::values(const char* name)
{
    QStringList found;
    for (qsizetype at = 0; (at = m_options.indexOf(QLatin1String(name), at)) >= 0;) {
        m_options.removeAt(at);
        if (at == m_options.size() || m_options[at].isEmpty()) {
            m_fault = lang(u"%1 缺少参数", u"%1 needs a value").arg(QLatin1String(name));
            break;
        }
        found.append(m_options.takeAt(at));
    }
    return found;
}

std::optional<QString> CommandArguments::value(const char* name)
{
    const QStringList found = values(name);
    return found.isEmpty() ? std::nullopt : std::optional(found.last());
}

Result<QStringList> CommandArguments::operands(int least, int most)
{
    QStringList all;
    for (const QString& argument : std::as_const(m_options)) {
        if (argument.startsWith(QLatin1Char('-')) && m_fault.isEmpty())
            m_fault = lang(u"未知选项 %1", u"unknown option %1").arg(argument);
        all.append(argument);
    }
    all += m_operands;
    if (!m_fault.isEmpty())
        return Status::error(m_fault);
    if (all.size() < least)
        return Status::error(lang(u"缺少文件", u"files are missing"));
    if (all.size() > most)
        return Status::error(lang(u"多余的参数“%1”", u"\"%1\" is one too many").arg(all[most]));
    for (const QString& operand : std::as_const(all))
        if (operand.isEmpty())
            return Status::error(lang(u"文件名为空", u"a file's name is empty"));
    return all;
}

std::span<const Command> commands()
{
    return command_table();
}

const Command* find_command(const QStringList& arguments)
{
    qsizetype at = 0;
    while (at + 1 < arguments.size() && is_general(arguments[at]))
        at += 2;
    if (at >= arguments.size())
        return nullptr;
    const auto all = commands();
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const Command& command) { return arguments[at] == QLatin1String(command.name); });
    return found == all.end() ? nullptr : &*found;
}

CommandResult run_command(const Command& command, const QStringList& arguments)
{
    QStringList rest = arguments;
    rest.removeOne(QLatin1String(command.name));
    CommandArguments parsed(rest);
    if (const auto language = parsed.value("--lang")) {
        if (*language != QLatin1String("zh") && *language != QLatin1String("en"))
            return usage_fault(
                command, lang(u"语言“%1”不可用（zh 或 en）", u"there is no language \"%1\" (zh or en)").arg(*language));
        VLCMsgIniW::set_language(*language == QLatin1String("zh") ? Language::Chinese : Language::English);
    }
    if (const auto theme = parsed.value("--theme");
        theme && *theme != QLatin1String("light") && *theme != QLatin1String("dark"))
        return usage_fault(
            command, lang(u"主题“%1”不可用（light 或 dark）", u"there is no theme \"%1\" (light or dark)").arg(*theme));
    if (parsed.flag("--help"))
        return {.output = help_of(command)};
    CommandResult result = command.run(parsed);
    if (const auto operands = parsed.operands(0, INT_MAX); !operands && result.status == CommandResult::Refused)
        return usage_fault(command, operands.status().message());
    return result;
}

QString help_of(const Command& command)
{
    QString text;
    const QStringList forms = QString::fromLatin1(command.usage).split(QLatin1Char('\n'));
    for (const QString& form : forms)
        text += (text.isEmpty() ? lang(u"用法：", u"Usage: ") : QStringLiteral("       "))
            + QStringLiteral("tarn-studio ") + form + QLatin1Char('\n');
    text += QLatin1Char('\n') + lang(command.chinese, command.english) + QLatin1Char('\n');
    if (const QString options = lang(command.chinese_options, command.english_options); !options.isEmpty())
        text += QLatin1Char('\n') + options;
    return text;
}

} // namespace tarn
