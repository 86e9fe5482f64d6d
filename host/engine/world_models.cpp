#include "world_models.h"

#include "world/world_object.h"

namespace tarn {

const ModelPose* WorldModels::pose(const WorldObject& object)
{
    const ModelPtr model = object.has_file() ? m_library.find(object.file()).model : nullptr;
    if (!model) {
        m_posed.erase(object.id());
        return nullptr;
    }
    auto known = m_posed.find(object.id());
    if (known == m_posed.end() || known->second.pose.model() != model)
        known = m_posed.insert_or_assign(object.id(), Posed{ModelPose(model)}).first;
    Posed& posed = known->second;
    if (!object.has_actions())
        return &posed.pose;
    const auto& state = static_cast<const MovingModelState&>(object.object_state());
    const int action = model->find_action(state.action);
    const double time = double(state.action_time) + (state.plays ? m_clock : 0);
    if (action != posed.action || time != posed.time || state.repeats != posed.repeats) {
        posed.pose.set_action(action, time, state.repeats ? ActionEnd::Repeat : ActionEnd::Hold);
        posed.action = action;
        posed.time = time;
        posed.repeats = state.repeats;
    }
    return &posed.pose;
}

ModelBox WorldModels::box(const WorldObject& object)
{
    const ModelPose* posed = pose(object);
    return posed ? posed->box() : ModelBox();
}

std::optional<ModelHit> WorldModels::pick(const WorldObject& object, const Ray& ray)
{
    const ModelPose* posed = pose(object);
    return posed ? tarn::pick(*posed, object.transform(), ray) : std::nullopt;
}

bool WorldModels::moves(const WorldObject& object)
{
    if (!object.has_actions() || !object.is_visible())
        return false;
    const auto& state = static_cast<const MovingModelState&>(object.object_state());
    const ModelPose* posed = state.plays ? pose(object) : nullptr;
    return posed && posed->model()->find_action(state.action) >= 0;
}

} // namespace tarn
