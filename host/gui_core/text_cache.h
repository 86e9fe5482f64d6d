#pragma once

#include "text_picture.h"

#include <QFont>
#include <QPointF>
#include <QSizeF>
#include <QStaticText>
#include <QString>

#include <memory>

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
    QString family{}; ///< empty for the usual one
    bool italic = false;

    /// Whether a text is laid out alike; colour and shadow come with the drawing.
    bool lays_out_like(const TextLook& other) const;
};

/// A text laid out once and drawn many times, for as long as it, its look and the size of its area stay the same: what
/// only moves costs nothing. What does not fit is cut at the area's edge; a single line that is too
/// long ends in an ellipsis.
class TextCache {
public:
    void draw(QPainter& painter, const QRectF& area, const QString& text, const TextLook& look);

private:
    struct Layout {
        QSizeF area;
        QString source;
        TextLook look;
        bool overflows = false;
        QPointF offset;
        QStaticText text;
        QFont font;
        TextPicture picture;

        void draw(QPainter& painter, QPointF place, TextPicture::Ink ink) const;
        QRectF extent() const;
    };
    static std::unique_ptr<Layout> prepared(const QSizeF& area, const QString& text, const TextLook& look);

    /// Apart from the object that owns the cache: most texts of a large scene are never drawn, and whoever walks the
    /// objects should not have to step over it.
    std::unique_ptr<Layout> m_layout;
};

/// The font in which interfaces are drawn; `family` comes before the usual ones.
QFont interface_font(int pixel_size, bool bold, const QString& family = {}, bool italic = false);

} // namespace tarn
