#include "dlg_top_table.h"

#include "core/language.h"
#include "dlg_tool_main.h"
#include "frame/dlg_group.h"
#include "gui_core/gui_core.h"
#include "prop_bar.h"

#include <QTabBar>

using tarn::lang;

namespace {

enum Tab : int { tab_dialog, tab_control, tab_style, tab_menu };
constexpr int id_tabs = 6000;

} // namespace

CDlgTopTable::CDlgTopTable(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgTopTable"), parent) {}

void CDlgTopTable::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    auto* tabs = control_as<QTabBar>(id_tabs);
    tabs->addTab(lang(u"窗口", u"Dialog"));
    tabs->addTab(lang(u"控件", u"Control"));
    tabs->addTab(lang(u"风格", u"Style"));
    tabs->addTab(lang(u"菜单", u"Menu"));
    tabs->setExpanding(false);
    connect(tabs, &QTabBar::currentChanged, this, [this](int index) { on_tab(index); });
}

void CDlgTopTable::on_tab(int index)
{
    if (core())
        core()->selection().menu_editing = index == tab_menu;
    if (m_tool_main)
        m_tool_main->show_page(index);
    if (!m_prop_bar)
        return;
    if (index == tab_style)
        m_prop_bar->group().show_wnd_by_id(CPropBar::page_element_editor);
    else
        m_prop_bar->group().show_wnd_by_id(index == tab_menu ? CPropBar::page_menu : CPropBar::page_dialog);
}
