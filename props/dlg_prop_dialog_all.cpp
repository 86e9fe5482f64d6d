#include "dlg_prop_dialog_all.h"

#include "core/language.h"
#include "dlg_prop_dialog.h"
#include "frame/rollup.h"

CDlgPropDialogAll::CDlgPropDialogAll(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgPropDialogAll"), parent) {}

void CDlgPropDialogAll::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_rollup = findChild<CMyRollup*>();
    auto* page = new CDlgPropDialog;
    page->Create(6003, m_rollup);
    m_rollup->InsertPage(tarn::lang(u"窗口属性", u"Property"), page);
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
