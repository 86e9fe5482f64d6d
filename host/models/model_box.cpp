#include "model_box.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tarn {

void ModelBox::add(const QVector3D& point)
{
    if (is_empty()) {
        low = high = point;
        return;
    }
    for (int axis = 0; axis < 3; ++axis) {
        low[axis] = std::min(low[axis], point[axis]);
        high[axis] = std::max(high[axis], point[axis]);
    }
}

void ModelBox::add(const ModelBox& box)
{
    if (box.is_empty())
        return;
    add(box.low);
    add(box.high);
}

ModelBox ModelBox::moved(const QMatrix4x4& matrix) const
{
    if (is_empty())
        return {};
    ModelBox box;
    for (int axis = 0; axis < 3; ++axis) {
        box.low[axis] = box.high[axis] = matrix(axis, 3);
        for (int from = 0; from < 3; ++from) {
            const float a = matrix(axis, from) * low[from];
            const float b = matrix(axis, from) * high[from];
            box.low[axis] += std::min(a, b);
            box.high[axis] += std::max(a, b);
        }
    }
    return box;
}

std::optional<float> ModelBox::entry(const Ray& ray) const
{
    if (is_empty())
        return std::nullopt;
    float from = 0;
    float to = std::numeric_limits<float>::max();
    for (int axis = 0; axis < 3; ++axis) {
        if (ray.direction[axis] == 0) {
            if (ray.origin[axis] < low[axis] || ray.origin[axis] > high[axis])
                return std::nullopt;
            continue;
        }
        float near = (low[axis] - ray.origin[axis]) / ray.direction[axis];
        float far = (high[axis] - ray.origin[axis]) / ray.direction[axis];
        if (near > far)
            std::swap(near, far);
        from = std::max(from, near);
        to = std::min(to, far);
    }
    // A little tolerance: a flat box has no inside.
    return from <= to * (1 + 1e-5f) + 1e-6f ? std::optional(from) : std::nullopt;
}

} // namespace tarn
