#include "target.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "engine/base_world.h"
#include "engine/scene_selection.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_scene/gui_plug_scene.h"
#include "world/world_object.h"

namespace tarn {

namespace {

constexpr int dialog_codes[] = {ui_full_refresh, ui_scene_changed, ui_selection_changed, ui_control_selected,
                                ui_dialog_properties};
constexpr int control_codes[] = {ui_full_refresh, ui_scene_changed, ui_selection_changed, ui_control_selected,
                                 ui_control_properties};

constexpr int timebar_codes[] = {ui_full_refresh, ui_timebars_changed, ui_timebar_content};

constexpr int menu_codes[] = {ui_full_refresh, ui_scene_changed, ui_selection_changed, ui_control_properties};

constexpr int world_codes[] = {ui_full_refresh, ui_scene_changed, ui_world_selection_changed, ui_timebars_changed,
                               ui_timebar_content};

const SelectionRecord* edited_selection(CGuiPlugScene& scene, bool of_controls)
{
    const SelectionRecord& selection = scene.gui_core().selection();
    return selection.editing && selection.controls_selected == of_controls ? &selection : nullptr;
}

} // namespace

ModelObject* SelectedDialogs::current(CGuiPlugScene& scene) const
{
    const SelectionRecord* selection = edited_selection(scene, false);
    return selection ? selection->current_dialog : nullptr;
}

std::vector<ModelObject*> SelectedDialogs::selected(CGuiPlugScene& scene) const
{
    if (!current(scene))
        return {};
    const auto& dialogs = scene.gui_core().selection().dialogs;
    return {dialogs.begin(), dialogs.end()};
}

std::span<const int> SelectedDialogs::codes() const
{
    return dialog_codes;
}

int SelectedDialogs::changed_code() const
{
    return ui_dialog_properties;
}

CDXUTControl* SelectedControls::current_control(CGuiPlugScene& scene) const
{
    const SelectionRecord* selection = edited_selection(scene, true);
    CDXUTControl* control = selection ? selection->current_control : nullptr;
    return control && (m_type == any_type || control->GetType() == m_type) ? control : nullptr;
}

std::vector<ModelObject*> SelectedControls::selected_of(CGuiPlugScene& scene, int type)
{
    std::vector<ModelObject*> controls;
    for (CDXUTControl* control : scene.gui_core().selection().controls) {
        if (type == any_type || control->GetType() == type)
            controls.push_back(control);
    }
    return controls;
}

ModelObject* SelectedControls::current(CGuiPlugScene& scene) const
{
    return current_control(scene);
}

std::vector<ModelObject*> SelectedControls::selected(CGuiPlugScene& scene) const
{
    return current_control(scene) ? selected_of(scene, m_type) : std::vector<ModelObject*>();
}

std::span<const int> SelectedControls::codes() const
{
    return control_codes;
}

int SelectedControls::changed_code() const
{
    return ui_control_properties;
}

std::vector<ModelObject*> SelectedLikeCurrent::selected(CGuiPlugScene& scene) const
{
    const CDXUTControl* shown = current_control(scene);
    return shown ? selected_of(scene, shown->GetType()) : std::vector<ModelObject*>();
}

ModelObject* CurrentMenu::current(CGuiPlugScene& scene) const
{
    const SelectionRecord& selection = scene.gui_core().selection();
    return selection.editing ? selection.current_menu : nullptr;
}

std::vector<ModelObject*> CurrentMenu::selected(CGuiPlugScene& scene) const
{
    ModelObject* const object = current(scene);
    return object ? std::vector{object} : std::vector<ModelObject*>();
}

std::span<const int> CurrentMenu::codes() const
{
    return menu_codes;
}

int CurrentMenu::changed_code() const
{
    return ui_control_properties;
}

ModelObject* CurrentMenuItem::current(CGuiPlugScene& scene) const
{
    const SelectionRecord& selection = scene.gui_core().selection();
    return selection.editing && selection.current_menu ? selection.current_menu_item : nullptr;
}

ModelObject* SelectedWorldObjects::current(CGuiPlugScene& scene) const
{
    const bool editing = scene.world() && scene.gui_core().selection().editing;
    WorldObject* object = editing ? scene.world()->selection().get_last() : nullptr;
    return object && (!m_type || object->type() == *m_type) ? object : nullptr;
}

std::vector<ModelObject*> SelectedWorldObjects::selected(CGuiPlugScene& scene) const
{
    if (!current(scene))
        return {};
    const CSelection& selection = scene.world()->selection();
    const auto objects = m_type ? selection.get_type_objs(*m_type) : selection.objects();
    return {objects.begin(), objects.end()};
}

std::span<const int> SelectedWorldObjects::codes() const
{
    return world_codes;
}

int SelectedWorldObjects::changed_code() const
{
    return ui_world_selection_changed;
}

ModelObject* TimerObjectOfSelection::current(CGuiPlugScene& scene) const
{
    const ModelObject* object = SelectedWorldObjects::current(scene);
    const CTimebar* bar = object ? scene.animation().current_bar() : nullptr;
    return bar ? bar->SearchItemUsage(*object) : nullptr;
}

std::vector<ModelObject*> TimerObjectOfSelection::selected(CGuiPlugScene& scene) const
{
    ModelObject* const object = current(scene);
    return object ? std::vector{object} : std::vector<ModelObject*>();
}

ModelObject* CurrentTimebar::current(CGuiPlugScene& scene) const
{
    return scene.is_playing() ? nullptr : scene.animation().current_bar();
}

std::vector<ModelObject*> CurrentTimebar::selected(CGuiPlugScene& scene) const
{
    ModelObject* const object = current(scene);
    return object ? std::vector{object} : std::vector<ModelObject*>();
}

std::span<const int> CurrentTimebar::codes() const
{
    return timebar_codes;
}

int CurrentTimebar::changed_code() const
{
    return ui_timebar_content;
}

ModelObject* CurrentTimerObject::current(CGuiPlugScene& scene) const
{
    const auto* bar = static_cast<CTimebar*>(CurrentTimebar::current(scene));
    return bar ? bar->current_object() : nullptr;
}

ModelObject* CurrentVariable::current(CGuiPlugScene& scene) const
{
    const auto* object = static_cast<CTimerObject*>(current_timer_object.current(scene));
    return object ? object->current_variable() : nullptr;
}

} // namespace tarn
