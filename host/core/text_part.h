#pragma once

#include <QSizeF>
#include <QString>

namespace tarn {

/// How many UTF-16 units of a text in a font of `font_size` pixels find room in `area` at most, pixels: more than that
/// need not be laid out. Bounded, however large the area is.
qsizetype units_that_show(const QSizeF& area, int font_size);

/// What can show of a long text of which `units` find room: its begin, its middle or its end (`align` 0, 1, 2). A text
/// that is short comes back as it is. Marks that pile up on one letter are left out from the 31st on: no font places
/// them, and layout takes the square of their number.
QString text_part(const QString& text, qsizetype units, int align);

/// The same of a text of lines that are not wrapped: at most `lines` of them, each of which has room for `units`.
QString text_part(const QString& text, qsizetype lines, qsizetype units, int align, int align_of_lines);

} // namespace tarn
