#pragma once

#include <QMatrix4x4>
#include <QPointF>
#include <QSizeF>
#include <QVector3D>

namespace tarn {

/// A camera that looks at a point and turns around it. The world's y axis points up; lengths are metres.
class OrbitCamera {
public:
    /// Turns by a mouse movement in pixels.
    void orbit(QPointF pixels);
    /// Moves the point looked at with the mouse, for a view of `height` pixels.
    void pan(QPointF pixels, double height);
    /// Positive steps come nearer.
    void zoom(double steps);
    /// Looks at a sphere from where the camera turns now, near enough that it fills most of the view.
    void frame(const QVector3D& centre, double radius);

    QVector3D eye() const;
    const QVector3D& target() const { return m_target; } ///< the point looked at
    QMatrix4x4 view_matrix() const;
    QMatrix4x4 projection_matrix(QSizeF view) const;

private:
    QVector3D m_target{0, 0.5f, 0};
    double m_yaw = 35;   ///< degrees
    double m_pitch = 24; ///< degrees over the ground, -89 to 89
    double m_distance = 14;
};

} // namespace tarn
