#include "element_cache.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr qsizetype cache_bytes = 96 * 1024 * 1024;
constexpr int max_side = 16384; ///< device pixels; a larger picture is drawn cut off

/// Three spans of an axis: near edge, middle, far edge. Edges shrink together when there is no room for both.
struct Spans {
    double at[4];
};

Spans spans(double from, double length, double near_edge, double far_edge)
{
    const double sum = near_edge + far_edge;
    const double fit = sum > length && sum > 0 ? length / sum : 1;
    return {{from, from + near_edge * fit, from + length - far_edge * fit, from + length}};
}

void draw_nine_slices(QPainter& painter, const QImage& atlas, const ElementPicture& picture, double units, QSizeF size)
{
    const QRectF rect = picture.rect;
    const QMargins& e = picture.edges;
    const Spans sx = spans(rect.x() * units, rect.width() * units, e.left() * units, e.right() * units);
    const Spans sy = spans(rect.y() * units, rect.height() * units, e.top() * units, e.bottom() * units);
    const Spans tx = spans(0, size.width(), e.left(), e.right());
    const Spans ty = spans(0, size.height(), e.top(), e.bottom());
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRectF target(QPointF(tx.at[column], ty.at[row]), QPointF(tx.at[column + 1], ty.at[row + 1]));
            const QRectF source(QPointF(sx.at[column], sy.at[row]), QPointF(sx.at[column + 1], sy.at[row + 1]));
            if (!target.isEmpty())
                painter.drawImage(target, atlas, source);
        }
    }
}

} // namespace

ElementCache::ElementCache(const Skin& skin) : m_skin(skin), m_images(cache_bytes) {}

const QImage& ElementCache::image(Element element, VisualState state, QSize size, double scale)
{
    if (scale != m_scale) {
        m_images.clear();
        m_scale = scale;
    }
    const Key key{element, state, size.expandedTo(QSize(1, 1))};
    if (const QImage* known = m_images.object(key))
        return *known;
    auto* composed = new QImage(compose(key, scale));
    // The cache destroys what is larger than itself at once; hold the cost below that.
    m_images.insert(key, composed, std::min<qsizetype>(composed->sizeInBytes(), cache_bytes));
    return *composed;
}

QImage ElementCache::compose(const Key& key, double scale) const
{
    const int width = std::clamp(int(std::lround(key.size.width() * scale)), 1, max_side);
    const int height = std::clamp(int(std::lround(key.size.height() * scale)), 1, max_side);
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const ElementPicture picture = Skin::picture(key.element, key.state);
    const double units = m_skin.pixels_per_unit();
    if (!picture.icon) {
        draw_nine_slices(painter, m_skin.atlas(), picture, units, key.size);
        return image;
    }
    const double side = std::min(key.size.width(), key.size.height());
    const QRectF target((key.size.width() - side) / 2, (key.size.height() - side) / 2, side, side);
    const QRectF source(QPointF(picture.rect.topLeft()) * units, QSizeF(picture.rect.size()) * units);
    painter.drawImage(target, m_skin.atlas(), source);
    return image;
}

} // namespace tarn
