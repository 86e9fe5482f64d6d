#include "select_tool.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_input.h"
#include "gui_plug_scene.h"
#include "selection_overlay.h"

#include <cmath>

namespace tarn {

namespace {

constexpr double drag_reach = 3; ///< pixels that the mouse has to move before a press becomes a drag
constexpr double smallest = 4;   ///< pixels; side below which nothing is resized

QPointF rounded(QPointF offset)
{
    return {std::round(offset.x()), std::round(offset.y())};
}

} // namespace

bool SelectTool::mouse(const MouseEvent& event)
{
    if (!m_scene.gui_core().selection().editing)
        return false;
    if (event.kind == MouseEvent::Kind::Press && event.button == Qt::LeftButton)
        press(event);
    else if (event.kind == MouseEvent::Kind::Move && m_pressed)
        drag(event.place);
    else if (event.kind == MouseEvent::Kind::Release && event.button == Qt::LeftButton && m_pressed)
        release();
    else if (event.kind == MouseEvent::Kind::Move)
        update_cursor(event.place);
    else
        return false;
    return true;
}

void SelectTool::press(const MouseEvent& event)
{
    CGuiCore& core = m_scene.gui_core();
    m_press_place = event.place;
    m_handle = handle_at(resizable_frame(core), event.place);
    m_pressed = m_handle >= 0 || select_at(event.place, event.modifiers);
    remember_selection();
}

/// True when there is something under the mouse to drag.
bool SelectTool::select_at(QPointF place, Qt::KeyboardModifiers modifiers)
{
    CGuiCore& core = m_scene.gui_core();
    SelectionRecord& selection = core.selection();
    const bool add = modifiers & (Qt::ControlModifier | Qt::ShiftModifier);
    CDXUTControl* control = GuiInput::control_at(core, place);
    if (control && control->locked())
        control = nullptr;
    CDXUTDialog* dialog = control ? nullptr : GuiInput::dialog_at(core, place);
    if (dialog && dialog->is_root())
        dialog = nullptr;

    if (control) {
        const bool keep = add || selection.contains(control);
        if (!keep)
            core.ClearCtrlSelection();
        core.SelectControl(control, keep);
    } else if (dialog) {
        core.SelectDialog(dialog, add || selection.contains(dialog));
    } else {
        core.ClearCtrlSelection();
        core.ClearDialogSelection();
    }
    m_scene.world()->broadcast(ui_scene_changed);
    m_scene.world()->update_all_views();
    return control || dialog;
}

void SelectTool::remember_selection()
{
    m_start.clear();
    const SelectionRecord& selection = m_scene.gui_core().selection();
    if (selection.controls_selected) {
        for (CDXUTControl* control : selection.controls)
            if (!control->locked())
                m_start.push_back({nullptr, control, control->rect()});
    } else {
        for (CDXUTDialog* dialog : selection.dialogs)
            m_start.push_back({dialog, nullptr, QRectF(dialog->rect())});
    }
}

void SelectTool::drag(QPointF place)
{
    const QPointF offset = rounded(place - m_press_place);
    if (!m_action) {
        if (std::max(std::abs(offset.x()), std::abs(offset.y())) < drag_reach)
            return;
        m_action.emplace(m_scene.journal(), m_handle < 0 ? lang(u"移动", u"Move") : lang(u"调整大小", u"Resize"));
    }
    if (m_handle < 0)
        move_by(offset);
    else
        resize_by(offset);
    notify_properties();
}

void SelectTool::move_by(QPointF offset)
{
    for (const Start& start : m_start) {
        if (start.dialog) {
            const QPoint corner = (start.rect.topLeft() + offset).toPoint();
            start.dialog->SetLocation(corner.x(), corner.y());
        } else if (const CDXUTDialog* home = start.control->dialog()) {
            const QPointF corner = start.rect.topLeft()
                + QPointF(offset.x() / home->scale_x(), offset.y() / home->scale_y());
            start.control->SetLocation(float(corner.x()), float(corner.y()));
        }
    }
}

void SelectTool::resize_by(QPointF offset)
{
    if (m_start.size() != 1)
        return;
    const Start& start = m_start.front();
    if (start.dialog) {
        const double caption = start.dialog->outer_rect().height() - start.dialog->client_rect().height();
        const QRectF whole(start.rect.topLeft(), start.rect.size() + QSizeF(0, caption));
        const QRect wanted = resized(whole, Handle(m_handle), offset, smallest + caption).toRect();
        start.dialog->SetLocation(wanted.x(), wanted.y());
        start.dialog->SetSize(wanted.width(), wanted.height() - int(caption));
    } else if (const CDXUTDialog* home = start.control->dialog()) {
        const QPointF inside(offset.x() / home->scale_x(), offset.y() / home->scale_y());
        const QRectF wanted = resized(start.rect, Handle(m_handle), inside, smallest);
        start.control->SetLocation(float(wanted.x()), float(wanted.y()));
        start.control->SetSize(float(wanted.width()), float(wanted.height()));
    }
}

void SelectTool::notify_properties()
{
    const bool controls = m_scene.gui_core().selection().controls_selected;
    m_scene.world()->broadcast(controls ? ui_control_properties : ui_dialog_properties);
    m_scene.world()->update_all_views();
}

void SelectTool::release()
{
    m_pressed = false;
    m_action.reset();
}

void SelectTool::cancel()
{
    if (m_action) {
        m_scene.journal().cancel();
        m_action.reset();
        notify_properties();
    }
    m_pressed = false;
}

bool SelectTool::key(int key, Qt::KeyboardModifiers)
{
    if (key != Qt::Key_Escape || !m_pressed)
        return false;
    cancel();
    return true;
}

void SelectTool::update_cursor(QPointF place)
{
    const int handle = handle_at(resizable_frame(m_scene.gui_core()), place);
    m_cursor = handle < 0 ? Qt::ArrowCursor : handle_cursor(Handle(handle));
}

void SelectTool::paint(QPainter& painter)
{
    paint_selection(painter, m_scene.gui_core());
}

} // namespace tarn
