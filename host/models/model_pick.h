#pragma once

#include "model_pose.h"

namespace tarn {

/// What a ray meets of a model.
struct ModelHit {
    float distance = 0; ///< in lengths of the ray's direction
    QVector3D point;    ///< in the ray's space
    quint32 mesh = 0;
    quint32 triangle = 0;
    QVector2D uv; ///< (0, 0) for a mesh without any
};

/// The nearest triangle of the posed model that the ray meets, from either side; none when it meets none. `matrix` goes
/// from the model's space into the ray's.
std::optional<ModelHit> pick(const ModelPose& pose, const QMatrix4x4& matrix, const Ray& ray);

} // namespace tarn
