#pragma once

#include "models/ray.h"

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
    /// Of length 1.
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
