#include "dlg_gui_manager.h"

#include "core/appinfo.h"
#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "frame/str_input.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/removal_title.h"
#include "gui_scene/tex_path_info.h"
#include "report_list_dialog.h"
#include "store/pak_file.h"
#include "widgets/button_st.h"

#include <array>

using tarn::lang;

namespace {

enum Id : int {
    id_export = 6321,
    id_import = 6016,
    id_merge = 6017,
    id_create_window = 6315,
    id_switch_editing = 6468,
    id_list = 6340,
    id_move_down = 6318,
    id_move_up = 6320,
    id_remove = 6317,
};

struct ButtonLook {
    int id;
    int icon;
    const char16_t* chinese; ///< null keeps the template's caption
    const char16_t* english;
};

// Import and Merge share an icon.
constexpr std::array looks{
    ButtonLook{id_create_window, 6326, u"创建窗口", u"Create Window"},
    ButtonLook{id_export, 6409, u"导出界面", u"Export..."},
    ButtonLook{id_import, 6404, u"导入界面", u"Import..."},
    ButtonLook{id_merge, 6404, u"合并界面", u"Merge..."},
    ButtonLook{id_move_up, 6052, nullptr, u"Move Up"},
    ButtonLook{id_move_down, 6412, nullptr, u"Move Down"},
    ButtonLook{id_remove, 6420, nullptr, u"Remove"},
};

constexpr int draw_dialog = 1;  ///< the view's mouse draws a dialog
constexpr int name_limit = 300; ///< characters of a merged part's name

QString open_filter()
{
    return QStringLiteral("(*.tarn)|*.tarn|All Files(*.*)|*.*||");
}

} // namespace

CDlgGuiManager::CDlgGuiManager(QWidget* parent) : CListPage(QStringLiteral("CDlgGuiManager"), parent) {}

QWidget* CDlgGuiManager::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListDialog"))
        return nullptr;
    m_list = new CReportListDialog(parent);
    return m_list;
}

void CDlgGuiManager::OnInitDialog()
{
    CListPage::OnInitDialog();
    set_up_buttons();
    on_click(id_create_window, [this] { on_create_window(); });
    on_click(id_move_up, [this] { move_layer(0); });
    on_click(id_move_down, [this] { move_layer(1); });
    on_click(id_remove, [this] { on_remove(); });
    on_click(id_export, [this] { on_export(); });
    on_click(id_import, [this] { on_import(); });
    on_click(id_merge, [this] { on_merge(); });
    on_click(id_switch_editing, [this] {
        if (scene())
            scene()->switch_ctrl_dialog();
    });
    connect(m_list, &CReportList::item_clicked, this, [this](int row, int column) {
        run_action([&] { on_list_clicked(row, column); }, lang(u"显示/隐藏窗口", u"Show or Hide Dialog"));
    });
    connect(m_list, &CReportListDialog::navigated, this,
            [this] { select_dialog(m_list->dialog(m_list->get_last_sel_index())); });
    connect(m_list, &CReportList::delete_pressed, this,
            [this] { run_action([this] { on_remove(); }, lang(u"删除窗口", u"Remove Dialog")); });
    connect(m_list, &CReportList::menu_requested, this, [this](int row, const QPoint& place) { on_menu(row, place); });
    offer_renaming(*m_list,
                   {.column = 0,
                    .name = tarn::key<&tarn::DialogState::name>,
                    .object_of = [](void* row) -> tarn::ModelObject* { return static_cast<CDXUTDialog*>(row); },
                    .changed_code = tarn::ui_dialog_properties});
    update_buttons();
}

void CDlgGuiManager::set_up_buttons()
{
    for (const ButtonLook& look : looks) {
        CButtonST* target = button(look.id);
        target->SetIcon(look.icon);
        target->setText(VLCMsgIniW::switch_lang(look.chinese ? QString::fromUtf16(look.chinese) : target->text(),
                                                QString::fromUtf16(look.english)));
    }
}

void CDlgGuiManager::update_ui(int code)
{
    if (!core())
        return;
    switch (code) {
    case tarn::ui_full_refresh:
        if (isVisible())
            scene()->SetMTFunction(0, 0);
        fill_list();
        break;
    case tarn::ui_scene_changed:
        scene()->disarm();
        fill_list();
        break;
    case tarn::ui_dialog_properties: m_list->refresh_all_item_caption(); break;
    case tarn::ui_control_selected: scene()->disarm(); break;
    case tarn::ui_selection_changed: select_current(); break;
    default: break;
    }
    show_armed();
}

void CDlgGuiManager::model_changed(const tarn::ModelChange& change)
{
    if (change.is_of_structure())
        fill_list();
    else
        m_list->refresh_all_item_caption();
}

void CDlgGuiManager::fill_list()
{
    const auto& dialogs = core()->GetDialogs();
    m_list->refill_list(std::vector<void*>(dialogs.crbegin(), dialogs.crend()));
    select_current();
}

void CDlgGuiManager::select_current()
{
    m_list->selecte_item_by_ptr_binded(core()->selection().current_dialog);
    update_buttons();
}

void CDlgGuiManager::update_buttons()
{
    const int row = m_list->get_last_sel_index();
    const int count = core() ? int(core()->GetDialogs().size()) : 0;
    const bool editing = is_editing();
    button(id_remove)->setEnabled(editing && row >= 0);
    button(id_move_up)->setEnabled(editing && row > 0);
    button(id_move_down)->setEnabled(editing && row >= 0 && row < count - 1);
    for (const int id : {id_import, id_merge, id_create_window})
        button(id)->setEnabled(editing);
}

void CDlgGuiManager::showEvent(QShowEvent* event)
{
    CListPage::showEvent(event);
    if (scene())
        show_armed();
}

void CDlgGuiManager::show_armed()
{
    button(id_create_window)->SetCheck(scene()->mouse_function() == draw_dialog);
}

void CDlgGuiManager::release(int button_id)
{
    button(button_id)->SetCheck(false);
}

void CDlgGuiManager::on_create_window()
{
    if (!scene())
        return;
    scene()->SetMTFunction(button(id_create_window)->GetCheck() ? draw_dialog : 0, 0);
}

void CDlgGuiManager::on_list_clicked(int row, int column)
{
    if (!core())
        return;
    CDXUTDialog* dialog = m_list->dialog(row);
    if (dialog && column != 0 && is_editing()) {
        dialog->SetVisible(!dialog->GetVisible());
        m_list->refresh_all_item_caption();
        update_all_views();
        return;
    }
    select_dialog(dialog);
}

void CDlgGuiManager::select_dialog(CDXUTDialog* dialog, bool add)
{
    if (dialog)
        core()->SelectDialog(dialog, add);
    else
        core()->ClearDialogSelection();
    broadcast(tarn::ui_selection_changed);
    update_all_views();
    update_buttons();
}

void CDlgGuiManager::on_menu(int row, const QPoint& place)
{
    if (!core())
        return;
    CDXUTDialog* dialog = m_list->dialog(row);
    select_dialog(dialog, core()->selection().contains(dialog));
    pop_list_menu(place);
}

void CDlgGuiManager::move_layer(int down)
{
    CDXUTDialog* dialog = m_list->dialog(m_list->get_last_sel_index());
    if (!dialog)
        return;
    core()->AdjustDialogLayer(dialog, down);
    fill_list();
    m_list->selecte_item_by_ptr_binded(dialog);
    update_buttons();
}

void CDlgGuiManager::on_remove()
{
    CDXUTDialog* dialog = m_list->dialog(m_list->get_last_sel_index());
    if (!dialog || !is_editing()
        || !tarn::boxes::confirm(this, lang(u"你正在删除你的对话框!", u"Ensure delete dialog?"),
                                 tarn::removal_title({dialog->name()})))
        return;
    scene()->RemoveDialog(dialog);
    update_all_views();
}

void CDlgGuiManager::on_export()
{
    filter_man filter;
    filter.add_filter(lang(u"TARN文件", u"TARN file"), QStringLiteral("(*.tarn)|*.tarn|all files(*.*)|*.*||"));
    const QString path = filedlg::pop_file_dlg(filter, filedlg::mode_save, this);
    if (!path.isEmpty())
        export_to(path);
    release(id_export);
}

void CDlgGuiManager::export_to(const QString& path)
{
    const auto status = scene()->export_to(path,
                                           {.prefix = {},
                                            .interface_only = true,
                                            .with_pictures = true,
                                            .texture_path = appinfo::get_tarn_texture_path(path)});
    if (!status)
        tarn::boxes::error(this, status.message());
}

void CDlgGuiManager::on_import()
{
    if (tarn::boxes::confirm(this,
                             lang(u"导入界面将会覆盖当前编辑的界面和风格，确定是否继续？",
                                  u"Import a gui will overwrite all controls and dialogs,continue?"))) {
        filter_man filter;
        filter.add_filter(QStringLiteral("TARN File"), open_filter());
        const QString path = filedlg::pop_file_dlg(filter, filedlg::mode_open, this);
        if (!path.isEmpty())
            import_from(path);
    }
    release(id_import);
}

void CDlgGuiManager::import_from(const QString& path)
{
    scene()->SetMTFunction(0, 0);
    CPakFile package;
    auto status = package.open(path, 0);
    if (status) {
        const CTexPathInfo textures(path, 1);
        // Loading replaces everything once the package has been read whole; a faulty one changes nothing.
        status = scene()->load(package, textures);
    }
    show_armed();
    if (!status) {
        tarn::boxes::error(this, status.message());
        return;
    }
    scene()->set_openfile_name(path);
    broadcast(tarn::ui_full_refresh);
}

void CDlgGuiManager::on_merge()
{
    filter_man filter;
    filter.add_filter(QStringLiteral("TARN File"), open_filter());
    const QString path = filedlg::pop_file_dlg(filter, filedlg::mode_open, this);
    if (!path.isEmpty())
        merge_from(path);
    release(id_merge);
}

/// Empty when the user gave up.
QString CDlgGuiManager::ask_merge_name()
{
    QString name;
    while (PopDlgStrInput(this, lang(u"请输入合并后的名称(注意不要重名):", u"Input merge name:"), {}, {}, name,
                          name_limit, 1))
        if (!name.trimmed().isEmpty())
            return name;
    return {};
}

void CDlgGuiManager::merge_from(const QString& path)
{
    using tarn::boxes::Button;
    // Nobody is to answer questions about a package that cannot be merged.
    if (auto status = scene()->check_merge(path); !status) {
        tarn::boxes::error(this, status.message());
        return;
    }
    const QString name = ask_merge_name();
    if (name.isEmpty())
        return;
    const Button answer = tarn::boxes::message(
        this,
        {.text = lang(u"是否导入新的风格并替换原有风格？", u"Do you want to replace the style?"),
         .title = {},
         .buttons = {Button::Yes, Button::No, Button::Cancel}});
    if (answer == Button::Cancel)
        return;
    if (auto status = scene()->on_merge_GUI(path, name, answer == Button::Yes); !status) {
        tarn::boxes::error(this, status.message());
        return;
    }
    broadcast(tarn::ui_full_refresh);
}
