#include "view_projection.h"

#include "orbit_camera.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr float nearest = 0.1f; ///< metres before the eye; what lies nearer is cut off

QVector4D between(const QVector4D& from, const QVector4D& to)
{
    return from + (to - from) * ((nearest - from.w()) / (to.w() - from.w()));
}

} // namespace

ViewProjection::ViewProjection(const OrbitCamera& camera, QSizeF view)
    : m_matrix(camera.projection_matrix(view) * camera.view_matrix()),
      m_inverse(m_matrix.inverted()),
      m_eye(camera.eye()),
      m_view(view.expandedTo({1, 1}))
{
}

QPointF ViewProjection::on_view(const QVector4D& clipped) const
{
    return {(double(clipped.x()) / double(clipped.w()) + 1) / 2 * m_view.width(),
            (1 - double(clipped.y()) / double(clipped.w())) / 2 * m_view.height()};
}

std::optional<QPointF> ViewProjection::place(const QVector3D& point) const
{
    const QVector4D clipped = clip(point);
    return clipped.w() < nearest ? std::nullopt : std::optional(on_view(clipped));
}

std::optional<QLineF> ViewProjection::line(const QVector3D& from, const QVector3D& to) const
{
    QVector4D a = clip(from);
    QVector4D b = clip(to);
    if (a.w() < nearest && b.w() < nearest)
        return {};
    if (a.w() < nearest)
        a = between(a, b);
    else if (b.w() < nearest)
        b = between(b, a);
    return QLineF(on_view(a), on_view(b));
}

QPolygonF ViewProjection::face(const std::vector<QVector3D>& corners) const
{
    QPolygonF shown;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const QVector4D from = clip(corners[i]);
        const QVector4D to = clip(corners[(i + 1) % corners.size()]);
        if (from.w() >= nearest)
            shown << on_view(from);
        if ((from.w() < nearest) != (to.w() < nearest))
            shown << on_view(between(from, to));
    }
    return shown;
}

Ray ViewProjection::ray(QPointF place) const
{
    const float x = float(2 * place.x() / m_view.width() - 1);
    const float y = float(1 - 2 * place.y() / m_view.height());
    return {m_eye, (m_inverse.map(QVector3D(x, y, 0)) - m_eye).normalized()};
}

double ViewProjection::metres_per_pixel(const QVector3D& point) const
{
    // A row of the matrix has the length that one metre across the line of sight gets at the distance 1.
    const double zoom = double(QVector3D(m_matrix.row(1)).length());
    return 2 * double(std::max(nearest, clip(point).w())) / (zoom * m_view.height());
}

} // namespace tarn
