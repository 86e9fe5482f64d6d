#pragma once

#include <QFont>
#include <QPointF>
#include <QSizeF>
#include <QStaticText>
#include <QString>

class QPainter;

namespace tarn {

/// How a text stands in its area.
struct TextLook {
    quint32 color = 0xffffffff;
    int font_size = 14; ///< pixels
    bool bold = false;
    int horizontal_align = 0; ///< 0 left, 1 centre, 2 right
    int vertical_align = 0;   ///< 0 top, 1 middle, 2 bottom
    bool word_wrap = false;
    bool shadow = false;
};

/// A text laid out once and drawn many times. What does not fit is cut at the area's edge; a single line that is too
/// long ends in an ellipsis.
class TextCache {
public:
    void draw(QPainter& painter, const QRectF& area, const QString& text, const TextLook& look);
    /// Before the text, the look or the size of the area changes.
    void invalidate() { m_valid = false; }

private:
    void prepare(const QSizeF& area, const QString& text, const TextLook& look);

    bool m_valid = false;
    bool m_overflows = false;
    QSizeF m_area;
    QPointF m_offset;
    QStaticText m_text;
    QFont m_font;
};

/// The font in which interfaces are drawn.
QFont interface_font(int pixel_size, bool bold);

} // namespace tarn
