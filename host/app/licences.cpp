#include "licences.h"

#include "core/language.h"

#include <QFile>

namespace tarn {

namespace {

/// The value of a line "Key: value"; null for another line.
QString value_of(const QString& line, const char* key)
{
    const QString begin = QLatin1String(key) + QLatin1String(": ");
    return line.startsWith(begin) ? line.mid(begin.size()).trimmed() : QString();
}

} // namespace

QString licences_text()
{
    QFile file(QStringLiteral(":/app/copyright"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text;
    QString what;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        if (const QString files = value_of(line, "Files"); !files.isNull())
            what = QString(files).replace(QLatin1Char('-'), QLatin1Char(' '));
        else if (const QString licence = value_of(line, "License"); !licence.isNull() && what != QLatin1String("*"))
            text += QStringLiteral("%1: %2\n").arg(what, licence);
    }
    return text
        + lang(u"\n分发本程序时须遵守 QScintilla 的 GPL 3（或使用其商业许可）；其余的库可与任何许可的程序一同分发，"
               u"但须附上其声明。",
               u"\nWho passes the program on has to keep to QScintilla's GPL 3, or to have a commercial licence of it. The "
               u"others may go with a program under any licence, together with their notices.");
}

} // namespace tarn
