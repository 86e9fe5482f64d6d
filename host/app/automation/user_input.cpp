#include "user_input.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollArea>
#include <QTimer>

namespace tarn::script::input {

namespace {

constexpr int processing_limit = 100; ///< milliseconds; a view that draws all the time must not hold a script up

void give_focus_by_click(QWidget& widget)
{
    for (QWidget* at = &widget; at; at = at->parentWidget()) {
        if ((at->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus) {
            at->setFocus(Qt::MouseFocusReason);
            return;
        }
        if (at->isWindow())
            return;
    }
}

/// What the key types, as far as automation needs it.
QString key_text(int key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return QStringLiteral("\r");
    if (key < Qt::Key_Space || key > Qt::Key_AsciiTilde || modifiers & (Qt::ControlModifier | Qt::AltModifier))
        return {};
    const QChar typed{ushort(key)};
    return modifiers & Qt::ShiftModifier ? typed : typed.toLower();
}

} // namespace

void process_events()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents, processing_limit);
    // A script is one long event handler: deletions would wait for its end.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    process_events();
}

void bring_up(QWidget& widget)
{
    if (!widget.isActiveWindow()) {
        widget.activateWindow();
        // Does not wait for a window manager, which need not be there.
        QApplication::setActiveWindow(widget.window());
    }
    for (QWidget* at = widget.parentWidget(); at && !at->isWindow(); at = at->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(at))
            area->ensureWidgetVisible(&widget);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

void focus(QWidget& widget)
{
    bring_up(widget);
    if (!widget.hasFocus())
        widget.setFocus(Qt::MouseFocusReason);
}

void mouse(QWidget& widget, QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::MouseButtons held,
           Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWidget> target(&widget);
    if (type == QEvent::MouseButtonPress)
        give_focus_by_click(widget);
    if (!target)
        return;
    QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, modifiers);
    QApplication::sendEvent(&widget, &event);
}

void click(QWidget& widget, QPointF place, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWidget> target(&widget);
    mouse(widget, QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton, modifiers);
    if (target)
        mouse(widget, QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton, modifiers);
}

void double_click(QWidget& widget, QPointF place)
{
    const QPointer<QWidget> target(&widget);
    click(widget, place);
    if (target)
        mouse(widget, QEvent::MouseButtonDblClick, place, Qt::LeftButton, Qt::LeftButton);
    if (target)
        mouse(widget, QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton);
}

bool key(QWidget& widget, int key, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWidget> target(&widget);
    QKeyEvent press(QEvent::KeyPress, key, modifiers, key_text(key, modifiers));
    QApplication::sendEvent(&widget, &press);
    if (target) {
        QKeyEvent release(QEvent::KeyRelease, key, modifiers, key_text(key, modifiers));
        QApplication::sendEvent(&widget, &release);
    }
    return press.isAccepted();
}

void type(QWidget& editor, const QString& text)
{
    focus(editor);
    for (const uint letter : text.toUcs4()) {
        if (letter == u'\n') {
            key(editor, Qt::Key_Return);
            continue;
        }
        const QString typed = QString::fromUcs4(reinterpret_cast<const char32_t*>(&letter), 1);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, typed);
        QApplication::sendEvent(&editor, &press);
    }
}

void type_over(QWidget& editor, const QString& text)
{
    focus(editor);
    QMetaObject::invokeMethod(&editor, "selectAll");
    if (text.isEmpty()) {
        key(editor, Qt::Key_Backspace);
        return;
    }
    // As an input method does it: the whole text at once, so that the edit reports one change.
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&editor, &event);
}

} // namespace tarn::script::input
