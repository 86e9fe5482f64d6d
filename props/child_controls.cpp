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
#include "gui_core/dxut_control.h"
#include "gui_scene/gui_plug_scene.h"

#include <algorithm>
#include <array>

namespace {

struct TypePage {
    int type;
    int template_id;
    const char* page_name;
    CGuiChildDlg* (*make)() = nullptr; ///< null: the page only says what type it is for
};

template <class Page>
CGuiChildDlg* make()
{
    return new Page;
}

constexpr std::array type_pages{
    TypePage{DXUT_CONTROL_BUTTON, 6005, "CDlgPropButton", make<CDlgPropButton>},
    TypePage{DXUT_CONTROL_STATIC, 6009, "CDlgPropStatic", make<CDlgPropStatic>},
    TypePage{DXUT_CONTROL_CHECKBOX, 6006, "CDlgPropCheck", make<CDlgPropCheck>},
    TypePage{DXUT_CONTROL_RADIOBUTTON, 6007, "CDlgPropRadio", make<CDlgPropRadio>},
    TypePage{DXUT_CONTROL_COMBOBOX, 6391, "CDlgPropCombo"},
    TypePage{DXUT_CONTROL_SLIDER, 6010, "CDlgPropSlider"},
    TypePage{DXUT_CONTROL_EDITBOX, 6008, "CDlgPropEdit"},
    TypePage{DXUT_CONTROL_LISTBOX, 6011, "CDlgPropListBox"},
    TypePage{DXUT_CONTROL_SCROLLBAR, 6350, "CDlgPropScrollbar"},
    TypePage{DXUT_CONTROL_BUTTONST, 6388, "CDlgPropButtonST", make<CDlgPropButtonST>},
    TypePage{DXUT_CONTROL_PICTURE, 6374, "CDlgPropPicture"},
    TypePage{DXUT_CONTROL_INFOBOX, 6369, "CPropDlgInfoBox", make<CPropDlgInfoBox>},
    TypePage{DXUT_CONTROL_FLASH, 6560, "CDlgPropFlash"},
    TypePage{DXUT_CONTROL_PROGRESS, 6573, "CDlgPropProgressBar", make<CDlgPropProgressBar>},
    TypePage{DXUT_CONTROL_PIP, 6609, "CDlgPropPictureInPicture"},
    TypePage{DXUT_CONTROL_MAP, 6611, "CDlgPropMap"},
};

} // namespace

CChildControls::CChildControls(QWidget* parent) : CGuiChildDlg(QStringLiteral("CChildControls"), parent) {}

void CChildControls::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_pages = findChild<CDlgGroup*>();
    for (const TypePage& row : type_pages) {
        auto* page = row.make ? row.make() : new CGuiChildDlg(QLatin1String(row.page_name));
        page->Create(row.template_id, m_pages);
        m_pages->add_wnd(page, row.template_id);
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
    const CDXUTControl* control = core() ? core()->selection().current_control : nullptr;
    if (!control)
        return;
    const auto row = std::find_if(type_pages.begin(), type_pages.end(),
                                  [type = control->GetType()](const TypePage& page) { return page.type == type; });
    if (row != type_pages.end())
        m_pages->show_wnd_by_id(row->template_id);
}
