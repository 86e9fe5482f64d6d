#include "dlg_prop_menu.h"

#include "child_menu_design.h"
#include "child_menu_item.h"
#include "core/language.h"
#include "frame/rollup.h"
#include "gui_core/menu_state.h"

namespace {

constexpr tarn::FieldRow rows[] = {{.control = 6396,
                                    .field = tarn::key<&tarn::MenuState::name>,
                                    .scope = tarn::Scope::Current,
                                    .reset = tarn::Default::None}};

} // namespace

CDlgPropMenu::CDlgPropMenu(QWidget* parent) : CBoundPage(QStringLiteral("CDlgPropMenu"), tarn::current_menu, parent) {}

void CDlgPropMenu::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    m_rollup = findChild<CMyRollup*>();
    const auto insert = [this](CGuiChildDlg* page, int template_id, const QString& title) {
        page->Create(template_id, m_rollup);
        m_rollup->InsertPage(title, page);
    };
    insert(new CChildMenuItem, 6041, VLCMsgIniW::switch_lang(QStringLiteral("菜单项"), QStringLiteral("Menu Item")));
    insert(new CChildMenuDesign, 6042,
           VLCMsgIniW::switch_lang(QStringLiteral("外观调整"), QStringLiteral("Appearance")));
    m_rollup->ExpandAllPages(true);
}

void CDlgPropMenu::on_world_created(CBaseWorld* world)
{
    CBoundPage::on_world_created(world);
    m_rollup->on_world_created(world);
}

void CDlgPropMenu::update_ui(int code)
{
    CBoundPage::update_ui(code);
    m_rollup->update_ui(code);
}
