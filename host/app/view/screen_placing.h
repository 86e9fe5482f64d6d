#pragma once

#include <QPointF>
#include <QRectF>
#include <QTransform>

namespace tarn {

/// How a surface shows the interface's screen. Pictures, tools, the world behind them and the mouse all go through it.
struct ScreenPlacing {
    double scale = 1; ///< logical pixels of the surface that show one pixel of the screen
    QPointF origin;   ///< of the screen on the surface, logical pixels

    QPointF to_surface(QPointF on_screen) const { return on_screen * scale + origin; }
    QRectF to_surface(const QRectF& on_screen) const
    {
        return {to_surface(on_screen.topLeft()), on_screen.size() * scale};
    }
    QPointF to_screen(QPointF on_surface) const { return (on_surface - origin) / scale; }
    QTransform transform() const { return {scale, 0, 0, scale, origin.x(), origin.y()}; }
    friend bool operator==(const ScreenPlacing&, const ScreenPlacing&) = default;
};

} // namespace tarn
