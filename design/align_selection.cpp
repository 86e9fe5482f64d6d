#include "align_selection.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"

namespace tarn {

namespace {

/// The place and size that an author reads: 32-bit floats.
QRectF rect_of(const CDXUTControl& control)
{
    const QRectF rect = control.rect();
    return {float(rect.x()), float(rect.y()), float(rect.width()), float(rect.height())};
}

int shown_caption_height(const CDXUTDialog& dialog)
{
    return truncated(dialog.caption_rect().height());
}

QRect rect_of(const CDXUTDialog& dialog)
{
    return dialog.rect().adjusted(0, 0, 0, shown_caption_height(dialog));
}

template <class Object>
std::vector<QRectF> rects_of(const std::vector<Object*>& objects)
{
    std::vector<QRectF> rects;
    rects.reserve(objects.size());
    for (const Object* object : objects) {
        rects.emplace_back(rect_of(*object));
    }
    return rects;
}

// Objects that scale with their area lose fractions when they are written, so they are left alone where they stand
// right already.

void move_to(CDXUTControl& control, const QRectF& from, QPointF to)
{
    if (from.topLeft() != to)
        control.SetLocation(float(to.x()), float(to.y()));
}

void move_to(CDXUTDialog& dialog, const QRectF& from, QPointF to)
{
    if (from.topLeft() != to)
        dialog.SetLocation(truncated(to.x()), truncated(to.y()));
}

std::vector<CDXUTControl*> selected_controls(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    return selection.current_control ? selection.controls : std::vector<CDXUTControl*>();
}

std::vector<CDXUTControl*> controls_of_current_dialog(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    std::vector<CDXUTControl*> controls;
    if (!selection.current_control)
        return controls;
    controls.reserve(selection.controls.size());
    const CDXUTDialog* home = selection.current_control->dialog();
    std::copy_if(selection.controls.begin(), selection.controls.end(), std::back_inserter(controls),
                 [home](const CDXUTControl* control) { return control->dialog() == home; });
    return controls;
}

/// Without the root dialog, which is always as large as the screen.
std::vector<CDXUTDialog*> selected_dialogs(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    if (!selection.current_dialog)
        return {};
    auto dialogs = selection.dialogs;
    std::erase(dialogs, core.GetRootDialog());
    return dialogs;
}

/// The area that the controls of `dialog` are aligned in; null is the screen.
QSizeF area_for_controls(const CGuiCore& core, const CDXUTDialog* dialog)
{
    if (!dialog || dialog->is_root())
        return core.screen_size();
    return dialog->client_size()
        + QSizeF(0, dialog->dialog_state().caption_shown * dialog->dialog_state().caption_height);
}

template <class Object>
bool move_to_area(const std::vector<Object*>& objects, Edge edge, const QSizeF& area)
{
    const auto rects = rects_of(objects);
    const QPointF offset = area_offset(edge, rects, area);
    std::size_t i = 0;
    for (Object* object : objects) {
        const QRectF& rect = rects[i++];
        move_to(*object, rect, rect.topLeft() + offset);
        object->set_align_type(anchor_at_edge(edge, object->align_type()));
    }
    return !objects.empty();
}

} // namespace

bool align_selection(CGuiCore& core, Edge edge)
{
    if (core.selection().controls_selected) {
        const auto controls = controls_of_current_dialog(core);
        if (controls.empty())
            return false;
        const QRectF reference = rect_of(*core.selection().current_control);
        for (CDXUTControl* control : controls) {
            const QRectF rect = rect_of(*control);
            move_to(*control, rect, aligned(edge, rect, reference));
        }
        return true;
    }
    const auto dialogs = selected_dialogs(core);
    if (dialogs.empty())
        return false;
    const QRect reference = rect_of(*core.selection().current_dialog);
    for (CDXUTDialog* dialog : dialogs)
        move_to(*dialog, rect_of(*dialog), aligned(edge, rect_of(*dialog), reference));
    return true;
}

bool match_selection(CGuiCore& core, Dimension dimension)
{
    if (core.selection().controls_selected) {
        const auto controls = selected_controls(core);
        if (controls.empty())
            return false;
        const QRectF reference = rect_of(*core.selection().current_control);
        for (CDXUTControl* control : controls) {
            const QRectF rect = rect_of(*control);
            if (const QSizeF size = matched(dimension, rect, reference); size != rect.size())
                control->SetSize(float(size.width()), float(size.height()));
        }
        return true;
    }
    const auto dialogs = selected_dialogs(core);
    if (dialogs.empty())
        return false;
    const QRect reference = rect_of(*core.selection().current_dialog);
    for (CDXUTDialog* dialog : dialogs) {
        const QSize size = matched(dimension, rect_of(*dialog), reference);
        dialog->SetSize(size.width(), size.height() - shown_caption_height(*dialog));
    }
    return true;
}

bool distribute_selection(CGuiCore& core, Qt::Orientation direction)
{
    const auto controls = controls_of_current_dialog(core);
    if (controls.size() < 2)
        return false;
    const auto rects = rects_of(controls);
    const auto places = distributed(direction, rects, rect_of(*core.selection().current_control));
    std::size_t i = 0;
    for (CDXUTControl* control : controls) {
        move_to(*control, rects[i], places[i]);
        ++i;
    }
    return true;
}

bool align_selection_to_area(CGuiCore& core, Edge edge)
{
    const SelectionRecord& selection = core.selection();
    if (!selection.controls_selected)
        return move_to_area(selected_dialogs(core), edge, core.screen_size());
    const auto controls = controls_of_current_dialog(core);
    return !controls.empty() && move_to_area(controls, edge, area_for_controls(core, controls.front()->dialog()));
}

} // namespace tarn
