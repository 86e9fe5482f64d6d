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
    /// What a picture is good for: glyphs look different between two pixels.
    struct Key {
        Ink ink;
        double scale; ///< device pixels for one of the painter's
        QPoint phase; ///< of the place between device pixels
        bool operator==(const Key&) const = default;
    };
    bool make(const Key& key, const QRectF& extent, const Glyphs& glyphs);
    void release();

    Key m_key{{0, false}, 0, {}}; ///< a scale of 0 for no picture yet
    QImage m_image;               ///< null where the text leaves no trace
    QPoint m_corner;              ///< device pixels from the pixel of the place
};

} // namespace tarn
