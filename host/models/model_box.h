#pragma once

#include "ray.h"

#include <QMatrix4x4>
#include <QVector3D>

#include <optional>

namespace tarn {

/// An axis-aligned box.
struct ModelBox {
    QVector3D low{1, 1, 1};
    QVector3D high{-1, -1, -1};

    bool is_empty() const { return low.x() > high.x(); }
    QVector3D centre() const { return (low + high) / 2; }
    QVector3D size() const { return is_empty() ? QVector3D() : high - low; }
    void add(const QVector3D& point);
    void add(const ModelBox& box);
    /// The box of the moved box.
    ModelBox moved(const QMatrix4x4& matrix) const;
    /// Where the ray enters the box; 0 when it begins inside, none when it misses.
    std::optional<float> entry(const Ray& ray) const;

    friend bool operator==(const ModelBox&, const ModelBox&) = default;
};

} // namespace tarn
