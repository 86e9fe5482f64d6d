#include "gui_painter.h"

#include "control_drawing.h"
#include "draw_context.h"
#include "faded_layer.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/transitions.h"
#include "menu_drawing.h"

#include <QPainter>

#include <algorithm>
#include <optional>

namespace tarn {

namespace {

void draw_turned(DrawContext& context, const CDXUTControl& control)
{
    if (!control.is_rotated())
        return draw_control(context, control, control.rect());
    context.painter.save();
    context.painter.setTransform(control.rotation_transform(), true);
    draw_control(context, control, control.rect());
    context.painter.restore();
}

void draw_faded(const DrawContext& context, const CDXUTControl& control)
{
    FadedLayer layer(context.painter, control.drawn_bounds(), control.color(), control.transparency());
    DrawContext apart = context.onto(layer.painter());
    apart.control = &control;
    draw_turned(apart, control);
}

void paint_dialog(DrawContext& context, const CDXUTDialog& dialog, const QRectF& clip)
{
    QPainter& painter = context.painter;
    if (dialog.outer_rect().intersects(clip))
        draw_dialog(context, dialog);
    if (dialog.minimized())
        return;
    const QPointF origin = dialog.client_rect().topLeft();
    const bool scaled = dialog.scale_x() != 1 || dialog.scale_y() != 1;
    const QRectF visible(dialog.to_client(clip.topLeft()), dialog.to_client(clip.bottomRight()));
    painter.save();
    painter.translate(origin);
    if (scaled) {
        painter.scale(dialog.scale_x(), dialog.scale_y());
        context.scale *= std::max(dialog.scale_x(), dialog.scale_y());
    }
    for (const CDXUTControl* control : dialog.controls()) {
        if (!control->is_seen() || !control->drawn_bounds().intersects(visible))
            continue;
        context.control = control;
        if (control->has_extras())
            draw_faded(context, *control);
        else
            draw_control(context, *control, control->rect());
    }
    painter.restore();
}

/// On its way from or to its minimised form: one that shrinks is no more than its frame, one that is restored unrolls.
void paint_moving(DrawContext& context, const CDXUTDialog& dialog, const QRectF& frame)
{
    if (dialog.minimized())
        return draw_shrinking_dialog(context, dialog, frame);
    const QPointF way = frame.topLeft() - dialog.outer_rect().topLeft();
    context.painter.save();
    context.painter.setClipRect(frame, Qt::IntersectClip);
    context.painter.translate(way);
    paint_dialog(context, dialog, frame.translated(-way));
    context.painter.restore();
}

} // namespace

void GuiPainter::paint_one(QPainter& painter, const CGuiCore& core, const CDXUTDialog& dialog, const QRectF& clip,
                           double scale)
{
    const std::optional<QRectF> moving = core.transitions().frame_of(dialog);
    const QRectF bounds = dialog.is_root() ? clip : dialog.drawn_bounds() | moving.value_or(QRectF());
    if (!dialog.is_seen() || !(dialog.is_root() || bounds.intersects(clip)))
        return;
    const SelectionRecord& selection = core.selection();
    const CDXUTDialog* active = selection.editing ? selection.current_dialog : core.active_dialog();
    FadedLayer layer(painter, bounds & clip, dialog.dialog_state().color, dialog.dialog_state().transparency);
    DrawContext context{layer.painter(), m_elements, core, scale, selection.editing, nullptr, active};
    if (moving)
        paint_moving(context, dialog, *moving);
    else
        paint_dialog(context, dialog, clip);
}

void GuiPainter::paint(QPainter& painter, const CGuiCore& core, const QRectF& clip, double scale)
{
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_one(painter, core, *core.GetRootDialog(), clip, scale);
    for (const bool on_top : {false, true})
        for (const CDXUTDialog* dialog : core.GetDialogs())
            if (dialog->dialog_state().always_on_top == on_top && !core.is_in_world(*dialog))
                paint_one(painter, core, *dialog, clip, scale);
    paint_raised(painter, core, nullptr, scale);
    if (const OpenMenu* menu = core.open_menu())
        draw_open_menu({painter, m_elements, core, scale, false, nullptr}, *menu);
    painter.restore();
}

void GuiPainter::paint_alone(QPainter& painter, const CGuiCore& core, const CDXUTDialog& dialog, double scale)
{
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-dialog.outer_rect().topLeft());
    paint_one(painter, core, dialog, dialog.drawn_bounds(), scale);
    paint_raised(painter, core, &dialog, scale);
    painter.restore();
}

void GuiPainter::paint_raised(QPainter& painter, const CGuiCore& core, const CDXUTDialog* dialog, double scale)
{
    for (const CDXUTControl* control : {core.live().hovered, core.live().popup}) {
        const CDXUTDialog* home = control ? control->dialog() : nullptr;
        const bool wanted = home && (dialog ? home == dialog : !core.is_in_world(*home));
        if (wanted && !control->raised_area().isEmpty())
            paint_raised(painter, core, *control, scale);
    }
}

void GuiPainter::paint_raised(QPainter& painter, const CGuiCore& core, const CDXUTControl& control, double scale)
{
    const ClientMap map = control.dialog()->client_map();
    const DialogState& dialog = control.dialog()->dialog_state();
    painter.save();
    painter.translate(map.origin);
    painter.scale(map.scale_x, map.scale_y);
    // A list unrolls while it is dropped down.
    const bool drops = core.live().popup == &control;
    const double share = drops ? core.transitions().share_of_popup(control) : 1;
    const QRectF area = control.raised_area();
    if (share < 1)
        painter.setClipRect(QRectF(area.topLeft(), QSizeF(area.width(), area.height() * share)), Qt::IntersectClip);
    {
        FadedLayer with_dialog(painter, area, dialog.color, dialog.transparency);
        FadedLayer layer(with_dialog.painter(), area, control.color(), control.transparency());
        DrawContext context{layer.painter(), m_elements, core, scale * std::max(map.scale_x, map.scale_y),
                            false,           &control};
        draw_raised(context, control);
    }
    painter.restore();
}

} // namespace tarn
