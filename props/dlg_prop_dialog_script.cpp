#include "dlg_prop_dialog_script.h"

#include "type_rows.h"

namespace {

constexpr auto scripts = tarn::script_rows(
    {EVENT_DIALOG_MINIMIZED, EVENT_DIALOG_RESTORED, EVENT_DIALOG_CLOSED, EVENT_DIALOG_MOVED});

} // namespace

CDlgPropDialogScript::CDlgPropDialogScript(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropDialogScript"), Target::Dialogs, parent)
{
}

void CDlgPropDialogScript::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind_scripts(scripts);
}
