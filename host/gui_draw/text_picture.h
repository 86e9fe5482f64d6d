#pragma once

#include <QImage>
#include <QPoint>
#include <QRectF>

#include <functional>

class QPainter;

namespace tarn {

/// A text kept as the picture that it makes: to draw that costs a fraction of drawing its glyphs, which matters where
/// thousands of texts are drawn in each frame of a drag. All together hold a limited amount of memory; texts beyond it
/// are drawn from glyphs.
class TextPicture {
public:
    /// What may change of a text without laying it out anew.
    struct Ink {
        quint32 color; ///< ARGB
        bool shadow;
        bool operator==(const Ink&) const = default;
    };
    using Glyphs = std::function<void(QPainter& painter, QPointF place)>;

    TextPicture() = default;
    ~TextPicture() { release(); }
    TextPicture(const TextPicture&) = delete;
    TextPicture& operator=(const TextPicture&) = delete;

    /// Draws at `place` what `glyphs` draws there, which lies in `extent`, pixels from the place. False, and nothing
    /// drawn, where a picture would not do: the painter scales or turns, or there is no memory left for it.
    bool draw(QPainter& painter, QPointF place, const QRectF& extent, Ink ink, const Glyphs& glyphs);

private:
    bool serves(QPointF on_device, Ink ink, double scale) const;
    bool make(QPointF on_device, Ink ink, double scale, const QRectF& extent, const Glyphs& glyphs);
    void release();

    Ink m_ink{};
    double m_scale = 0; ///< device pixels for one of the painter's; 0 for no picture yet
    QPointF m_phase;    ///< of the place between device pixels: glyphs look different there
    QImage m_image;     ///< null where the text leaves no trace
    QPoint m_corner;    ///< device pixels from the one that the place lies in
};

} // namespace tarn
