#pragma once

#include <QLineF>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <Qt>

#include <functional>
#include <vector>

class CGuiCore;
class QPainter;

namespace tarn {

class ModelObject;

/// The eight handles around a selected object, clockwise from the top left.
enum class Handle { TopLeft, Top, TopRight, Right, BottomRight, Bottom, BottomLeft, Left };
constexpr int handle_count = 8;

/// Where a handle sits on its frame: 0 at the left or top, 1 in the middle, 2 at the right or bottom.
struct HandleSeat {
    int x;
    int y;
};
HandleSeat handle_seat(Handle handle);

/// The size of a view's pixel in what `painter` counts in, pixels of the screen.
double view_pixel(const QPainter& painter);
/// What the view of `painter` shows, pixels of the screen.
QRectF shown_area(const QPainter& painter);
/// Draws lines one pixel of the view wide.
QPen line_pen(const QPainter& painter, const QColor& color, Qt::PenStyle style = Qt::SolidLine);

// Handles and read-outs have their sizes in the view: `pixel` tells how many pixels of the screen one of it shows.

/// The square of a handle around `frame`; one function for painting and for hit tests.
QRectF handle_rect(const QRectF& frame, Handle handle, double pixel = 1);
/// The handle of `frame` at `place`, or -1.
int handle_at(const QRectF& frame, QPointF place, double pixel = 1);
struct ResizeRules {
    double smallest = 1;      ///< pixels; no side gets shorter
    bool keep_ratio = false;  ///< of width and height
    bool from_centre = false; ///< the centre stays, not the sides across
};

/// `frame` as it is when `handle` is dragged by `offset`; no side passes the one across.
QRectF resized(const QRectF& frame, Handle handle, QPointF offset, const ResizeRules& rules);
Qt::CursorShape handle_cursor(Handle handle);

/// The frame on the screen around what the handles resize: one dialog, or the controls of one dialog that are neither
/// locked nor hidden; empty for anything else.
QRectF resizable_frame(const CGuiCore& core);
/// The frame on the screen around everything that is selected and shown.
QRectF selected_frame(const CGuiCore& core);

/// How an object that a timebar drives is marked: hollow while the author changed it and did not record that.
enum class DriveMark { None, Keys, Unrecorded };
/// Outlines of the selected objects, and the handles of what can be resized. `mark_of` tells of an object whether it is
/// driven.
void paint_selection(QPainter& painter, const CGuiCore& core,
                     const std::function<DriveMark(const ModelObject&)>& mark_of);
/// A red frame along the edges of the view: what is edited becomes keys at once.
void paint_recording(QPainter& painter);
/// Outlines of what is about to be selected.
void paint_frames(QPainter& painter, const std::vector<QRectF>& frames);
void paint_marquee(QPainter& painter, const QRectF& frame);
/// The frame of an object that is being drawn; its size stands beside it after `title`.
void paint_rubber_frame(QPainter& painter, const QRectF& frame, const QString& title);
/// A free way with its length beside it.
void paint_way(QPainter& painter, const QLineF& way, const QColor& color, const QString& length);
/// A short text below `frame`, or where the view has room for it.
void paint_label(QPainter& painter, const QRectF& frame, const QString& text);
QString size_text(const QSizeF& size);

} // namespace tarn
