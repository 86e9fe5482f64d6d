#include "gui_painter.h"

#include "control_drawing.h"
#include "draw_context.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "menu_drawing.h"

#include <QPainter>

#include <algorithm>

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
        if (!control->GetVisible())
            continue;
        context.control = control;
        if (control->is_rotated())
            draw_rotated(*control, context, visible);
        else if (const QRectF area = control->rect(); area.intersects(visible))
            draw_control(context, *control, area);
    }
    painter.restore();
}

} // namespace

GuiPainter::GuiPainter() : m_elements(Skin::default_skin()) {}

void GuiPainter::paint(QPainter& painter, const CGuiCore& core, const QRectF& clip, double scale)
{
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    const SelectionRecord& selection = core.selection();
    const CDXUTDialog* active = selection.editing ? selection.current_dialog : core.active_dialog();
    const auto paint_one = [&](const CDXUTDialog& dialog) {
        if (!dialog.GetVisible() || !(dialog.is_root() || dialog.drawn_bounds().intersects(clip)))
            return;
        DrawContext context{painter, m_elements, core, scale, selection.editing, nullptr, active};
        paint_dialog(context, dialog, clip);
    };
    paint_one(*core.GetRootDialog());
    for (const bool on_top : {false, true})
        for (const CDXUTDialog* dialog : core.GetDialogs())
            if (dialog->dialog_state().always_on_top == on_top)
                paint_one(*dialog);
    for (const CDXUTControl* control : {core.live().hovered, core.live().popup})
        if (control && control->dialog() && !control->raised_area().isEmpty())
            paint_raised(painter, core, *control, scale);
    if (const OpenMenu* menu = core.open_menu())
        draw_open_menu({painter, m_elements, core, scale, false, nullptr}, *menu);
    painter.restore();
}

void GuiPainter::paint_raised(QPainter& painter, const CGuiCore& core, const CDXUTControl& control, double scale)
{
    const ClientMap map = control.dialog()->client_map();
    painter.save();
    painter.translate(map.origin);
    painter.scale(map.scale_x, map.scale_y);
    DrawContext context{painter, m_elements, core, scale * std::max(map.scale_x, map.scale_y), false, &control};
    draw_raised(context, control);
    painter.restore();
}

} // namespace tarn
