#include "report_list_dialog.h"

#include "core/language.h"
#include "gui_core/dxut_dialog.h"

#include <QHeaderView>

using tarn::lang;

CReportListDialog::CReportListDialog(QWidget* parent) : CReportList(parent)
{
    insert_column(0, lang(u"名称", u"Name"), 3);
    insert_column(1, lang(u"状态", u"State"), 1);
    // The rows are the layers; sorting by another order would hide what Move Up and Move Down do.
    horizontalHeader()->setSectionsClickable(false);
    set_empty_hint(lang(u"还没有窗口。请点击“创建窗口”，然后在视图中绘制。",
                        u"There are no dialogs yet. Click \"Create Window\" and draw one in the view."));
}

CDXUTDialog* CReportListDialog::dialog(int row) const
{
    return static_cast<CDXUTDialog*>(get_binded_ptr(row));
}

QString CReportListDialog::get_item_caption(void* item, int column) const
{
    const auto* dialog = static_cast<const CDXUTDialog*>(item);
    if (column == 0)
        return dialog->name();
    return dialog->GetVisible() ? lang(u"显示", u"Shown") : lang(u"隐藏", u"Hidden");
}

void CReportListDialog::keyPressEvent(QKeyEvent* event)
{
    const int before = get_last_sel_index();
    CReportList::keyPressEvent(event);
    if (get_last_sel_index() != before)
        Q_EMIT navigated();
}
