#pragma once

#include "models/model_box.h"

#include <QVector4D>

#include <array>

namespace tarn {

/// The part of the world that a camera sees.
class Frustum {
public:
    explicit Frustum(const QMatrix4x4& world_to_clip)
    {
        for (int i = 0; i < 6; ++i)
            m_planes[std::size_t(i)] = world_to_clip.row(3) + (i % 2 ? -1.f : 1.f) * world_to_clip.row(i / 2);
    }

    /// False only when no point of the box is seen.
    bool sees(const ModelBox& box) const
    {
        if (box.is_empty())
            return false;
        for (const QVector4D& plane : m_planes) {
            // The corner that is farthest inside.
            const QVector3D corner(plane.x() > 0 ? box.high.x() : box.low.x(),
                                   plane.y() > 0 ? box.high.y() : box.low.y(),
                                   plane.z() > 0 ? box.high.z() : box.low.z());
            if (QVector3D::dotProduct(plane.toVector3D(), corner) + plane.w() < 0)
                return false;
        }
        return true;
    }

private:
    std::array<QVector4D, 6> m_planes;
};

} // namespace tarn
