#include "part_painting.h"

#include "gui_core/control_style.h"
#include "gui_core/interface_font.h"
#include "gui_core/style_look.h"
#include "gui_draw/element_cache.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int square = 8;                                                            ///< pixels
constexpr double margin = 4;                                                         ///< pixels around a part
constexpr double largest_icon = 40;                                                  ///< pixels
constexpr QRgb grounds[2][2] = {{0xff8a949c, 0xff7c868e}, {0xff4d565d, 0xff434b52}}; ///< light half, dark half

} // namespace

void paint_contrast(QPainter& painter, const QRectF& area)
{
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    for (int y = 0; y * square < area.height(); ++y)
        for (int x = 0; x * square < area.width(); ++x) {
            const bool is_dark = x * square > area.width() - y * square * area.width() / area.height();
            painter.fillRect(QRectF(area.x() + x * square, area.y() + y * square, square, square),
                             QColor::fromRgb(grounds[is_dark][(x + y) % 2]));
        }
    painter.restore();
}

void paint_part(QPainter& painter, const CGuiCore& core, const LookPart& part, const QRectF& area, double scale)
{
    const LookOwner* owner = look_owner(part.owner);
    if (!owner)
        return;
    const StyleLook& style = core.look();
    const QRectF inside = area.adjusted(margin, margin, -margin, -margin);
    const StyleElement* element = element_part(*owner, part.part);
    if (!element) {
        QFont font = interface_font(std::max(8, int(inside.height() * 0.5)), false, style.family(part.owner));
        painter.setFont(font);
        painter.setPen(QColor::fromRgba(style.color(*owner, part.part, part.state)));
        painter.drawText(inside, Qt::AlignCenter, QStringLiteral("文A"));
        return;
    }
    const StyledElement& look = style.element(*owner, part.part, part.state);
    const ElementLook drawn{
        .picture = {}, .color = look.color, .region = look.region, .edges = look.edges, .shades = look.shades};
    const ElementSource source = element_source(style, element->element, part.state, drawn);
    QSizeF size = inside.size();
    if (source.icon)
        size = size.boundedTo({largest_icon, largest_icon});
    if (size.isEmpty())
        return;
    ElementCache cache;
    const QImage picture = cache.image(source, size.toSize(), scale);
    painter.drawImage(inside.center() - QPointF(size.width() / 2, size.height() / 2), picture);
}

} // namespace tarn
