#include "text_part.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr qsizetype most_units = 30'000;  ///< laid out in some milliseconds in any script
constexpr qsizetype most_marks = 30;      ///< in a row; the limit that Unicode gives for streams
constexpr double narrow_letter = 0.2;     ///< of the font's size
constexpr double narrow_line = 1.2;       ///< of the font's size
constexpr qsizetype harmless_units = 512; ///< laid out at once, whatever they are

/// Characters that take no place of their own: accents and other marks, joiners, direction signs.
bool takes_no_place(QChar c)
{
    return c.isMark() || c.category() == QChar::Other_Format;
}

qsizetype begin_of_part(qsizetype size, qsizetype part, int align)
{
    return std::max<qsizetype>(0, size - part) * align / 2;
}

/// `part` without the marks that pile up.
QString thinned(QStringView part)
{
    QString kept;
    kept.reserve(part.size());
    qsizetype marks = 0;
    for (const QChar c : part) {
        // Most texts have none, and asking for a character's category costs more than copying it.
        marks = c.unicode() >= 0x300 && takes_no_place(c) ? marks + 1 : 0;
        if (marks <= most_marks)
            kept.append(c);
    }
    return kept;
}

} // namespace

qsizetype units_that_show(const QSizeF& area, int font_size)
{
    const double size = std::max(1, font_size);
    const double columns = std::clamp(area.width(), 0.0, 1e6) / (narrow_letter * size) + 8;
    const double lines = std::clamp(area.height(), 0.0, 1e6) / (narrow_line * size) + 2;
    return qsizetype(std::min(columns * lines, double(most_units)));
}

QString text_part(const QString& text, qsizetype units, int align)
{
    if (text.size() <= harmless_units)
        return text;
    if (text.size() <= units)
        return thinned(text);
    qsizetype begin = begin_of_part(text.size(), units, align);
    if (text[begin].isLowSurrogate())
        ++begin;
    return thinned(QStringView(text).mid(begin, units));
}

QString text_part(const QString& text, qsizetype lines, qsizetype units, int align, int align_of_lines)
{
    if (text.size() <= harmless_units)
        return text;
    qsizetype skipped = begin_of_part(text.count(u'\n') + 1, lines, align);
    qsizetype begin = 0;
    for (; skipped > 0; --skipped)
        begin = text.indexOf(u'\n', begin) + 1;
    QString part;
    for (qsizetype line = 0; line < lines && begin <= text.size(); ++line) {
        qsizetype end = text.indexOf(u'\n', begin);
        end = end < 0 ? text.size() : end;
        if (line > 0)
            part.append(u'\n');
        part.append(text_part(text.mid(begin, end - begin), units, align_of_lines));
        begin = end + 1;
    }
    return part;
}

} // namespace tarn
