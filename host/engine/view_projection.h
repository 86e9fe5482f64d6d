#pragma once

#include <QLineF>
#include <QMatrix4x4>
#include <QPointF>
#include <QPolygonF>
#include <QSizeF>
#include <QVector3D>

#include <optional>
#include <vector>

namespace tarn {

class OrbitCamera;

/// A half line in the world.
struct Ray {
    QVector3D origin;
    QVector3D direction; ///< of length 1

    /// Where it meets the plane through `place` across `normal`; none when that lies behind or it runs along the plane.
    std::optional<QVector3D> meet(const QVector3D& place, const QVector3D& normal) const;
    /// How far along the line through `place` in the direction `axis`, of length 1, it comes nearest to the ray; none when
    /// the two run side by side.
    std::optional<float> nearest_on(const QVector3D& place, const QVector3D& axis) const;
};

/// Where things of the world are seen in a view, and what of the world lies under a place there. Places are pixels of the
/// screen.
class ViewProjection {
public:
    ViewProjection(const OrbitCamera& camera, QSizeF view);

    const QVector3D& eye() const { return m_eye; }
    /// None for what lies behind the eye.
    std::optional<QPointF> place(const QVector3D& point) const;
    /// The part of a line that lies before the eye; none when nothing does.
    std::optional<QLineF> line(const QVector3D& from, const QVector3D& to) const;
    /// The part of a flat face that lies before the eye; empty when nothing does.
    QPolygonF face(const std::vector<QVector3D>& corners) const;
    Ray ray(QPointF place) const;
    /// Metres that one pixel shows at the distance of `point`.
    double metres_per_pixel(const QVector3D& point) const;

private:
    QVector4D clip(const QVector3D& point) const { return m_matrix * QVector4D(point, 1); }
    QPointF on_view(const QVector4D& clipped) const;

    QMatrix4x4 m_matrix;
    QMatrix4x4 m_inverse;
    QVector3D m_eye;
    QSizeF m_view;
};

} // namespace tarn
