#include "report_list_menu.h"

#include "core/language.h"
#include "gui_core/dxut_menu.h"

#include <QHeaderView>

using tarn::lang;

CReportListMenu::CReportListMenu(QWidget* parent) : CReportList(parent)
{
    insert_column(0, lang(u"菜单", u"Menu"));
    set_use_match_info(false);
    horizontalHeader()->setSectionsClickable(false); // The rows stand in the model's order.
    set_empty_hint(lang(u"还没有菜单。请点击“新建菜单”，然后在属性栏中添加菜单项。",
                        u"There are no menus yet. Click \"New Menu\" and add items in the property bar."));
}

CDXUTMenu* CReportListMenu::menu(int row) const
{
    return static_cast<CDXUTMenu*>(get_binded_ptr(row));
}

QString CReportListMenu::get_item_caption(void* item, int) const
{
    return static_cast<const CDXUTMenu*>(item)->name();
}

void CReportListMenu::keyPressEvent(QKeyEvent* event)
{
    const int before = get_last_sel_index();
    CReportList::keyPressEvent(event);
    if (get_last_sel_index() != before)
        Q_EMIT navigated();
}
