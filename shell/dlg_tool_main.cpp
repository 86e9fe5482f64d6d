#include "dlg_tool_main.h"

#include "frame/dlg_group.h"
#include "manager/dlg_gui_manager.h"
#include "manager/dlg_gui_manager_ctrl.h"
#include "manager/dlg_gui_menu.h"
#include "manager/dlg_style_manager.h"

#include <QLayout>

namespace {

constexpr int template_styles = 6164;

} // namespace

CDlgToolMain::CDlgToolMain(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgToolMain"), parent) {}

void CDlgToolMain::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_group = new CDlgGroup(this);
    layout()->addWidget(m_group);
    m_group->create_page<CDlgGuiManager>(6002);
    m_group->create_page<CDlgGuiManagerCtrl>(6562);
    m_group->create_page<CDlgStyleManager>(template_styles);
    m_group->create_page<CDlgGuiMenu>(6039);
    m_group->show_wnd_by_index(0);
}

CDlgStyleManager& CDlgToolMain::style_manager() const
{
    return static_cast<CDlgStyleManager&>(*m_group->find_wnd(template_styles));
}

void CDlgToolMain::show_page(int index)
{
    m_group->show_wnd_by_index(index);
}

void CDlgToolMain::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    m_group->on_world_created(world);
}

void CDlgToolMain::update_ui(int code)
{
    m_group->update_ui(code);
}
