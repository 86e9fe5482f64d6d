#include "selection_places.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "hit_test.h"
#include "screen_rects.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

/// `side` of an object as it is when that of its frame grows from `from` to `to`.
double scaled(double side, double from, double to)
{
    return from > 0 ? side / from * to : side;
}

QRectF mapped(const QRectF& rect, const QRectF& from, const QRectF& to)
{
    return {to.x() + scaled(rect.x() - from.x(), from.width(), to.width()),
            to.y() + scaled(rect.y() - from.y(), from.height(), to.height()),
            scaled(rect.width(), from.width(), to.width()), scaled(rect.height(), from.height(), to.height())};
}

/// Edges on whole pixels, so that neighbours stay neighbours; no side vanishes.
QRectF on_pixels(const QRectF& rect)
{
    const QPointF corner(std::round(rect.left()), std::round(rect.top()));
    const double width = std::round(rect.left() + rect.width()) - corner.x();
    const double height = std::round(rect.top() + rect.height()) - corner.y();
    return {corner, QSizeF(std::max(1.0, width), std::max(1.0, height))};
}

} // namespace

SelectionPlaces::SelectionPlaces(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    if (selection.controls_selected) {
        m_objects.reserve(selection.controls.size());
        for (CDXUTControl* control : selection.controls) {
            if (is_editable(*control))
                m_objects.push_back({control->dialog(), control, control->rect()});
        }
    } else {
        for (CDXUTDialog* dialog : selection.dialogs)
            if (!dialog->is_root())
                m_objects.push_back({dialog, nullptr, QRectF(dialog->rect())});
    }
}

QRectF SelectionPlaces::frame() const
{
    QRectF frame;
    ScreenRects rects;
    for (const Start& start : m_objects)
        frame |= start.control ? rects.of(*start.dialog, start.rect) : start.dialog->outer_rect();
    return frame;
}

void SelectionPlaces::move_by(QPointF offset)
{
    for (const Start& start : m_objects) {
        if (!start.control) {
            const QPoint corner = (start.rect.topLeft() + offset).toPoint();
            start.dialog->SetLocation(corner.x(), corner.y());
        } else {
            const QPointF inside(offset.x() / start.dialog->scale_x(), offset.y() / start.dialog->scale_y());
            const QPointF corner = start.rect.topLeft() + inside;
            start.control->SetLocation(float(corner.x()), float(corner.y()));
        }
    }
}

void SelectionPlaces::fit(const QRectF& from, const QRectF& frame)
{
    for (const Start& start : m_objects) {
        if (start.control) {
            fit_control(start, from, frame);
            continue;
        }
        const double caption = start.dialog->caption_rect().height();
        const QRect wanted = frame.toRect();
        start.dialog->SetLocation(wanted.x(), wanted.y());
        start.dialog->SetSize(wanted.width(), wanted.height() - int(caption));
    }
}

void SelectionPlaces::fit_control(const Start& start, const QRectF& from, const QRectF& frame)
{
    const QRectF wanted = mapped(start.dialog->to_screen(start.rect), from, frame);
    const QPointF corner = start.dialog->to_client(wanted.topLeft());
    QRectF inside(corner, QSizeF(wanted.width() / start.dialog->scale_x(), wanted.height() / start.dialog->scale_y()));
    if (m_objects.size() > 1)
        inside = on_pixels(inside);
    start.control->SetLocation(float(inside.x()), float(inside.y()));
    start.control->SetSize(float(inside.width()), float(inside.height()));
}

} // namespace tarn
