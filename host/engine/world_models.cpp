#include "world_models.h"

#include "world/world_object.h"

namespace tarn {

namespace {

/// From either side.
std::optional<ModelHit> pick_panel(const PanelState& panel, const QMatrix4x4& transform, const Ray& ray)
{
    bool has_inverse = false;
    const QMatrix4x4 into = transform.inverted(&has_inverse);
    const QVector3D origin = into.map(ray.origin);
    const QVector3D direction = into.mapVector(ray.direction);
    const float distance = -origin.z() / direction.z();
    const QVector3D at = origin + direction * distance;
    const QVector2D uv(at.x() / panel.width + 0.5f, 0.5f - at.y() / panel.height);
    const auto is_inside = [](float share) { return share >= 0 && share <= 1; }; // not for what is no number
    if (!has_inverse || !(distance > 0) || !is_inside(uv.x()) || !is_inside(uv.y()))
        return {};
    return ModelHit{.distance = distance, .point = ray.at(distance), .uv = uv};
}

} // namespace

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
    if (const auto* panel = dynamic_cast<const PanelState*>(&object.object_state()))
        return pick_panel(*panel, object.transform(), ray);
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
