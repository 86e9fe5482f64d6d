#include "mouse_surface.h"

#include "user_input.h"

#include <QApplication>
#include <QWheelEvent>

namespace tarn::script {

namespace {

constexpr double wheel_step = 120; ///< eighths of a degree, as mice count

} // namespace

Status MouseSurface::ready() const
{
    if (!m_widget || !m_widget->isVisible())
        return Status::error(QStringLiteral("the %1 is not shown").arg(m_name));
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal != m_widget->window())
        return Status::error(QStringLiteral("the %1 is blocked by an open dialog").arg(m_name));
    input::bring_up(*m_widget);
    return {};
}

Result<QImage> MouseSurface::picture() const
{
    if (auto status = ready(); !status)
        return status;
    return m_widget->grab(m_area()).toImage();
}

void MouseSurface::send(QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    input::mouse(*m_widget, type, place + m_area().topLeft(), button, m_held, modifiers);
}

Status MouseSurface::press(QPointF place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    if (auto status = ready(); !status)
        return status;
    if (m_held & button)
        return Status::error(QStringLiteral("this mouse button is pressed already"));
    m_held |= button;
    send(QEvent::MouseButtonPress, place, button, modifiers);
    return {};
}

Status MouseSurface::move(QPointF place, Qt::KeyboardModifiers modifiers)
{
    if (auto status = ready(); !status)
        return status;
    send(QEvent::MouseMove, place, Qt::NoButton, modifiers);
    return {};
}

Status MouseSurface::release(QPointF place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    if (auto status = ready(); !status)
        return status;
    if (!(m_held & button))
        return Status::error(QStringLiteral("this mouse button is not pressed"));
    m_held &= ~Qt::MouseButtons(button);
    send(QEvent::MouseButtonRelease, place, button, modifiers);
    return {};
}

Status MouseSurface::double_click(QPointF place)
{
    if (auto status = press(place, Qt::LeftButton, {}); !status)
        return status;
    if (auto status = release(place, Qt::LeftButton, {}); !status)
        return status;
    m_held |= Qt::LeftButton;
    send(QEvent::MouseButtonDblClick, place, Qt::LeftButton, {});
    return release(place, Qt::LeftButton, {});
}

Status MouseSurface::wheel(QPointF place, double steps, Qt::KeyboardModifiers modifiers)
{
    if (auto status = ready(); !status)
        return status;
    const QPointF in_widget = place + m_area().topLeft();
    QWheelEvent event(in_widget, m_widget->mapToGlobal(in_widget), QPoint(), QPoint(0, qRound(steps * wheel_step)),
                      m_held, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_widget, &event);
    return {};
}

Status MouseSurface::key(int key, Qt::KeyboardModifiers modifiers)
{
    if (auto status = ready(); !status)
        return status;
    input::focus(*m_widget);
    // A field that is open over the surface has the keys.
    QWidget* proxy = m_widget->focusProxy();
    input::key(proxy ? *proxy : *m_widget, key, modifiers);
    return {};
}

} // namespace tarn::script
