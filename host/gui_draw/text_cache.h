#pragma once

#include "gui_core/interface_font.h"
#include "kept_drawing.h"
#include "text_picture.h"

#include <QColor>
#include <QPointF>
#include <QSizeF>
#include <QStaticText>
#include <QString>

#include <optional>

class QPainter;

namespace tarn {

/// How a text stands in its area.
struct TextLook {
    quint32 color = 0xffffffff;
    int font_size = default_font_size; ///< pixels
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

/// ARGB in which a text's shadow is drawn, and pixels from the text to it.
QColor text_shadow_color();
constexpr QPointF text_shadow_offset(1, 1);

/// A text as it stands in an area.
struct TextLayout {
    QSizeF area;
    QString source;
    TextLook look;
    bool overflows = false;
    bool is_cut = false; ///< letters are, or left out
    QPointF offset;
    QStaticText text;
    QFont font;
    quint64 fonts = 0; ///< fonts_revision()
    TextPicture picture;

    void draw(QPainter& painter, QPointF place, TextPicture::Ink ink) const;
    QRectF extent() const;
};

/// A text laid out once and drawn many times, for as long as it, its look and the size of its area stay the same: what
/// only moves costs nothing. What does not fit is cut at the area's edge; a single line that is too
/// long ends in an ellipsis.
class TextCache : public DrawCache {
public:
    void draw(QPainter& painter, const QRectF& area, const QString& text, const TextLook& look);
    /// Whether the text that was drawn last did not fit.
    bool is_cut() const { return m_layout && m_layout->is_cut; }

private:
    void lay_out(const QSizeF& area, const QString& text, const TextLook& look);

    std::optional<TextLayout> m_layout; ///< none until it is drawn
};

} // namespace tarn
