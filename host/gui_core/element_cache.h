#pragma once

#include "skin.h"

#include <QCache>
#include <QImage>
#include <QSize>

namespace tarn {

/// Element pictures composed to the sizes in which they are drawn. Controls of one look and size share one picture, so
/// that drawing a control costs one blit instead of nine scaled ones.
class ElementCache {
public:
    explicit ElementCache(const Skin& skin);

    /// The picture of `size` (interface pixels) at `scale` device pixels for one of them.
    const QImage& image(Element element, VisualState state, QSize size, double scale);

private:
    struct Key {
        Element element;
        VisualState state;
        QSize size;
        bool operator==(const Key&) const = default;
    };
    friend size_t qHash(const Key& key, size_t seed)
    {
        return qHashMulti(seed, int(key.element), int(key.state), key.size.width(), key.size.height());
    }
    QImage compose(const Key& key, double scale) const;

    const Skin& m_skin;
    double m_scale = 0;
    QCache<Key, QImage> m_images;
};

} // namespace tarn
