#include "names_in_script.h"

#include <QRegularExpression>
#include <QStringList>

namespace tarn {

QList<NameInScript> names_in_script(const QString& text, const std::vector<ScriptObjects::Kind>& kinds)
{
    QStringList words;
    for (const ScriptObjects::Kind& kind : kinds)
        words.append(QRegularExpression::escape(QLatin1String(kind.name)));
    // A comment, or a call that is nobody's method and has nothing but a text without escapes between its brackets.
    const QRegularExpression call(
        QStringLiteral(R"((--\[\[.*?\]\]|--[^\n]*)|(?<![.:\w])(%1)\s*\(\s*(["'])([^"'\\\n]+)\3\s*\))")
            .arg(words.join(QLatin1Char('|'))),
        QRegularExpression::DotMatchesEverythingOption);
    QList<NameInScript> names;
    qsizetype counted = 0;
    int line = 1;
    for (auto match = call.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        if (found.hasCaptured(1) && !found.captured(1).isEmpty())
            continue;
        line += int(QStringView(text).mid(counted, found.capturedStart() - counted).count(QLatin1Char('\n')));
        counted = found.capturedStart();
        names.append({found.captured(2), found.captured(4), line});
    }
    return names;
}

} // namespace tarn
