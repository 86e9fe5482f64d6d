#pragma once

#include "core/status.h"

#include <QEvent>
#include <QImage>
#include <QPointF>
#include <QPointer>
#include <QRect>
#include <QWidget>

#include <functional>

namespace tarn::script {

/// A drawing area of a widget that a script's mouse works on. Places are pixels of the area.
class MouseSurface {
public:
    /// `name` is for messages: "view". `area` answers where the drawing area lies in `widget`.
    MouseSurface(const char* name, QWidget& widget, std::function<QRect()> area)
        : m_name(QLatin1String(name)), m_widget(&widget), m_area(std::move(area))
    {
    }

    QSize size() const { return m_area().size(); }

    Status press(QPointF place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    Status move(QPointF place, Qt::KeyboardModifiers modifiers);
    Status release(QPointF place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    Status double_click(QPointF place);
    Status wheel(QPointF place, double steps, Qt::KeyboardModifiers modifiers = {});
    Status key(int key, Qt::KeyboardModifiers modifiers);
    Result<QImage> picture() const;

private:
    Status ready() const;
    void send(QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

    QString m_name;
    QPointer<QWidget> m_widget;
    std::function<QRect()> m_area;
    Qt::MouseButtons m_held;
};

} // namespace tarn::script
