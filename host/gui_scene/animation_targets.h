#pragma once

#include "animation/animation_target.h"

namespace tarn {

/// Controls as timebars see them: places and sizes are kept as authored ones are, so that they follow the anchor; the
/// scale is the size, both in pixels, and they turn about one axis.
class ControlTarget final : public AnimationTarget {
public:
    bool takes(const ModelObject& object) const override;
    Pose pose(const ObjectState& state) const override;
    std::span<const FieldKey> fields(Channel channel) const override;
    void show(ModelObject& object, const Pose& pose) override;
};

/// The same of dialogs, which do not turn. The root dialog is none of them.
class DialogTarget final : public AnimationTarget {
public:
    bool takes(const ModelObject& object) const override;
    Pose pose(const ObjectState& state) const override;
    std::span<const FieldKey> fields(Channel channel) const override;
    void show(ModelObject& object, const Pose& pose) override;
};

} // namespace tarn
