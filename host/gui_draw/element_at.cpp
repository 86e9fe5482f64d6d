#include "element_at.h"

#include "control_drawing.h"
#include "draw_context.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"

#include <QImage>
#include <QPainter>

namespace tarn {

namespace {

/// Draws nowhere and answers what was drawn last at the place: so what is hit is where it is drawn.
template <class Draw>
std::optional<LookPart> drawn_at(const CGuiCore& core, int owner_number, QPointF place, const CDXUTControl* control,
                                 Draw draw)
{
    const LookOwner* owner = look_owner(owner_number);
    if (!owner || part_count(*owner) == 0)
        return {};
    QImage nowhere(1, 1, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&nowhere);
    ElementCache elements;
    ElementProbe probe{place};
    DrawContext context{painter, elements, core, 1, true, control, nullptr, &probe};
    draw(context);
    for (int part = 0; part < int(owner->elements.size()); ++part)
        if (probe.found == owner->elements[std::size_t(part)].element)
            return LookPart{owner_number, part, VisualState::Normal};
    if (owner->colors.empty())
        return {};
    return LookPart{owner_number, int(owner->elements.size()), VisualState::Normal};
}

} // namespace

std::optional<LookPart> element_at(const CGuiCore& core, const CDXUTDialog& dialog, QPointF place)
{
    return drawn_at(core, look_owner_dialog, place, nullptr,
                    [&](DrawContext& context) { draw_dialog(context, dialog); });
}

std::optional<LookPart> element_at(const CGuiCore& core, const CDXUTControl& control, QPointF place)
{
    if (!control.dialog())
        return {};
    const ClientMap map = control.dialog()->client_map();
    return drawn_at(core, control.GetType(), place, &control, [&](DrawContext& context) {
        context.painter.translate(map.origin);
        context.painter.scale(map.scale_x, map.scale_y);
        context.painter.setTransform(control.rotation_transform(), true);
        draw_control(context, control, control.rect());
    });
}

} // namespace tarn
