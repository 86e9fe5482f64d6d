#include "text_cache.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextOption>

namespace tarn {

QFont interface_font(int pixel_size, bool bold)
{
    QFont font(QStringList{QStringLiteral("Noto Sans"), QStringLiteral("Noto Sans CJK SC")});
    font.setPixelSize(qMax(1, pixel_size));
    font.setBold(bold);
    return font;
}

void TextCache::prepare(const QSizeF& area, const QString& text, const TextLook& look)
{
    m_valid = true;
    m_area = area;
    m_font = interface_font(look.font_size, look.bold);
    static constexpr Qt::Alignment horizontal[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    const bool one_line = !look.word_wrap && !text.contains(QLatin1Char('\n'));
    QTextOption option(horizontal[qBound(0, look.horizontal_align, 2)]);
    option.setWrapMode(look.word_wrap ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    m_text.setTextFormat(Qt::PlainText);
    m_text.setTextOption(option);
    m_text.setPerformanceHint(QStaticText::AggressiveCaching);
    if (one_line) {
        const QFontMetricsF metrics(m_font);
        m_text.setTextWidth(-1);
        m_text.setText(metrics.elidedText(text, Qt::ElideRight, area.width()));
    } else {
        m_text.setTextWidth(area.width());
        m_text.setText(QString(text).replace(QLatin1Char('\n'), QChar::LineSeparator));
    }
    m_text.prepare({}, m_font);
    const QSizeF size = m_text.size();
    const double spare_x = one_line ? area.width() - size.width() : 0;
    const double spare_y = area.height() - size.height();
    m_offset = {qRound(spare_x * look.horizontal_align / 2.0) * 1.0, qRound(spare_y * look.vertical_align / 2.0) * 1.0};
    m_overflows = spare_y < 0 || size.width() > area.width() + 0.5;
}

void TextCache::draw(QPainter& painter, const QRectF& area, const QString& text, const TextLook& look)
{
    if (text.isEmpty() || area.width() < 1 || area.height() < 1)
        return;
    if (!m_valid || area.size() != m_area)
        prepare(area.size(), text, look);
    const QPointF place = area.topLeft() + m_offset;
    if (m_overflows) {
        painter.save();
        painter.setClipRect(area, Qt::IntersectClip);
    }
    if (painter.font() != m_font)
        painter.setFont(m_font);
    if (look.shadow) {
        painter.setPen(QColor(0, 0, 0, 170));
        painter.drawStaticText(place + QPointF(1, 1), m_text);
    }
    painter.setPen(QColor::fromRgba(look.color));
    painter.drawStaticText(place, m_text);
    if (m_overflows)
        painter.restore();
}

} // namespace tarn
