#include "element_cache.h"

#include "gui_core/control_style.h"
#include "gui_core/style_look.h"
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

void draw_nine_slices(QPainter& painter, const ElementSource& from, QSizeF size)
{
    const QMarginsF& e = from.edges;
    const double ux = from.units.width();
    const double uy = from.units.height();
    const Spans sx = spans(from.part.x(), from.part.width(), e.left(), e.right());
    const Spans sy = spans(from.part.y(), from.part.height(), e.top(), e.bottom());
    const Spans tx = spans(0, size.width(), e.left() / ux, e.right() / ux);
    const Spans ty = spans(0, size.height(), e.top() / uy, e.bottom() / uy);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRectF target(QPointF(tx.at[column], ty.at[row]), QPointF(tx.at[column + 1], ty.at[row + 1]));
            const QRectF source(QPointF(sx.at[column], sy.at[row]), QPointF(sx.at[column + 1], sy.at[row + 1]));
            if (!target.isEmpty() && !source.isEmpty())
                painter.drawImage(target, from.image, source);
        }
    }
}

void draw_icon(QPainter& painter, const ElementSource& from, QSizeF size)
{
    const QSizeF shown = from.part.size().scaled(size, Qt::KeepAspectRatio);
    painter.drawImage(QRectF(QPointF((size.width() - shown.width()) / 2, (size.height() - shown.height()) / 2), shown),
                      from.image, from.part);
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

ElementSource element_source(const StyleLook& style, Element element, VisualState state, const ElementLook& look,
                             const QImage& own)
{
    const ElementPicture sheet = sheet_picture(element, state);
    if (!own.isNull()) {
        const QSizeF units(double(own.width()) / sheet.rect.width(), double(own.height()) / sheet.rect.height());
        const QMarginsF edges(sheet.edges.left() * units.width(), sheet.edges.top() * units.height(),
                              sheet.edges.right() * units.width(), sheet.edges.bottom() * units.height());
        return {own, own.rect(), edges, units, sheet.icon, look.color, false};
    }
    constexpr double unit = atlas_pixels_per_unit;
    const bool is_part = !look.region.isEmpty();
    const QRectF part = is_part ? QRectF(look.region)
                                : QRectF(QRectF(sheet.rect).topLeft() * unit, QSizeF(sheet.rect.size()) * unit);
    const QMarginsF edges = is_part ? QMarginsF(look.edges) : QMarginsF(sheet.edges) * unit;
    return {style.picture(), part, edges, {unit, unit}, sheet.icon, look.color, look.shades || !is_part};
}

ElementCache::ElementCache() : m_images(cache_bytes) {}

void ElementCache::draw(QPainter& painter, QPoint corner, const ElementSource& source, QSize size, double scale)
{
    const QSizeF whole = QSizeF(size) * scale;
    if (std::max(whole.width(), whole.height()) <= max_side && whole.width() * whole.height() <= max_area) {
        painter.drawImage(corner, image(source, size, scale));
        return;
    }
    // A margin, so that no edge of the part is smoothed into sight.
    const QRectF shown = shown_area(painter).translated(-corner).adjusted(-2, -2, 2, 2) & QRectF(QPointF(), size);
    // A dialog that is stretched far one way has a scale that the other way does not show.
    while (shown.width() * shown.height() * scale * scale > max_shown)
        scale /= 2;
    const QRect part = QRectF(shown.topLeft() * scale, shown.size() * scale).toAlignedRect();
    if (!part.isEmpty())
        painter.drawImage(corner + QPointF(part.topLeft()) / scale, compose(source, size, scale, part));
}

const QImage& ElementCache::image(const ElementSource& source, QSize size, double scale)
{
    const Key key{source.image.cacheKey(),      source.part, source.edges, source.icon, source.tint, source.shades,
                  size.expandedTo(QSize(1, 1)), scale};
    if (const QImage* known = m_images.object(key))
        return *known;
    auto* composed = new QImage(compose(source, key.size, scale, QRect(QPoint(), device_size(key.size, scale))));
    // The cache destroys what is larger than itself at once; hold the cost below that.
    m_images.insert(key, composed, std::min<qsizetype>(composed->sizeInBytes(), cache_bytes));
    return *composed;
}

/// The `part` (device pixels) of the picture.
QImage ElementCache::compose(const ElementSource& source, QSize size, double scale, const QRect& part)
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(scale, scale); // A painter does not follow a picture's pixel ratio below 1.
    painter.translate(-QPointF(part.topLeft()) / scale);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (source.icon)
        draw_icon(painter, source, size);
    else
        draw_nine_slices(painter, source, size);
    painter.end();
    image.setDevicePixelRatio(scale);
    if (source.tint)
        apply_tint(image, source.tint, source.shades);
    return image;
}

} // namespace tarn
