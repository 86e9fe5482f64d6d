#pragma once

#include "models/model_pose.h"

#include <QColor>

namespace tarn {

/// A picture of Renderer::set_texture() in place of a material's own.
struct MaterialTexture {
    QString material;
    quint64 texture = 0;
    bool glows = false; ///< shown in its own colours, whatever the light

    friend bool operator==(const MaterialTexture&, const MaterialTexture&) = default;
};

/// A model in the world.
struct DrawItem {
    ModelPtr model;
    const ModelPose* pose = nullptr;    ///< of that model; null: at rest
    QMatrix4x4 matrix;                  ///< into the world
    QColor tint = Qt::white;            ///< multiplied with the materials' colours
    float transparency = 0;             ///< 0: as the materials have it, to 1: not drawn
    QColor highlight = Qt::transparent; ///< laid over it, as strong as it is opaque
    bool casts_shadow = true;
    std::vector<MaterialTexture> textures;
};

} // namespace tarn
