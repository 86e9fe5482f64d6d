#include "gui_painter.h"

#include "control_drawing.h"
#include "draw_context.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "menu_drawing.h"

#include <QPainter>

namespace tarn {

namespace {

void draw_rotated(const CDXUTControl& control, DrawContext& context, const QRectF& visible)
{
    if (!control.drawn_bounds().intersects(visible))
        return;
    context.painter.save();
    context.painter.setTransform(control.rotation_transform(), true);
    draw_control(context, control, control.rect());
    context.painter.restore();
}

} // namespace

GuiPainter::GuiPainter() : m_elements(Skin::default_skin()) {}

void GuiPainter::paint(QPainter& painter, const CGuiCore& core, const QRectF& clip, double scale)
{
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_dialog(painter, core, *core.GetRootDialog(), clip, scale);
    for (const bool on_top : {false, true})
        for (const CDXUTDialog* dialog : core.GetDialogs())
            if (dialog->dialog_state().always_on_top == on_top)
                paint_dialog(painter, core, *dialog, clip, scale);
    if (const CDXUTControl* popup = core.live().popup; popup && popup->dialog()) {
        painter.translate(popup->dialog()->client_rect().topLeft());
        painter.scale(popup->dialog()->scale_x(), popup->dialog()->scale_y());
        DrawContext context{painter, m_elements, core, scale, false, popup->has_extras() ? popup : nullptr};
        draw_popup(context, *popup);
    }
    if (const OpenMenu* menu = core.open_menu())
        draw_open_menu({painter, m_elements, core, scale, false, nullptr}, *menu);
    painter.restore();
}

void GuiPainter::paint_dialog(QPainter& painter, const CGuiCore& core, const CDXUTDialog& dialog, const QRectF& clip,
                              double scale)
{
    if (!dialog.GetVisible() || !(dialog.is_root() || dialog.drawn_bounds().intersects(clip)))
        return;
    DrawContext context{painter, m_elements, core, scale, core.selection().editing, nullptr};
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
        context.scale = scale * std::max(dialog.scale_x(), dialog.scale_y());
    }
    for (const CDXUTControl* control : dialog.controls()) {
        if (!control->GetVisible())
            continue;
        context.styled = control->has_extras() ? control : nullptr;
        if (control->is_rotated())
            draw_rotated(*control, context, visible);
        else if (const QRectF area = control->rect(); area.intersects(visible))
            draw_control(context, *control, area);
    }
    painter.restore();
}

} // namespace tarn
