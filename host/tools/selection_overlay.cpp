#include "selection_overlay.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/interface_font.h"
#include "hit_test.h"
#include "merged_outlines.h"
#include "screen_rects.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace tarn {

namespace {

constexpr double handle_side = 8;       ///< pixels
constexpr double reach = 2;             ///< pixels around a handle that still hit it
constexpr double smallest_inside = 28;  ///< pixels; a shorter side has its handles outside
constexpr std::size_t few_frames = 200; ///< of more frames none has a shade, which takes long to draw
constexpr double label_gap = 8;         ///< pixels between a frame and its read-out
constexpr int way_font_size = 10;       ///< pixels
constexpr double recording_width = 3;   ///< pixels
constexpr double mark_side = 5;         ///< pixels from the middle of a diamond to its corners
constexpr double mark_gap = 9;          ///< pixels from that to the frame
const QColor keys_color(0xb0, 0x7a, 0xe8);
const QColor unrecorded_color(0xe0, 0x45, 0x3a);
const QColor recording_color(0xe0, 0x2b, 0x2b);
const QColor accent(0x2f, 0xb5, 0xc9);
const QColor current_accent(0xff, 0xb0, 0x3a);

constexpr std::array<HandleSeat, handle_count> seats{{{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {0, 2}, {0, 1}}};

void outline(QPainter& painter, const std::vector<QRectF>& frames, const QColor& color)
{
    std::vector<QRectF> shown;
    const double pixel = view_pixel(painter);
    const QRectF window = shown_area(painter);
    const QMarginsF line(pixel / 2, pixel / 2, pixel / 2, pixel / 2);
    for (const QRectF& frame : frames)
        if (frame.marginsAdded(line).intersects(window))
            shown.push_back(frame);
    if (shown.empty())
        return;
    if (shown.size() > few_frames) {
        draw_merged_outlines(painter, shown, color);
        return;
    }
    for (QRectF& frame : shown)
        frame = frame.marginsAdded(line);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 110), 3 * pixel));
    painter.drawRects(shown.data(), int(shown.size()));
    painter.setPen(line_pen(painter, color));
    painter.drawRects(shown.data(), int(shown.size()));
}

void outline_rotated(QPainter& painter, const SelectionRecord& selection)
{
    painter.setBrush(Qt::NoBrush);
    for (const CDXUTControl* control : selection.controls) {
        if (!control->is_rotated())
            continue;
        painter.setPen(line_pen(painter, control == selection.current_control ? current_accent : accent));
        painter.drawPolygon(control->screen_outline());
    }
}

/// A diamond beside the top left corner, away from the handles, as far as the view has room there.
void paint_drive_mark(QPainter& painter, QPointF corner, DriveMark mark)
{
    const double pixel = view_pixel(painter);
    const QPointF first = shown_area(painter).topLeft() + QPointF(mark_gap, mark_gap) * pixel;
    const QPointF beside = corner - QPointF(mark_gap, mark_gap) * pixel;
    const QPointF middle(std::max(first.x(), beside.x()), std::max(first.y(), beside.y()));
    const double side = mark_side * pixel;
    const QPointF points[] = {middle - QPointF(side, 0), middle - QPointF(0, side), middle + QPointF(side, 0),
                              middle + QPointF(0, side)};
    painter.setPen(QPen(mark == DriveMark::Keys ? QColor(0, 0, 0, 150) : unrecorded_color, 1.5 * pixel));
    painter.setBrush(mark == DriveMark::Keys ? QBrush(keys_color) : QBrush(Qt::white));
    painter.drawConvexPolygon(points, 4);
}

void mark_driven(QPainter& painter, const SelectionRecord& selection,
                 const std::function<DriveMark(const ModelObject&)>& mark_of)
{
    const QRectF window = shown_area(painter);
    const auto paint = [&](const ModelObject& object, const QRectF& frame) {
        if (const DriveMark mark = mark_of(object); mark != DriveMark::None && frame.intersects(window))
            paint_drive_mark(painter, frame.topLeft(), mark);
    };
    for (const CDXUTDialog* dialog : selection.dialogs)
        if (!dialog->is_root() && dialog->GetVisible())
            paint(*dialog, dialog->outer_rect());
    for (const CDXUTControl* control : selection.controls)
        if (control->GetVisible())
            paint(*control, control->screen_bounds());
}

/// One side of a frame after a drag that makes it `length` long. `seat` tells which end is held (0 or 2; 1: none).
struct Span {
    double start;
    double length;
};

Span span(double start, double old_length, double length, int seat, bool from_centre)
{
    if (from_centre || seat == 1)
        return {start + std::floor((old_length - length) / 2), length};
    return {seat == 0 ? start + old_length - length : start, length};
}

} // namespace

HandleSeat handle_seat(Handle handle)
{
    return seats[static_cast<std::size_t>(handle)];
}

QPen line_pen(const QPainter& painter, const QColor& color, Qt::PenStyle style)
{
    return QPen(color, view_pixel(painter), style);
}

double view_pixel(const QPainter& painter)
{
    return 1 / painter.worldTransform().m11();
}

QRectF shown_area(const QPainter& painter)
{
    return painter.worldTransform().inverted().mapRect(QRectF(painter.window()));
}

QRectF handle_rect(const QRectF& around, Handle handle, double pixel)
{
    const HandleSeat seat = handle_seat(handle);
    const double side = handle_side * pixel;
    // Of what is small the handles stand outside, so that all of it is free to be dragged.
    const double out = side / 2 + reach * pixel;
    const double x_out = around.width() < smallest_inside * pixel ? out : 0;
    const double y_out = around.height() < smallest_inside * pixel ? out : 0;
    const QRectF frame = around.adjusted(-x_out, -y_out, x_out, y_out);
    const QPointF centre(frame.x() + frame.width() * seat.x / 2.0, frame.y() + frame.height() * seat.y / 2.0);
    return {centre.x() - side / 2, centre.y() - side / 2, side, side};
}

int handle_at(const QRectF& frame, QPointF place, double pixel)
{
    const double around = reach * pixel;
    if (frame.isNull())
        return -1;
    // Corners first: on a small object they are what is wanted.
    for (const int start : {0, 1})
        for (int i = start; i < handle_count; i += 2)
            if (handle_rect(frame, Handle(i), pixel).adjusted(-around, -around, around, around).contains(place))
                return i;
    return -1;
}

QRectF resized(const QRectF& frame, Handle handle, QPointF offset, const ResizeRules& rules)
{
    const HandleSeat seat = handle_seat(handle);
    const double sides = rules.from_centre ? 2 : 1;
    double width = std::max(rules.smallest, frame.width() + (seat.x - 1) * offset.x() * sides);
    double height = std::max(rules.smallest, frame.height() + (seat.y - 1) * offset.y() * sides);
    if (seat.x == 1)
        width = frame.width();
    if (seat.y == 1)
        height = frame.height();
    if (rules.keep_ratio && frame.width() > 0 && frame.height() > 0) {
        const double shortest = rules.smallest / std::min(frame.width(), frame.height());
        const double by_width = seat.x == 1 ? 0 : width / frame.width();
        const double by_height = seat.y == 1 ? 0 : height / frame.height();
        const double scale = std::max({by_width, by_height, shortest});
        width = std::round(frame.width() * scale);
        height = std::round(frame.height() * scale);
    }
    const Span x = span(frame.x(), frame.width(), width, seat.x, rules.from_centre);
    const Span y = span(frame.y(), frame.height(), height, seat.y, rules.from_centre);
    return {x.start, y.start, x.length, y.length};
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
    if (!selection.controls_selected) {
        const bool one = selection.dialogs.size() == 1 && selection.current_dialog
            && !selection.current_dialog->is_root();
        return one && selection.current_dialog->GetVisible() ? selection.current_dialog->outer_rect() : QRectF();
    }
    QRectF frame;
    const CDXUTDialog* home = nullptr;
    ScreenRects rects;
    for (const CDXUTControl* control : selection.controls) {
        if (!is_editable(*control))
            continue;
        // The sides of a rotated control do not run along those of a frame; its size is set on its page.
        if ((home && control->dialog() != home) || control->is_rotated())
            return {};
        home = control->dialog();
        frame |= rects.of(*home, control->rect());
    }
    return home && home->GetVisible() ? frame : QRectF();
}

QRectF selected_frame(const CGuiCore& core)
{
    QRectF frame;
    for (const CDXUTDialog* dialog : core.selection().dialogs)
        if (!dialog->is_root() && dialog->GetVisible())
            frame |= dialog->outer_rect();
    for (const CDXUTControl* control : core.selection().controls)
        if (control->GetVisible())
            frame |= control->screen_bounds();
    return frame;
}

void paint_selection(QPainter& painter, const CGuiCore& core,
                     const std::function<DriveMark(const ModelObject&)>& mark_of)
{
    const SelectionRecord& selection = core.selection();
    if (!selection.editing)
        return;
    std::vector<QRectF> current;
    std::vector<QRectF> others;
    for (const CDXUTDialog* dialog : selection.dialogs)
        if (!dialog->is_root() && dialog->GetVisible())
            (dialog == selection.current_dialog ? current : others).push_back(dialog->outer_rect());
    ScreenRects rects;
    others.reserve(selection.controls.size());
    for (const CDXUTControl* control : selection.controls) {
        if (const CDXUTDialog* home = control->dialog(); home && !control->is_rotated())
            (control == selection.current_control ? current : others).push_back(rects.of(*home, control->rect()));
    }
    outline(painter, others, accent);
    outline(painter, current, current_accent);
    outline_rotated(painter, selection);
    mark_driven(painter, selection, mark_of);
    const QRectF frame = resizable_frame(core);
    if (frame.isNull())
        return;
    const double pixel = view_pixel(painter);
    if (selection.controls.size() > 1) {
        painter.setPen(line_pen(painter, accent, Qt::DashLine));
        painter.drawRect(frame.adjusted(-pixel / 2, -pixel / 2, pixel / 2, pixel / 2));
    }
    painter.setPen(line_pen(painter, QColor(20, 30, 34)));
    painter.setBrush(Qt::white);
    for (int i = 0; i < handle_count; ++i)
        painter.drawRect(handle_rect(frame, Handle(i), pixel));
}

void paint_recording(QPainter& painter)
{
    const double pixel = view_pixel(painter);
    const double width = recording_width * pixel;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(recording_color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(shown_area(painter).adjusted(width / 2, width / 2, -width / 2, -width / 2));
}

void paint_frames(QPainter& painter, const std::vector<QRectF>& frames)
{
    outline(painter, frames, accent);
}

void paint_marquee(QPainter& painter, const QRectF& frame)
{
    painter.setBrush(QColor(accent.red(), accent.green(), accent.blue(), 40));
    painter.setPen(line_pen(painter, accent, Qt::DashLine));
    painter.drawRect(frame);
}

void paint_rubber_frame(QPainter& painter, const QRectF& frame, const QString& title)
{
    paint_marquee(painter, frame);
    paint_label(painter, frame, title + QStringLiteral("  ") + size_text(frame.size()));
}

void paint_way(QPainter& painter, const QLineF& way, const QColor& color, const QString& length)
{
    const double pixel = view_pixel(painter);
    painter.setPen(line_pen(painter, color));
    painter.drawLine(way);
    painter.save();
    painter.scale(pixel, pixel);
    painter.setFont(interface_font(way_font_size, false));
    QRectF label = QFontMetricsF(painter.font()).boundingRect(length).adjusted(-3, -1, 3, 1);
    label.moveCenter(way.center() / pixel);
    painter.fillRect(label, color);
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, length);
    painter.restore();
}

void paint_label(QPainter& painter, const QRectF& frame, const QString& text)
{
    const double pixel = view_pixel(painter);
    const QFont font = interface_font(12, false);
    const QRectF extent = QFontMetricsF(font).boundingRect(text).adjusted(-6, -3, 6, 3);
    const QRectF shown = shown_area(painter);
    const QRectF window(shown.topLeft() / pixel, shown.size() / pixel);
    const QRectF around(frame.topLeft() / pixel, frame.size() / pixel);
    QRectF label(around.right() - extent.width(), around.bottom() + label_gap, extent.width(), extent.height());
    if (label.bottom() > window.bottom())
        label.moveBottom(std::max(around.top() - label_gap, window.top() + label.height()));
    label.moveLeft(std::max(window.left(), std::min(label.left(), window.right() - label.width())));
    label.moveTop(std::max(window.top(), std::min(label.top(), window.bottom() - label.height())));
    painter.save();
    painter.scale(pixel, pixel);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(20, 30, 34, 200));
    painter.drawRoundedRect(label, 4, 4);
    painter.setPen(Qt::white);
    painter.setFont(font);
    painter.drawText(label, Qt::AlignCenter, text);
    painter.restore();
}

QString size_text(const QSizeF& size)
{
    return QStringLiteral("%1 × %2").arg(qRound(size.width())).arg(qRound(size.height()));
}

} // namespace tarn
