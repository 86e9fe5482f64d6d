#include "dlg_prop_dialog_all.h"

#include "core/language.h"
#include "dlg_prop_dialog.h"
#include "frame/rollup.h"
#include "menu_pages.h"
#include "page_base/table_page.h"
#include "type_rows.h"

namespace {

constexpr auto scripts = tarn::script_rows(
    {EVENT_DIALOG_MINIMIZED, EVENT_DIALOG_RESTORED, EVENT_DIALOG_CLOSED, EVENT_DIALOG_MOVED});

/// The scripts that run when something happens to the current dialog.
constexpr tarn::PageEntry script_page{.class_name = "CDlgPropDialogScript",
                                      .template_id = 6377,
                                      .target = &tarn::selected_dialogs,
                                      .scripts = scripts};

} // namespace

CDlgPropDialogAll::CDlgPropDialogAll(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgPropDialogAll"), parent) {}

void CDlgPropDialogAll::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_rollup = findChild<CMyRollup*>();
    auto* properties = new CDlgPropDialog;
    properties->Create(6003, m_rollup);
    m_rollup->InsertPage(tarn::lang(u"窗口属性", u"Property"), properties);
    m_rollup->InsertPage(tarn::lang(u"脚本设置", u"Script"), tarn::make_page(script_page, m_rollup));
    m_rollup->InsertPage(tarn::lang(u"菜单绑定", u"Menus"), tarn::make_page(tarn::dialog_menu_page(), m_rollup));
    m_rollup->ExpandAllPages(true);
}

void CDlgPropDialogAll::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    m_rollup->on_world_created(world);
}

void CDlgPropDialogAll::update_ui(int code)
{
    m_rollup->update_ui(code);
}
