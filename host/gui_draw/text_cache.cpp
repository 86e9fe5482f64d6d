#include "text_cache.h"

#include "core/text_part.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextOption>

#include <cmath>

namespace tarn {

namespace {

constexpr qsizetype unseen_units = 5000; ///< UTF-16 units

/// Of a text that may be anything (a script can make a million letters), only what can show is laid out: layout takes
/// longer than linear time.
QString shown_line(const QString& text, const QSizeF& area, const QFont& font)
{
    const qsizetype units = units_that_show({area.width(), 0}, font.pixelSize());
    return QFontMetricsF(font).elidedText(text_part(text, units, 0), Qt::ElideRight, area.width());
}

QString shown_lines(const QString& text, const QSizeF& area, const TextLook& look)
{
    QString part;
    if (look.word_wrap) {
        // Where lines end hangs on where the first one began: one that cannot be seen begins as far away as it costs
        // little.
        const qsizetype units = units_that_show(area, look.font_size);
        const bool from_begin = look.vertical_align == 0;
        part = text_part(text, from_begin ? units : qMax(units, unseen_units), look.vertical_align);
    } else {
        // A line must not be lower than this, or what shows of a long text would end before the area does.
        const auto lines = qsizetype(area.height() / qMax(1, look.font_size)) + 2;
        const qsizetype units = units_that_show({area.width(), 0}, look.font_size);
        part = text_part(text, lines, units, look.vertical_align, look.horizontal_align);
    }
    return part.replace(QLatin1Char('\n'), QChar::LineSeparator);
}

} // namespace

QColor text_shadow_color()
{
    return {0, 0, 0, 170};
}

bool TextLook::lays_out_like(const TextLook& other) const
{
    return font_size == other.font_size && bold == other.bold && italic == other.italic
        && horizontal_align == other.horizontal_align && vertical_align == other.vertical_align
        && word_wrap == other.word_wrap && family == other.family;
}

void TextCache::lay_out(const QSizeF& area, const QString& text, const TextLook& look)
{
    TextLayout& layout = m_layout.emplace();
    layout.area = area;
    layout.source = text;
    layout.look = look;
    layout.font = interface_font(look.font_size, look.bold, look.family, look.italic);
    layout.fonts = fonts_revision();
    static constexpr Qt::Alignment horizontal[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    const bool one_line = !look.word_wrap && !text.contains(QLatin1Char('\n'));
    QTextOption option(horizontal[qBound(0, look.horizontal_align, 2)]);
    option.setWrapMode(look.word_wrap ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    layout.text.setTextFormat(Qt::PlainText);
    layout.text.setTextOption(option);
    layout.text.setPerformanceHint(QStaticText::AggressiveCaching);
    layout.text.setTextWidth(one_line ? -1 : area.width());
    const QString shown = one_line ? shown_line(text, area, layout.font) : shown_lines(text, area, look);
    // Lines may reach out of the area by the room that fonts leave above and below their letters.
    const double room = QFontMetricsF(layout.font).height() - layout.font.pixelSize();
    layout.text.setText(shown);
    layout.text.prepare({}, layout.font);
    const QSizeF size = layout.text.size();
    const double spare_x = one_line ? area.width() - size.width() : 0;
    const double spare_y = area.height() - size.height();
    layout.offset = {std::round(spare_x * look.horizontal_align / 2.0),
                     std::round(spare_y * look.vertical_align / 2.0)};
    const bool is_wider = size.width() > area.width() + 0.5;
    layout.overflows = spare_y < 0 || is_wider;
    layout.is_cut = is_wider || spare_y + room < 0 || (one_line && shown != text);
}

void TextLayout::draw(QPainter& painter, QPointF place, TextPicture::Ink ink) const
{
    if (painter.font() != font)
        painter.setFont(font);
    if (ink.shadow) {
        painter.setPen(text_shadow_color());
        painter.drawStaticText(place + text_shadow_offset, text);
    }
    painter.setPen(QColor::fromRgba(ink.color));
    painter.drawStaticText(place, text);
}

/// What the text may cover, pixels from its place. Glyphs may lean and reach out of their line.
QRectF TextLayout::extent() const
{
    const double lean = font.pixelSize() / 2.0 + 2;
    return QRectF(QPointF(), text.size()).adjusted(-lean, -lean, lean, lean);
}

void TextCache::draw(QPainter& painter, const QRectF& area, const QString& text, const TextLook& look)
{
    if (text.isEmpty() || area.width() < 1 || area.height() < 1)
        return;
    const bool is_ready = m_layout && area.size() == m_layout->area && look.lays_out_like(m_layout->look)
        && text == m_layout->source && m_layout->fonts == fonts_revision();
    if (!is_ready)
        lay_out(area.size(), text, look);
    const QPointF place = area.topLeft() + m_layout->offset;
    const TextPicture::Ink ink{look.color, look.shadow};
    if (m_layout->overflows) {
        painter.save();
        painter.setClipRect(area, Qt::IntersectClip);
        m_layout->draw(painter, place, ink);
        painter.restore();
        return;
    }
    const auto glyphs = [&](QPainter& to, QPointF at) { m_layout->draw(to, at, ink); };
    if (!m_layout->picture.draw(painter, place, m_layout->extent(), ink, glyphs))
        m_layout->draw(painter, place, ink);
}

} // namespace tarn
