#include "selection_overlay.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/text_cache.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr double handle_side = 8; ///< pixels
constexpr double reach = 2;       ///< pixels around a handle that still hit it
const QColor accent(0x2f, 0xb5, 0xc9);
const QColor current_accent(0xff, 0xb0, 0x3a);

/// Where the handle sits on the frame: 0 at the left or top, 1 in the middle, 2 at the right or bottom.
struct Seat {
    int x;
    int y;
};

constexpr std::array<Seat, handle_count> seats{{{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {0, 2}, {0, 1}}};

Seat seat_of(Handle handle)
{
    return seats[static_cast<std::size_t>(handle)];
}

void outline(QPainter& painter, const QRectF& frame, const QColor& color)
{
    painter.setPen(QPen(QColor(0, 0, 0, 110), 3));
    painter.drawRect(frame.adjusted(-0.5, -0.5, 0.5, 0.5));
    painter.setPen(QPen(color, 1));
    painter.drawRect(frame.adjusted(-0.5, -0.5, 0.5, 0.5));
}

} // namespace

QRectF handle_rect(const QRectF& frame, Handle handle)
{
    const Seat seat = seat_of(handle);
    const QPointF centre(frame.x() + frame.width() * seat.x / 2.0, frame.y() + frame.height() * seat.y / 2.0);
    return {centre.x() - handle_side / 2, centre.y() - handle_side / 2, handle_side, handle_side};
}

int handle_at(const QRectF& frame, QPointF place)
{
    if (frame.isNull())
        return -1;
    // Corners first: on a small object they are what is wanted.
    for (const int start : {0, 1})
        for (int i = start; i < handle_count; i += 2)
            if (handle_rect(frame, Handle(i)).adjusted(-reach, -reach, reach, reach).contains(place))
                return i;
    return -1;
}

QRectF resized(const QRectF& frame, Handle handle, QPointF offset, double smallest)
{
    const Seat seat = seat_of(handle);
    double left = frame.left();
    double top = frame.top();
    double right = left + frame.width();
    double bottom = top + frame.height();
    if (seat.x == 0)
        left = std::min(left + offset.x(), right - smallest);
    if (seat.x == 2)
        right = std::max(right + offset.x(), left + smallest);
    if (seat.y == 0)
        top = std::min(top + offset.y(), bottom - smallest);
    if (seat.y == 2)
        bottom = std::max(bottom + offset.y(), top + smallest);
    return {QPointF(left, top), QPointF(right, bottom)};
}

Qt::CursorShape handle_cursor(Handle handle)
{
    switch (handle) {
    case Handle::TopLeft:
    case Handle::BottomRight: return Qt::SizeFDiagCursor;
    case Handle::TopRight:
    case Handle::BottomLeft: return Qt::SizeBDiagCursor;
    case Handle::Top:
    case Handle::Bottom: return Qt::SizeVerCursor;
    default: return Qt::SizeHorCursor;
    }
}

QRectF resizable_frame(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    if (selection.controls_selected) {
        const bool one = selection.controls.size() == 1 && selection.current_control;
        return one && !selection.current_control->locked() ? selection.current_control->screen_rect() : QRectF();
    }
    const bool one = selection.dialogs.size() == 1 && selection.current_dialog && !selection.current_dialog->is_root();
    return one ? selection.current_dialog->outer_rect() : QRectF();
}

void paint_selection(QPainter& painter, const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    if (!selection.editing)
        return;
    painter.setBrush(Qt::NoBrush);
    for (const CDXUTDialog* dialog : selection.dialogs)
        if (!dialog->is_root() && dialog->GetVisible())
            outline(painter, dialog->outer_rect(), dialog == selection.current_dialog ? current_accent : accent);
    for (const CDXUTControl* control : selection.controls)
        outline(painter, control->screen_rect(), control == selection.current_control ? current_accent : accent);
    const QRectF frame = resizable_frame(core);
    if (frame.isNull())
        return;
    painter.setPen(QPen(QColor(20, 30, 34), 1));
    painter.setBrush(Qt::white);
    for (int i = 0; i < handle_count; ++i)
        painter.drawRect(handle_rect(frame, Handle(i)));
}

void paint_rubber_frame(QPainter& painter, const QRectF& frame)
{
    painter.setBrush(QColor(accent.red(), accent.green(), accent.blue(), 40));
    painter.setPen(QPen(accent, 1, Qt::DashLine));
    painter.drawRect(frame);
    const QFont font = interface_font(12, false);
    const QString size = QStringLiteral("%1 × %2").arg(qRound(frame.width())).arg(qRound(frame.height()));
    const QRectF text = QFontMetricsF(font).boundingRect(size).adjusted(-6, -3, 6, 3);
    const QRectF label(frame.right() - text.width(), frame.bottom() + 6, text.width(), text.height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(20, 30, 34, 200));
    painter.drawRoundedRect(label, 4, 4);
    painter.setPen(Qt::white);
    painter.setFont(font);
    painter.drawText(label, Qt::AlignCenter, size);
}

} // namespace tarn
