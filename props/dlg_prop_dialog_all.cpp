#include "dlg_prop_dialog_all.h"

#include "core/language.h"
#include "dlg_prop_dialog.h"
#include "dlg_prop_dialog_script.h"
#include "frame/rollup.h"

CDlgPropDialogAll::CDlgPropDialogAll(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgPropDialogAll"), parent) {}

void CDlgPropDialogAll::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_rollup = findChild<CMyRollup*>();
    const auto insert = [this](CGuiChildDlg* page, int template_id, const QString& title) {
        page->Create(template_id, m_rollup);
        m_rollup->InsertPage(title, page);
    };
    insert(new CDlgPropDialog, 6003, tarn::lang(u"窗口属性", u"Property"));
    insert(new CDlgPropDialogScript, 6377, tarn::lang(u"脚本设置", u"Script"));
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
