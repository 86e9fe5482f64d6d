#pragma once

#include <QPointF>
#include <QRectF>

#include <array>

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
/// `frame` with the sides that `handle` holds moved by `offset`; no side passes the one across.
QRectF resized(const QRectF& frame, Handle handle, QPointF offset, double smallest);
Qt::CursorShape handle_cursor(Handle handle);

/// The frame on the screen of the one selected object that can be resized; empty for none or several.
QRectF resizable_frame(const CGuiCore& core);

/// Outlines of the selected objects, and the handles of the one that can be resized.
void paint_selection(QPainter& painter, const CGuiCore& core);
/// A frame that is being drawn, with its size beside it.
void paint_rubber_frame(QPainter& painter, const QRectF& frame);

} // namespace tarn
