#include "dlg_gui_menu.h"

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_menu.h"
#include "gui_scene/gui_plug_scene.h"
#include "report_list_menu.h"

using tarn::lang;

namespace {

enum Id : int { id_new = 6099, id_list = 6098, id_delete = 6317 };

} // namespace

CDlgGuiMenu::CDlgGuiMenu(QWidget* parent) : CListPage(QStringLiteral("CDlgGuiMenu"), parent) {}

QWidget* CDlgGuiMenu::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListMenu"))
        return nullptr;
    m_list = new CReportListMenu(parent);
    return m_list;
}

void CDlgGuiMenu::OnInitDialog()
{
    CListPage::OnInitDialog();
    on_click(id_new, [this] { on_new_menu(); });
    on_click(id_delete, [this] { on_delete(); });
    connect(m_list, &CReportList::item_clicked, this, [this] { on_list_clicked(); });
    connect(m_list, &CReportListMenu::navigated, this, [this] { on_list_clicked(); });
    connect(m_list, &CReportList::delete_pressed, this,
            [this] { run_action([this] { on_delete(); }, lang(u"删除菜单", u"Delete Menu")); });
    offer_renaming(*m_list,
                   {.column = 0,
                    .name = tarn::key<&tarn::MenuState::name>,
                    .object_of = [](void* row) -> tarn::ModelObject* { return static_cast<CDXUTMenu*>(row); },
                    .changed_code = tarn::ui_control_properties});
}

void CDlgGuiMenu::update_ui(int code)
{
    if (!core())
        return;
    switch (code) {
    case tarn::ui_full_refresh: fill_list(); break;
    case tarn::ui_control_properties:
    case tarn::ui_selection_changed: m_list->refresh_all_item_caption(); break;
    default: break;
    }
}

void CDlgGuiMenu::model_changed(const tarn::ModelChange& change)
{
    if (change.is_of_structure())
        fill_list();
    else
        m_list->refresh_all_item_caption();
}

void CDlgGuiMenu::fill_list()
{
    const auto& menus = core()->GetMenus();
    m_list->refill_list(std::vector<void*>(menus.cbegin(), menus.cend()));
}

void CDlgGuiMenu::on_new_menu()
{
    if (!core() || !is_editing())
        return;
    core()->create_menu();
    fill_list();
    m_list->selecte_item_by_ptr_binded(core()->selection().current_menu);
    broadcast(tarn::ui_selection_changed);
    update_all_views();
}

void CDlgGuiMenu::on_list_clicked()
{
    if (!core())
        return;
    core()->selection().select(m_list->menu(m_list->get_last_sel_index()));
    broadcast(tarn::ui_selection_changed);
    update_all_views();
}

/// Asks nothing, since undo brings the menu back, and broadcasts nothing.
void CDlgGuiMenu::on_delete()
{
    CDXUTMenu* menu = m_list->menu(m_list->get_last_sel_index());
    if (!menu || !is_editing())
        return;
    core()->selection().select(menu);
    scene()->RemoveMenu(menu);
    fill_list();
    update_all_views();
}
