#include "prop_bar.h"

#include "animation/animation_scene.h"
#include "core/res_handle_man.h"
#include "design/dlg_design_font.h"
#include "design/dlg_element_editor.h"
#include "engine/base_world.h"
#include "frame/dlg_group.h"
#include "gui_scene/gui_plug_scene.h"
#include "props/dlg_prop_control.h"
#include "props/dlg_prop_dialog_all.h"
#include "props/dlg_prop_menu.h"
#include "timeline_pages/dlg_prop_timer.h"

#include <utility>

CPropBar::~CPropBar()
{
    if (m_group)
        m_group->destroy_all();
}

void CPropBar::create_pages()
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_group = new CDlgGroup(this);
    setWidget(m_group);
    // The order is that of the group's indices.
    m_group->create_page<CDlgPropDialogAll>(page_dialog);
    m_group->create_page<CDlgPropControl>(page_control);
    m_group->create_page<CDlgElementEditor>(page_element_editor);
    m_group->create_page<CDlgDesignFont>(page_font_design);
    m_group->create_page<CDlgPropMenu>(page_menu);
    m_group->create_page<CDlgPropTimer>(page_timer);
    const auto* elements = qobject_cast<CDlgElementEditor*>(m_group->find_wnd(page_element_editor));
    connect(elements, &CDlgElementEditor::font_page_wanted, this,
            [this] { m_group->show_wnd_by_id(page_font_design); });
    m_group->show_wnd_by_index(0);
}

void CPropBar::on_world_created(CBaseWorld* world)
{
    m_group->on_world_created(world);
    m_scene = tarn::find_gui_scene(*world);
}

void CPropBar::update_ui(int code)
{
    if (!m_scene)
        return;
    // Undo and previews leave an author of timebars where he is; what he selects in the view comes to the front.
    const tarn::SelectionRecord& selection = m_scene->gui_core().selection();
    const std::pair<const void*, const void*> selected(
        selection.current_dialog, selection.controls_selected ? selection.current_control : nullptr);
    const bool selects = std::exchange(m_selected, selected) != selected;
    const bool stays = code == tarn::ui_scene_changed && !selects && m_group->shown_id() == page_timer
        && m_scene->animation().is_editing();
    const bool chooses = code == tarn::ui_full_refresh || code == tarn::ui_scene_changed
        || code == tarn::ui_control_selected || code == tarn::ui_selection_changed;
    if (chooses && !stays)
        choose_page();
    // What shows a timebar belongs to its mode, which brings it to the front again when it is entered.
    if (code == tarn::ui_mode_entered && m_group->shown_id() == page_timer)
        choose_page();
    m_group->update_ui(code);
}

void CPropBar::choose_page()
{
    const tarn::SelectionRecord& selection = m_scene->gui_core().selection();
    if (selection.menu_editing) {
        m_group->show_wnd_by_id(page_menu);
        return;
    }
    // The two design pages are left only by their own actions.
    const int shown = m_group->shown_id();
    if (shown == page_element_editor || shown == page_font_design)
        return;
    m_group->show_wnd_by_id(selection.controls_selected && selection.current_control ? page_control : page_dialog);
}
