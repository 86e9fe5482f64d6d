#pragma once

#include <QEvent>
#include <QPointF>
#include <Qt>

class QWidget;

/// What a user does with mouse and keyboard, as events sent to the widgets. Widgets may be gone afterwards.
namespace tarn::script::input {

/// Runs what is pending: paints, layouts, timers that are due, deletions.
void process_events();
/// Runs the event loop for a time.
void wait(int milliseconds);

/// Makes the widget's window the active one and scrolls to the widget, as far as the window can be.
void bring_up(QWidget& widget);
void focus(QWidget& widget);

/// One mouse event; a press gives the focus as a click does.
void mouse(QWidget& widget, QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::MouseButtons held,
           Qt::KeyboardModifiers modifiers = {});
void click(QWidget& widget, QPointF place, Qt::KeyboardModifiers modifiers = {});
void double_click(QWidget& widget, QPointF place);

/// Presses and releases a key; whether the widget took it.
bool key(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = {});
/// Types letter by letter where the cursor is; a line break is Enter.
void type(QWidget& editor, const QString& text);
/// Types `text` over everything that `editor`, an edit field, holds.
void type_over(QWidget& editor, const QString& text);

} // namespace tarn::script::input
