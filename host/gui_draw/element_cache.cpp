#include "element_cache.h"

#include "tint.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr qsizetype cache_bytes = 96 * 1024 * 1024;
constexpr int max_side = 16384;              ///< device pixels of a picture that is kept
constexpr double max_area = 4 * 1024 * 1024; ///< as well
constexpr double max_shown = 32 << 20;       ///< device pixels of a part; a display of 8K has as many

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

/// Where a picture comes from: its rectangle in units, of which each is `units` pixels of the image.
struct Source {
    const QImage& image;
    ElementPicture picture;
    QSizeF units;
};

Source skin_source(const Skin& skin, Element element, VisualState state)
{
    return {skin.atlas(), Skin::picture(element, state), QSizeF(skin.pixels_per_unit(), skin.pixels_per_unit())};
}

/// The whole picture takes the place of the element's, whose edges keep their share of it.
Source own_source(const QImage& image, Element element)
{
    ElementPicture picture = Skin::picture(element, VisualState::Normal);
    picture.rect.moveTo(0, 0);
    const QSizeF units(double(image.width()) / picture.rect.width(), double(image.height()) / picture.rect.height());
    return {image, picture, units};
}

void draw_nine_slices(QPainter& painter, const Source& from, QSizeF size)
{
    const QRectF rect = from.picture.rect;
    const QMargins& e = from.picture.edges;
    const double ux = from.units.width();
    const double uy = from.units.height();
    const Spans sx = spans(rect.x() * ux, rect.width() * ux, e.left() * ux, e.right() * ux);
    const Spans sy = spans(rect.y() * uy, rect.height() * uy, e.top() * uy, e.bottom() * uy);
    const Spans tx = spans(0, size.width(), e.left(), e.right());
    const Spans ty = spans(0, size.height(), e.top(), e.bottom());
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRectF target(QPointF(tx.at[column], ty.at[row]), QPointF(tx.at[column + 1], ty.at[row + 1]));
            const QRectF source(QPointF(sx.at[column], sy.at[row]), QPointF(sx.at[column + 1], sy.at[row + 1]));
            if (!target.isEmpty())
                painter.drawImage(target, from.image, source);
        }
    }
}

void draw_icon(QPainter& painter, const Source& from, QSizeF size)
{
    const QRectF rect = from.picture.rect;
    const QRectF source(rect.x() * from.units.width(), rect.y() * from.units.height(),
                        rect.width() * from.units.width(), rect.height() * from.units.height());
    const QSizeF shown = source.size().scaled(size, Qt::KeepAspectRatio);
    painter.drawImage(QRectF(QPointF((size.width() - shown.width()) / 2, (size.height() - shown.height()) / 2), shown),
                      from.image, source);
}

QSize device_size(QSize size, double scale)
{
    return {std::max(1, int(std::lround(size.width() * scale))), std::max(1, int(std::lround(size.height() * scale)))};
}

/// Where the painter draws at all, in its present coordinates.
QRectF shown_area(const QPainter& painter)
{
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    const QRectF area = painter.deviceTransform().inverted().mapRect(device);
    return painter.hasClipping() ? area & painter.clipBoundingRect() : area;
}

} // namespace

ElementCache::ElementCache(const Skin& skin) : m_skin(skin), m_images(cache_bytes) {}

void ElementCache::draw(QPainter& painter, QPoint corner, Element element, VisualState state, QSize size, double scale,
                        const ElementChoice& choice)
{
    const QSizeF whole = QSizeF(size) * scale;
    if (std::max(whole.width(), whole.height()) <= max_side && whole.width() * whole.height() <= max_area) {
        painter.drawImage(corner, image(element, state, size, scale, choice));
        return;
    }
    // A margin, so that no edge of the part is smoothed into sight.
    const QRectF shown = shown_area(painter).translated(-corner).adjusted(-2, -2, 2, 2) & QRectF(QPointF(), size);
    // A dialog that is stretched far one way has a scale that the other way does not show.
    while (shown.width() * shown.height() * scale * scale > max_shown)
        scale /= 2;
    const QRect part = QRectF(shown.topLeft() * scale, shown.size() * scale).toAlignedRect();
    if (part.isEmpty())
        return;
    const Key key{element, state, size, choice.picture.cacheKey(), choice.tint, scale};
    painter.drawImage(corner + QPointF(part.topLeft()) / scale, compose(key, choice.picture, part));
}

const QImage& ElementCache::image(Element element, VisualState state, QSize size, double scale,
                                  const ElementChoice& choice)
{
    const Key key{element, state, size.expandedTo(QSize(1, 1)), choice.picture.cacheKey(), choice.tint, scale};
    if (const QImage* known = m_images.object(key))
        return *known;
    auto* composed = new QImage(compose(key, choice.picture, QRect(QPoint(), device_size(key.size, scale))));
    // The cache destroys what is larger than itself at once; hold the cost below that.
    m_images.insert(key, composed, std::min<qsizetype>(composed->sizeInBytes(), cache_bytes));
    return *composed;
}

QImage ElementCache::compose(const Key& key, const QImage& own, const QRect& part) const
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(key.scale, key.scale); // A painter does not follow a picture's pixel ratio below 1.
    painter.translate(-QPointF(part.topLeft()) / key.scale);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const Source from = own.isNull() ? skin_source(m_skin, key.element, key.state) : own_source(own, key.element);
    if (from.picture.icon)
        draw_icon(painter, from, key.size);
    else
        draw_nine_slices(painter, from, key.size);
    painter.end();
    image.setDevicePixelRatio(key.scale);
    if (key.tint)
        apply_tint(image, key.tint, own.isNull());
    return image;
}

} // namespace tarn
