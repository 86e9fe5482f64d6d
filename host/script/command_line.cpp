#include "command_line.h"

#include <algorithm>
#include <functional>

namespace tarn {

namespace {

bool is_quote(QChar c)
{
    return c == u'"' || c == u'\'';
}

bool is_word(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

/// Behind the text in quotes that begins at `at`; the end of the line when it is not closed.
qsizetype behind_quotes(QStringView line, qsizetype at)
{
    const QChar quote = line[at];
    for (++at; at < line.size(); ++at) {
        if (line[at] == u'\\')
            ++at;
        else if (line[at] == quote)
            return at + 1;
    }
    return line.size();
}

bool closes_quotes(QStringView text)
{
    for (qsizetype at = 0; at < text.size();) {
        if (!is_quote(text[at])) {
            ++at;
            continue;
        }
        const QChar quote = text[at];
        const qsizetype begin = at;
        at = behind_quotes(text, at);
        if (at - begin < 2 || text[at - 1] != quote)
            return false;
    }
    return true;
}

/// The bracket that closes the one at `at`; -1 when there is none.
qsizetype closing(QStringView line, qsizetype at)
{
    int depth = 0;
    while (at < line.size()) {
        const QChar c = line[at];
        if (is_quote(c)) {
            at = behind_quotes(line, at);
            continue;
        }
        depth += QStringView(u"([{").contains(c) ? 1 : 0;
        depth -= QStringView(u")]}").contains(c) ? 1 : 0;
        if (depth == 0)
            return at;
        ++at;
    }
    return -1;
}

qsizetype behind_blanks(QStringView line, qsizetype at)
{
    while (at < line.size() && line[at].isSpace())
        ++at;
    return at;
}

QStringList separated(QStringView list, bool at_blanks)
{
    QStringList parts;
    qsizetype begin = 0;
    const auto take = [&](qsizetype end) {
        if (const QString part = list.mid(begin, end - begin).trimmed().toString(); !part.isEmpty())
            parts.append(part);
        begin = end + 1;
    };
    for (qsizetype at = 0; at < list.size();) {
        const QChar c = list[at];
        if (is_quote(c)) {
            at = behind_quotes(list, at);
        } else if (QStringView(u"([{").contains(c)) {
            const qsizetype end = closing(list, at);
            at = end < 0 ? list.size() : end + 1;
        } else {
            if (c == u',' || (at_blanks && c.isSpace()))
                take(at);
            ++at;
        }
    }
    take(list.size());
    return parts;
}

bool is_word_of_lua(QStringView word)
{
    static const QStringList words{
        QStringLiteral("and"),   QStringLiteral("break"),  QStringLiteral("do"),    QStringLiteral("else"),
        QStringLiteral("end"),   QStringLiteral("elseif"), QStringLiteral("false"), QStringLiteral("for"),
        QStringLiteral("goto"),  QStringLiteral("if"),     QStringLiteral("in"),    QStringLiteral("function"),
        QStringLiteral("local"), QStringLiteral("nil"),    QStringLiteral("not"),   QStringLiteral("or"),
        QStringLiteral("until"), QStringLiteral("repeat"), QStringLiteral("then"),  QStringLiteral("return"),
        QStringLiteral("true"),  QStringLiteral("while")};
    return std::any_of(words.begin(), words.end(), [word](const QString& known) { return known == word; });
}

/// `text` with each name that stands for a value replaced by what `replace` answers.
QString with_names(const QString& text, const std::function<QString(const QString&)>& replace)
{
    const QStringView line(text);
    QString result;
    const auto is_at = [line](qsizetype at, QChar c) { return at >= 0 && at < line.size() && line[at] == c; };
    for (qsizetype at = 0; at < line.size();) {
        qsizetype end = at + 1;
        if (is_quote(line[at]))
            end = behind_quotes(line, at);
        else if (is_word(line[at]))
            while (end < line.size() && (is_word(line[end]) || (line[at].isDigit() && line[end] == u'.')))
                ++end;
        const QString part = line.mid(at, end - at).toString();
        qsizetype before = at - 1;
        while (before >= 0 && line[before].isSpace())
            --before;
        const qsizetype next = behind_blanks(line, end);
        const bool is_field = is_at(before, u':') || (is_at(before, u'.') && !is_at(before - 1, u'.'));
        const bool is_owner = is_at(next, u'(') || is_at(next, u':') || (is_at(next, u'.') && !is_at(next + 1, u'.'));
        const bool is_name = is_word(part.front()) && !part.front().isDigit() && !is_word_of_lua(part);
        result += is_name && !is_field && !is_owner ? replace(part) : part;
        at = end;
    }
    return result;
}

} // namespace

QString lua_quoted(const QString& text)
{
    QString quoted = text;
    quoted.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
    quoted.replace(u'\n', QStringLiteral("\\n")).replace(u'\r', QStringLiteral("\\r"));
    return u'"' + quoted + u'"';
}

CommandLine CommandLine::parse(const QString& line)
{
    CommandLine command;
    const QString trimmed = line.trimmed();
    const QStringView text(trimmed);
    command.is_complete = closes_quotes(text);
    for (qsizetype at = 0; at < text.size();) {
        while (at < text.size() && !text[at].isSpace() && text[at] != u'(' && text[at] != u',')
            ++at;
        const qsizetype open = behind_blanks(text, at);
        if (open >= text.size() || text[open] != u'(') {
            command.call = text.left(at).toString();
            command.parameters = separated(text.mid(at), true);
            return command;
        }
        const qsizetype end = closing(text, open);
        const qsizetype next = end < 0 ? text.size() : behind_blanks(text, end + 1);
        if (next < text.size() && (text[next] == u':' || text[next] == u'.')) {
            at = behind_blanks(text, next + 1);
            continue;
        }
        command.call = text.left(at).toString();
        command.parameters = separated(text.mid(open + 1, end < 0 ? -1 : end - open - 1), false);
        command.is_complete = command.is_complete && end >= 0 && next == text.size();
        return command;
    }
    command.call = trimmed;
    return command;
}

QString CommandLine::text() const
{
    return call.isEmpty() ? QString() : call + u'(' + parameters.join(QStringLiteral(", ")) + u')';
}

QStringList CommandLine::names() const
{
    QStringList names;
    for (const QString& parameter : parameters)
        with_names(parameter, [&names](const QString& name) {
            names.append(name);
            return name;
        });
    names.removeDuplicates();
    return names;
}

QString CommandLine::renamed(const QString& name, const QString& new_name) const
{
    CommandLine result = *this;
    for (QString& parameter : result.parameters)
        parameter = with_names(parameter, [&](const QString& found) { return found == name ? new_name : found; });
    return result.text();
}

QString CommandLine::lua(const QStringList& variables, bool is_function) const
{
    // Variables may be called what is no name in Lua.
    const auto local = [](qsizetype index) { return QStringLiteral("v%1_").arg(index); };
    QString text;
    for (qsizetype i = 0; i < variables.size(); ++i)
        text += (i ? QStringLiteral(", ") : QStringLiteral("local ")) + local(i);
    text += variables.isEmpty() ? QString() : QStringLiteral(" = ... ");
    QStringList given;
    for (const QString& parameter : parameters)
        given.append(with_names(parameter, [&](const QString& name) {
            const qsizetype index = variables.indexOf(name);
            return index < 0 ? name : local(index);
        }));
    text += QStringLiteral("return ");
    if (is_function)
        given.prepend(lua_quoted(call));
    return text + (is_function ? QStringLiteral("call") : call) + u'(' + given.join(QStringLiteral(", ")) + u')';
}

} // namespace tarn
