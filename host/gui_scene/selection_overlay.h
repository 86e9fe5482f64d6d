#pragma once

#include <QPointF>
#include <QRectF>

#include <QSizeF>
#include <QString>
#include <Qt>

#include <vector>

class CGuiCore;
class QPainter;

namespace tarn {

/// The eight handles around a selected object, clockwise from the top left.
enum class Handle { TopLeft, Top, TopRight, Right, BottomRight, Bottom, BottomLeft, Left };
constexpr int handle_count = 8;

/// The square of a handle around `frame`; one function for painting and for hit tests.
QRectF handle_rect(const QRectF& frame, Handle handle);
/// The handle of `frame` at `place`, or -1.
int handle_at(const QRectF& frame, QPointF place);
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

/// Outlines of the selected objects, and the handles of what can be resized.
void paint_selection(QPainter& painter, const CGuiCore& core);
/// Outlines of what is about to be selected.
void paint_frames(QPainter& painter, const std::vector<QRectF>& frames);
void paint_marquee(QPainter& painter, const QRectF& frame);
/// The frame of an object that is being drawn; its size stands beside it after `title`.
void paint_rubber_frame(QPainter& painter, const QRectF& frame, const QString& title);
/// A short text below `frame`, or where the view has room for it.
void paint_label(QPainter& painter, const QRectF& frame, const QString& text);
QString size_text(const QSizeF& size);

} // namespace tarn
