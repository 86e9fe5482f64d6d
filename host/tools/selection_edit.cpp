#include "selection_edit.h"

#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"

namespace tarn {

namespace {

/// What every change of the selection brings with it.
class SelectionChange {
public:
    explicit SelectionChange(CGuiPlugScene& scene) : m_scene(scene) {}
    ~SelectionChange()
    {
        m_scene.journal().break_merge();
        tell_selection(m_scene);
    }
    SelectionChange(const SelectionChange&) = delete;
    SelectionChange& operator=(const SelectionChange&) = delete;

private:
    CGuiPlugScene& m_scene;
};

void clear(CGuiCore& core)
{
    core.ClearCtrlSelection();
    core.ClearDialogSelection();
}

} // namespace

bool is_selected(const CGuiCore& core, const Target& target)
{
    return target.control ? core.selection().contains(target.control) : core.selection().contains(target.dialog);
}

void select(CGuiPlugScene& scene, const Target& target, bool add)
{
    const SelectionChange change(scene);
    if (target.control)
        scene.gui_core().SelectControl(target.control, add);
    else
        scene.gui_core().SelectDialog(target.dialog, add);
}

void select_controls(CGuiPlugScene& scene, const std::vector<CDXUTControl*>& controls)
{
    const SelectionChange change(scene);
    clear(scene.gui_core());
    scene.gui_core().SelectControls(controls);
}

void deselect(CGuiPlugScene& scene, const Target& target)
{
    CGuiCore& core = scene.gui_core();
    std::vector<CDXUTControl*> controls = core.selection().controls;
    std::vector<CDXUTDialog*> dialogs = core.selection().dialogs;
    std::erase(controls, target.control);
    if (!target.control)
        std::erase(dialogs, target.dialog);
    const SelectionChange change(scene);
    clear(core);
    for (CDXUTDialog* dialog : dialogs)
        core.SelectDialog(dialog, true);
    for (CDXUTControl* control : controls)
        core.SelectControl(control, true);
}

void clear_selection(CGuiPlugScene& scene)
{
    const SelectionChange change(scene);
    clear(scene.gui_core());
}

bool select_less(CGuiPlugScene& scene)
{
    const SelectionRecord& selection = scene.gui_core().selection();
    if (selection.controls.empty() && selection.dialogs.empty())
        return false;
    CDXUTDialog* home = selection.current_control ? selection.current_control->dialog() : nullptr;
    if (home && !home->is_root())
        select(scene, {home, nullptr}, false);
    else
        clear_selection(scene);
    return true;
}

void tell_selection(CGuiPlugScene& scene)
{
    scene.world()->broadcast(ui_scene_changed);
    // With that code the lists show the current object alone.
    const SelectionRecord& selection = scene.gui_core().selection();
    if (selection.controls.size() + selection.dialogs.size() > 1)
        scene.world()->broadcast(ui_selection_changed);
    scene.world()->update_all_views();
}

void notify_properties(CGuiPlugScene& scene)
{
    const bool controls = scene.gui_core().selection().controls_selected;
    scene.world()->broadcast(controls ? ui_control_properties : ui_dialog_properties);
}

} // namespace tarn
