#pragma once

#include <QVector3D>

#include <optional>

namespace tarn {

/// A half-line.
struct Ray {
    QVector3D origin;
    QVector3D direction; ///< of any length; distances along the ray count in it

    QVector3D at(float distance) const { return origin + direction * distance; }
    /// Where it meets the plane through `place` across `normal`; none when that lies behind or it runs along the plane.
    std::optional<QVector3D> meet(const QVector3D& place, const QVector3D& normal) const;
    /// How far along the line through `place` in the direction `axis`, of length 1, it comes nearest to the ray; none when
    /// the two run side by side. The ray's direction has to be of length 1, too.
    std::optional<float> nearest_on(const QVector3D& place, const QVector3D& axis) const;
};

} // namespace tarn
