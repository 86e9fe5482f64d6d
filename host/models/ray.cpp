#include "ray.h"

#include <cmath>

namespace tarn {

std::optional<QVector3D> Ray::meet(const QVector3D& place, const QVector3D& normal) const
{
    const float slope = QVector3D::dotProduct(direction, normal);
    const float way = std::abs(slope) < 1e-4f ? -1 : QVector3D::dotProduct(place - origin, normal) / slope;
    return way > 0 ? std::optional(origin + direction * way) : std::nullopt;
}

std::optional<float> Ray::nearest_on(const QVector3D& place, const QVector3D& axis) const
{
    const float along = QVector3D::dotProduct(direction, axis);
    const float across = 1 - along * along;
    if (across < 1e-4f)
        return {};
    const QVector3D from = origin - place;
    return (QVector3D::dotProduct(from, axis) - along * QVector3D::dotProduct(from, direction)) / across;
}

} // namespace tarn
