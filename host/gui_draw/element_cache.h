#pragma once

#include "gui_core/look.h"
#include "gui_core/skin_sheet.h"

#include <QCache>
#include <QImage>
#include <QMarginsF>
#include <QRectF>
#include <QSize>

class QPainter;

namespace tarn {

struct ElementLook;
class StyleLook;

/// Where the picture of an element comes from, and what becomes of it.
struct ElementSource {
    QImage image;
    QRectF part;         ///< pixels of the image
    QMarginsF edges;     ///< pixels of the image
    QSizeF units;        ///< so many of its pixels are one of the interface's
    bool icon = false;   ///< it is scaled as a whole
    quint32 tint = 0;    ///< ARGB; 0 for none
    bool shades = false; ///< the tint takes the picture's brightness alone
};

/// A picture of the author's, `own`, takes the place of the element's, whose edges keep their share of it; null stands for
/// the style's picture.
ElementSource element_source(const StyleLook& style, Element element, VisualState state, const ElementLook& look,
                             const QImage& own = {});

/// Element pictures composed to the sizes and scales in which they are drawn. Controls of one look and size share one
/// picture, so that drawing a control costs one blit instead of nine scaled ones. Those not asked for the longest go when
/// all of them take too much memory.
class ElementCache {
public:
    ElementCache();

    /// Draws the picture of `size` (interface pixels) with its corner at `corner`, `scale` device pixels for one of them.
    /// One that is too large to be kept is composed anew each time, as far as the painter's device and clip show it.
    void draw(QPainter& painter, QPoint corner, const ElementSource& source, QSize size, double scale);
    /// The picture of `size` (interface pixels) at `scale` device pixels for one of them.
    const QImage& image(const ElementSource& source, QSize size, double scale);

private:
    struct Key {
        qint64 picture; ///< QImage::cacheKey()
        QRectF part;
        QMarginsF edges;
        bool icon;
        quint32 tint;
        bool shades;
        QSize size;
        double scale;
        bool operator==(const Key&) const = default;
    };
    friend size_t qHash(const Key& key, size_t seed)
    {
        return qHashMulti(seed, key.picture, key.part.x(), key.part.y(), key.part.width(), key.part.height(), key.icon,
                          key.tint, key.shades, key.size.width(), key.size.height(), key.scale);
    }
    static QImage compose(const ElementSource& source, QSize size, double scale, const QRect& part);

    QCache<Key, QImage> m_images;
};

} // namespace tarn
