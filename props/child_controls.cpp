#include "child_controls.h"

#include "engine/base_world.h"
#include "frame/dlg_group.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_scene/gui_plug_scene.h"
#include "type_pages.h"

#include <algorithm>

using tarn::PageEntry;

CChildControls::CChildControls(QWidget* parent) : CGuiChildDlg(QStringLiteral("CChildControls"), parent) {}

void CChildControls::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_pages = findChild<CDlgGroup*>();
    m_pages->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum); // The next section follows at once.
    for (const PageEntry& page : type_pages())
        m_pages->add_wnd(tarn::make_page(page, m_pages), page.template_id);
}

void CChildControls::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    m_pages->on_world_created(world);
}

void CChildControls::update_ui(int code)
{
    switch (code) {
    case tarn::ui_full_refresh:
    case tarn::ui_scene_changed:
    case tarn::ui_control_selected:
    case tarn::ui_selection_changed: choose_page(); break;
    default: break;
    }
    m_pages->update_ui(code);
}

void CChildControls::choose_page()
{
    const CDXUTControl* control = core() ? core()->selection().current_control : nullptr;
    if (!control)
        return;
    const auto pages = type_pages();
    const auto fits = [type = control->GetType()](const PageEntry& page) { return type_of(page) == type; };
    if (const auto page = std::find_if(pages.begin(), pages.end(), fits); page != pages.end())
        m_pages->show_wnd_by_id(page->template_id);
}
