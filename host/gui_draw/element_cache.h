#pragma once

#include "skin.h"

#include <QCache>
#include <QImage>
#include <QRect>
#include <QSize>

class QPainter;

namespace tarn {

/// What the author chose for an element instead of the skin's.
struct ElementChoice {
    QImage picture;   ///< null for the skin's
    quint32 tint = 0; ///< ARGB; 0 for none
};

/// Element pictures composed to the sizes and scales in which they are drawn. Controls of one look and size share one
/// picture, so that drawing a control costs one blit instead of nine scaled ones. Those not asked for the longest go when
/// all of them take too much memory.
class ElementCache {
public:
    explicit ElementCache(const Skin& skin);

    /// Draws the picture of `size` (interface pixels) with its corner at `corner`, `scale` device pixels for one of them.
    /// One that is too large to be kept is composed anew each time, as far as the painter's device and clip show it.
    void draw(QPainter& painter, QPoint corner, Element element, VisualState state, QSize size, double scale,
              const ElementChoice& choice = {});
    /// The picture of `size` (interface pixels) at `scale` device pixels for one of them.
    const QImage& image(Element element, VisualState state, QSize size, double scale, const ElementChoice& choice = {});

private:
    struct Key {
        Element element;
        VisualState state;
        QSize size;
        qint64 picture; ///< QImage::cacheKey() of the author's
        quint32 tint;
        double scale;
        bool operator==(const Key&) const = default;
    };
    friend size_t qHash(const Key& key, size_t seed)
    {
        return qHashMulti(seed, int(key.element), int(key.state), key.size.width(), key.size.height(), key.picture,
                          key.tint, key.scale);
    }
    /// The `part` (device pixels) of the picture.
    QImage compose(const Key& key, const QImage& own, const QRect& part) const;

    const Skin& m_skin;
    QCache<Key, QImage> m_images;
};

} // namespace tarn
