#pragma once

#include <QRectF>
#include <QSize>

class QPainter;

namespace tarn {

/// A flat picture that lies over the 3D world in the views: the interface.
class Overlay {
public:
    virtual ~Overlay() = default;

    /// The size of the screen in logical pixels. Views say it before every frame: the size that is known already
    /// must cost and change nothing.
    virtual void set_screen_size(QSize size) = 0;
    /// Paints what lies inside `clip`. The painter's logical pixels are those of the screen; `scale` device pixels
    /// make one of them.
    virtual void paint(QPainter& painter, const QRectF& clip, double scale) = 0;
    /// The area that changed since the last call, in logical pixels; empty when nothing did.
    virtual QRectF take_damage() = 0;
};

} // namespace tarn
