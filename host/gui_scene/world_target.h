#pragma once

#include "animation/animation_target.h"
#include "models/model.h"

namespace tarn {

class WorldModels;
enum class WorldType : quint8;
struct MovingModelState;

/// Objects of the 3D world of one type as timebars see them: places are metres, turns degrees, scales factors. They can
/// follow paths of the world.
class WorldTarget final : public AnimationTarget {
public:
    explicit WorldTarget(WorldType type) : m_type(type) {}
    /// Whose models have the actions; null: actions are not animated. It has to outlive the use of the target.
    void set_models(WorldModels* models) { m_models = models; }

    bool takes(const ModelObject& object) const override;
    Pose pose(const ObjectState& state) const override;
    std::span<const FieldKey> fields(Channel channel) const override;
    bool can_follow(const ModelObject& object) const override;
    void follow(const ModelObject& path, bool along, Pose& pose) const override;
    void find_on_path(const ModelObject& path, Pose& pose) const override;
    void show(ModelObject& object, const Pose& pose) override;

private:
    ModelPtr model_of(const ObjectState& state) const;
    void show_action(MovingModelState& state, const Pose& pose) const;

    WorldType m_type;
    WorldModels* m_models = nullptr;
};

} // namespace tarn
