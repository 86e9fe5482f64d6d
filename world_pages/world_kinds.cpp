#include "world_kinds.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "engine/camera_view.h"
#include "engine/world_models.h"
#include "gui_draw/texture_cache.h"
#include "gui_scene/gui_plug_scene.h"
#include "world/world_object.h"

#include <array>

namespace tarn {

namespace {

CameraView& camera_view(CGuiPlugScene& scene)
{
    return scene.world()->camera_view();
}

/// Into the camera, and back when the view looks through it already.
ActionResult look_through(CGuiPlugScene& scene, std::span<ModelObject* const>, ModelObject& current)
{
    CameraView& view = camera_view(scene);
    view.look_through(view.camera() == &current ? nullptr : static_cast<const WorldObject*>(&current));
    return {};
}

ActionResult take_view(CGuiPlugScene& scene, std::span<ModelObject* const>, ModelObject& current)
{
    camera_view(scene).place_camera(static_cast<WorldObject&>(current));
    return {.changed = true};
}

/// In the ratio of the picture's sides; the height stays.
ActionResult fit_to_picture(CGuiPlugScene& scene, std::span<ModelObject* const> selected, ModelObject&)
{
    bool changed = false;
    for (ModelObject* object : selected) {
        const auto& panel = static_cast<const PanelState&>(object->shown_state());
        const QImage picture = texture(scene.gui_core(), panel.picture);
        if (picture.isNull())
            continue;
        const double width = double(panel.height) * picture.width() / picture.height();
        changed = object->set_property(*object->fields().find(key<&PanelState::width>), width).ok() || changed;
    }
    return {.changed = changed};
}

bool has_picture(const ModelObject& panel)
{
    return !static_cast<const PanelState&>(panel.shown_state()).picture.isEmpty();
}

constexpr NumberLook metres{.step = 0.1, .format = "%.3g"};

constexpr FieldRow camera_rows[] = {
    {.control = 7131, .field = key<&CameraState::field_of_view>, .number = {.step = 1, .format = "%.4g"}}};
constexpr ActionRow camera_actions[] = {{7132, look_through}, {7133, take_view}};

/// What the object's model can do; only that it is at rest while the model is read.
std::vector<ChoiceItem> actions(CGuiPlugScene& scene, const ModelObject& object)
{
    std::vector<ChoiceItem> items{{QString(), lang(u"（静止）", u"(At rest)")}};
    const QString file = static_cast<const WorldObject&>(object).file();
    if (const ModelPtr model = scene.world()->models().library().find(file).model)
        for (const ModelAction& action : model->data().actions)
            items.push_back({action.name, action.name});
    return items;
}

constexpr FieldRow moving_rows[] = {
    {.control = 7161, .field = key<&MovingModelState::action>, .choices = actions},
    {.control = 7162, .field = key<&MovingModelState::action_time>, .number = {.step = 0.1, .format = "%.4g"}},
    {.control = 7163, .field = key<&MovingModelState::plays>},
    {.control = 7164, .field = key<&MovingModelState::repeats>}};

constexpr FieldRow path_rows[] = {{.control = 7141, .field = key<&PathState::closed>},
                                  {.control = 7142, .field = key<&PathState::smooth>}};

constexpr FieldRow panel_rows[] = {{.control = 7151, .field = key<&PanelState::width>, .number = metres},
                                   {.control = 7152, .field = key<&PanelState::height>, .number = metres}};
constexpr ImageRow panel_images[] = {{7153, 7154, key<&PanelState::picture>}};
constexpr ActionRow panel_actions[] = {{7155, fit_to_picture, has_picture}};

const SelectedWorldObjects animated_models(WorldType::AnimatedModel);
const SelectedWorldObjects skeletons(WorldType::Skeleton);
const SelectedWorldObjects cameras(WorldType::Camera);
const SelectedWorldObjects paths(WorldType::Path);
const SelectedWorldObjects panels(WorldType::Panel);

const PageEntry animated_page{.class_name = "CDlgPropWorldMoving",
                              .template_id = 7160,
                              .target = &animated_models,
                              .rows = moving_rows};
const PageEntry skeleton_page{.class_name = "CDlgPropWorldSkeleton",
                              .template_id = 7170,
                              .target = &skeletons,
                              .rows = moving_rows};
const PageEntry camera_page{.class_name = "CDlgPropWorldCamera",
                            .template_id = 7130,
                            .target = &cameras,
                            .rows = camera_rows,
                            .actions = camera_actions};
const PageEntry path_page{.class_name = "CDlgPropWorldPath", .template_id = 7140, .target = &paths, .rows = path_rows};
const PageEntry panel_page{.class_name = "CDlgPropWorldPanel",
                           .template_id = 7150,
                           .target = &panels,
                           .rows = panel_rows,
                           .images = panel_images,
                           .actions = panel_actions};

const std::array<WorldKind, world_type_count> kinds{{
    {WorldType::Model, 7001, false},
    {WorldType::AnimatedModel, 7002, false, &animated_page},
    {WorldType::Skeleton, 7003, false, &skeleton_page},
    {WorldType::Camera, 7004, true, &camera_page},
    {WorldType::Path, 7005, true, &path_page},
    {WorldType::Panel, 7006, true, &panel_page},
}};

} // namespace

std::span<const WorldKind> world_kinds()
{
    return kinds;
}

const WorldKind& world_kind(WorldType type)
{
    return kinds[std::size_t(type)];
}

} // namespace tarn
