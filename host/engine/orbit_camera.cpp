#include "orbit_camera.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr double degrees_per_pixel = 0.35;
constexpr double own_field_of_view = 45; ///< degrees, vertical
constexpr double steepest = 89;
constexpr double nearest = 0.5; ///< metres from the point looked at
constexpr double farthest = 400;

} // namespace

double OrbitCamera::field_of_view() const
{
    return m_through.object ? double(m_through.field_of_view) : own_field_of_view;
}

void OrbitCamera::go_on_from_there()
{
    if (!m_through.object)
        return;
    const QMatrix4x4 place = m_through.view.inverted();
    const QVector3D way = place.mapVector({0, 0, -1}).normalized();
    m_yaw = qRadiansToDegrees(std::atan2(double(-way.x()), double(-way.z())));
    m_pitch = std::clamp(qRadiansToDegrees(std::asin(std::clamp(double(-way.y()), -1.0, 1.0))), -steepest, steepest);
    m_target = place.map(QVector3D()) + way * float(m_distance);
    look_freely();
}

void OrbitCamera::orbit(QPointF pixels)
{
    go_on_from_there();
    m_yaw = std::fmod(m_yaw - pixels.x() * degrees_per_pixel, 360.0);
    // Never straight up or down: there view and upward direction are one, and the view matrix has no answer.
    m_pitch = std::clamp(m_pitch + pixels.y() * degrees_per_pixel, -steepest, steepest);
}

void OrbitCamera::pan(QPointF pixels, double height)
{
    go_on_from_there();
    // What lies at the distance of the target stays under the mouse.
    const double metres_per_pixel = 2 * m_distance * std::tan(qDegreesToRadians(field_of_view() / 2))
        / std::max(1.0, height);
    const QMatrix4x4 inverse = view_matrix().inverted();
    m_target += inverse.mapVector(
        QVector3D(float(-pixels.x() * metres_per_pixel), float(pixels.y() * metres_per_pixel), 0));
}

void OrbitCamera::zoom(double steps)
{
    go_on_from_there();
    m_distance = std::clamp(m_distance * std::pow(0.88, steps), nearest, farthest);
}

void OrbitCamera::frame(const QVector3D& centre, double radius)
{
    go_on_from_there();
    constexpr double room = 1.3; // around the sphere, so that what stands at its edge is not cut off
    m_target = centre;
    m_distance = std::clamp(room * radius / std::sin(qDegreesToRadians(field_of_view() / 2)), nearest, farthest);
}

QVector3D OrbitCamera::eye() const
{
    if (m_through.object)
        return m_through.view.inverted().map(QVector3D());
    const double yaw = qDegreesToRadians(m_yaw);
    const double pitch = qDegreesToRadians(m_pitch);
    return m_target
        + QVector3D(float(m_distance * std::cos(pitch) * std::sin(yaw)), float(m_distance * std::sin(pitch)),
                    float(m_distance * std::cos(pitch) * std::cos(yaw)));
}

QMatrix4x4 OrbitCamera::view_matrix() const
{
    if (m_through.object)
        return m_through.view;
    QMatrix4x4 matrix;
    matrix.lookAt(eye(), m_target, {0, 1, 0});
    return matrix;
}

QMatrix4x4 OrbitCamera::projection_matrix(QSizeF view) const
{
    QMatrix4x4 matrix;
    const double ratio = view.height() > 0 ? view.width() / view.height() : 1;
    matrix.perspective(float(field_of_view()), float(ratio), 0.1f, 1000.f);
    return matrix;
}

} // namespace tarn
