#include "child_controls.h"

#include "dlg_prop_button.h"
#include "dlg_prop_button_st.h"
#include "dlg_prop_check.h"
#include "dlg_prop_info_box.h"
#include "dlg_prop_progress_bar.h"
#include "dlg_prop_radio.h"
#include "dlg_prop_static.h"
#include "engine/base_world.h"
#include "frame/dlg_group.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_scene/gui_plug_scene.h"

#include <array>

namespace {

struct TypePage {
    int type;
    CGuiChildDlg* (*make)();
};

template <class Page>
CGuiChildDlg* make()
{
    return new Page;
}

/// The pages that do more than tell what type they are for.
constexpr std::array type_pages{
    TypePage{DXUT_CONTROL_BUTTON, make<CDlgPropButton>},        TypePage{DXUT_CONTROL_STATIC, make<CDlgPropStatic>},
    TypePage{DXUT_CONTROL_CHECKBOX, make<CDlgPropCheck>},       TypePage{DXUT_CONTROL_RADIOBUTTON, make<CDlgPropRadio>},
    TypePage{DXUT_CONTROL_BUTTONST, make<CDlgPropButtonST>},    TypePage{DXUT_CONTROL_INFOBOX, make<CPropDlgInfoBox>},
    TypePage{DXUT_CONTROL_PROGRESS, make<CDlgPropProgressBar>},
};

CGuiChildDlg* made_page(const tarn::ControlClass& row)
{
    for (const TypePage& page : type_pages)
        if (page.type == row.type)
            return page.make();
    return new CGuiChildDlg(QLatin1String(row.page_name));
}

} // namespace

CChildControls::CChildControls(QWidget* parent) : CGuiChildDlg(QStringLiteral("CChildControls"), parent) {}

void CChildControls::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_pages = findChild<CDlgGroup*>();
    for (const tarn::ControlClass& row : tarn::control_classes()) {
        CGuiChildDlg* page = made_page(row);
        page->Create(row.page, m_pages);
        m_pages->add_wnd(page, row.page);
    }
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
    if (const CDXUTControl* control = core() ? core()->selection().current_control : nullptr)
        m_pages->show_wnd_by_id(tarn::control_class(control->GetType())->page);
}
