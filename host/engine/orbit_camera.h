#pragma once

#include <QMatrix4x4>
#include <QPointF>
#include <QSizeF>
#include <QVector3D>

namespace tarn {

/// A camera that looks at a point and turns around it. The world's y axis points up; lengths are metres.
///
/// It can look through a camera of the world instead. Whoever turns or moves it then takes it out of there, and goes on
/// from where that one stands.
class OrbitCamera {
public:
    struct Through {
        quint32 object = 0; ///< id of the world's camera; 0 for none
        QMatrix4x4 view;
        float field_of_view = 0; ///< degrees, vertical
    };

    /// Turns by a mouse movement in pixels.
    void orbit(QPointF pixels);
    /// Moves the point looked at with the mouse, for a view of `height` pixels.
    void pan(QPointF pixels, double height);
    /// Positive steps come nearer.
    void zoom(double steps);
    /// Looks at a sphere from where the camera turns now, near enough that it fills most of the view.
    void frame(const QVector3D& centre, double radius);

    /// Looks at another point from the same side.
    void look_at(const QVector3D& target)
    {
        look_freely();
        m_target = target;
    }

    void look_through(const Through& through) { m_through = through; }
    /// Back to where it looked from before.
    void look_freely() { m_through = {}; }
    quint32 looks_through() const { return m_through.object; } ///< id of a camera of the world; 0 for none
    double yaw() const { return m_yaw; }                       ///< degrees; not while it looks through another camera
    double pitch() const { return m_pitch; }

    QVector3D eye() const;
    const QVector3D& target() const { return m_target; } ///< the point looked at
    QMatrix4x4 view_matrix() const;
    QMatrix4x4 projection_matrix(QSizeF view) const;

private:
    double field_of_view() const;
    void go_on_from_there();

    QVector3D m_target{0, 0.5f, 0};
    double m_yaw = 35;   ///< degrees
    double m_pitch = 24; ///< degrees over the ground, -89 to 89
    double m_distance = 14;
    Through m_through;
};

} // namespace tarn
