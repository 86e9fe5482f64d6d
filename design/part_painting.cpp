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
constexpr double share_of_letters = 0.5;                                             ///< of the part's shorter side
constexpr int least_letters = 8;                                                     ///< pixels
constexpr QRgb grounds[2][2] = {{0xff8a949c, 0xff7c868e}, {0xff4d565d, 0xff434b52}}; ///< light half, dark half

/// Letters for a text, a spot for what else has a colour alone.
void paint_color(QPainter& painter, const StyleLook& style, const LookOwner& owner, const LookPart& part,
                 const QRectF& area)
{
    const QColor color = QColor::fromRgba(style.color(owner, part.part, part.state));
    if (!is_text_part(owner, part.part)) {
        const double radius = std::min({area.width(), area.height(), largest_icon}) / 2;
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(area.center(), radius, radius);
        return;
    }
    const double letters = std::min(area.height(), area.width()) * share_of_letters;
    painter.setFont(interface_font(std::max(least_letters, int(letters)), false, style.family(part.owner)));
    painter.setPen(color);
    painter.drawText(area, Qt::AlignCenter, QStringLiteral("文A"));
}

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
    if (!element)
        return paint_color(painter, style, *owner, part, inside);
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
