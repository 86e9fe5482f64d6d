#include "dlg_gui_manager_ctrl.h"

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/menufun.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/removal_title.h"
#include "report_list_control.h"
#include "widgets/button_st.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QScopedValueRollback>
#include <QStandardItemModel>

#include <algorithm>
#include <array>
#include <utility>

using tarn::lang;

namespace {

constexpr int first_dialog = 2; ///< entry of the filter of dialogs

enum Id : int {
    id_list = 6316,
    id_dialog_filter = 6548,
    id_type_filter = 6551,
    id_search = 6990,
    id_remove = 6338,
    id_set_top = 6322,
    id_set_bottom = 6106,
    id_move_up = 6588,
    id_move_down = 6108,
    id_switch_dialog = 6370,
    id_clean_scripts = 6592,
};

struct RowButton {
    int id;
    int icon;
    const char16_t* chinese; ///< tool tip
    const char16_t* english;
};

// The arrows of Move Up and Move Down point where the row goes when the list is sorted by layers, lowest first.
constexpr std::array row_buttons{
    RowButton{id_remove, 6420, u"删除", u"Remove"},
    RowButton{id_set_top, 6427, u"置顶", u"Set Top"},
    RowButton{id_set_bottom, 6423, u"置底", u"Set Bottom"},
    RowButton{id_move_up, 6412, u"上移一层：离观看者更近；按图层排序时在列表中向下",
              u"One layer up, nearer to the viewer; one row down in the list sorted by layers"},
    RowButton{id_move_down, 6052, u"下移一层：离观看者更远；按图层排序时在列表中向上",
              u"One layer down, away from the viewer; one row up in the list sorted by layers"},
    RowButton{id_switch_dialog, 6430, u"切换控件窗口", u"Switch Dialog"},
};

// Of the buttons that create controls
constexpr int compact_below = 760; ///< pixels of the page's height
constexpr int compact_columns = 8;
constexpr int usual_columns = 2;

constexpr int draw_control = 2; ///< the view's mouse draws a control
constexpr int first_command = 100;

const QString all_entry = QStringLiteral("---ALL---");

} // namespace

CDlgGuiManagerCtrl::CDlgGuiManagerCtrl(QWidget* parent) : CListPage(QStringLiteral("CDlgGuiManagerCtrl"), parent) {}

QWidget* CDlgGuiManagerCtrl::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListControl"))
        return nullptr;
    m_list = new CReportListControl(parent);
    return m_list;
}

void CDlgGuiManagerCtrl::OnInitDialog()
{
    // The lists of dialogs and of controls share their captions.
    CTarnLanguageConvert::init_dlg_language(this, QStringLiteral("CDlgGuiManager"));
    set_up_type_buttons();
    set_up_row_buttons();
    set_up_filters();
    set_up_list();
    update_buttons();
}

void CDlgGuiManagerCtrl::set_up_type_buttons()
{
    for (const tarn::ControlClass& row : tarn::control_classes()) {
        CButtonST& create = *button(row.create_button);
        create.SetIcon(row.icon);
        create.SetTooltipText(
            lang(u"点击后在视图中绘制：%1", u"Click, then draw in the view: %1").arg(GetControlTypeName(row.type)));
        on_click(row.create_button, [this, &row] { on_type_clicked(row.create_button, row.type); });
    }
    auto* grid = findChild<QGridLayout*>(QStringLiteral("type_grid"));
    for (int row = 0; row < grid->rowCount(); ++row)
        for (int column = 0; column < grid->columnCount(); ++column)
            if (const QLayoutItem* item = grid->itemAtPosition(row, column))
                if (auto* create = qobject_cast<CButtonST*>(item->widget())) {
                    create->setAccessibleName(create->text());
                    m_type_buttons.push_back(create);
                }
}

/// Where the panel is low, its list needs the room more than the captions of what can be created, which the tool tips tell.
void CDlgGuiManagerCtrl::arrange_type_buttons()
{
    const bool compact = height() < compact_below;
    if (std::exchange(m_is_compact, compact) == compact)
        return;
    auto* grid = findChild<QGridLayout*>(QStringLiteral("type_grid"));
    const int columns = compact ? compact_columns : usual_columns;
    for (int place = 0; place < int(m_type_buttons.size()); ++place) {
        CButtonST* create = m_type_buttons[std::size_t(place)];
        grid->removeWidget(create);
        create->setText(compact ? QString() : create->accessibleName());
        grid->addWidget(create, place / columns, place % columns);
    }
}

void CDlgGuiManagerCtrl::resizeEvent(QResizeEvent* event)
{
    CListPage::resizeEvent(event);
    arrange_type_buttons();
}

void CDlgGuiManagerCtrl::set_up_row_buttons()
{
    for (const RowButton& row : row_buttons) {
        button(row.id)->SetIcon(row.icon);
        button(row.id)->SetTooltipText(lang(row.chinese, row.english));
    }
    on_click(id_remove, [this] { on_remove(); });
    on_click(id_set_top, [this] { change_layer(&CDXUTDialog::SetCtrlLayer, 0); });
    on_click(id_set_bottom, [this] { change_layer(&CDXUTDialog::SetCtrlLayer, 1); });
    on_click(id_move_up, [this] { change_layer(&CDXUTDialog::SetCtrlLayerUpDown, 1); });
    on_click(id_move_down, [this] { change_layer(&CDXUTDialog::SetCtrlLayerUpDown, 0); });
    on_click(id_switch_dialog, [this] { on_switch_dialog(); });
    button(id_clean_scripts)
        ->SetTooltipText(lang(u"删除已不存在的控件的事件脚本，不能撤销",
                              u"Removes the event scripts of controls that are gone; this cannot be undone"));
    on_click(id_clean_scripts, [this] {
        scene()->remove_deletectrl_GUI_scripts();
        broadcast(tarn::ui_control_properties);
    });
}

void CDlgGuiManagerCtrl::set_up_filters()
{
    auto* types = control_as<QComboBox>(id_type_filter);
    auto* entries = qobject_cast<QStandardItemModel*>(types->model());
    auto* popup = qobject_cast<QListView*>(types->view());
    types->addItem(all_entry);
    for (int type = 0; type < control_type_count; ++type) {
        const QString name = GetControlTypeName(type);
        types->addItem(name);
        if (!name.isEmpty())
            continue;
        // An entry's index tells its type, so a number without a type has one that cannot be chosen.
        entries->item(type + 1)->setEnabled(false);
        popup->setRowHidden(type + 1, true);
    }
    on_choose(id_type_filter, [this](int) { refill(); });
    on_choose(id_dialog_filter, [this](int entry) { on_dialog_filter(entry); });
    auto* search = control_as<QLineEdit>(id_search);
    search->setPlaceholderText(lang(u"名称或编号", u"Name or number"));
    search->setClearButtonEnabled(true);
    connect(search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_sought = text.trimmed();
        if (core())
            refill();
    });
}

void CDlgGuiManagerCtrl::set_up_list()
{
    connect(m_list, &CReportList::item_clicked, this, [this](int row, int column) { on_list_clicked(row, column); });
    connect(m_list, &CReportList::cell_icon_clicked, this, [this](int row) { on_lock_clicked(row); });
    connect(m_list, &CReportList::drag_started, this,
            [this] { select_controls_of_rows(m_list->control(m_list->currentIndex().row())); });
    connect(m_list, &CReportList::rows_dropped, this, [this](int row, CReportList::DropPlace place) {
        on_rows_dropped(row, place == CReportList::DropPlace::Below);
    });
    connect(m_list, &CReportList::menu_requested, this, [this](int row, const QPoint& place) { on_menu(row, place); });
    connect(m_list, &CReportListControl::navigated, this,
            [this] { select_controls_of_rows(m_list->control(m_list->currentIndex().row())); });
    connect(m_list, &CReportList::delete_pressed, this,
            [this] { run_action([this] { on_remove(); }, lang(u"删除控件", u"Remove Control")); });
    offer_renaming(*m_list,
                   {.column = CReportListControl::Name,
                    .name = tarn::key<&tarn::ControlState::name>,
                    .object_of = [](void* row) -> tarn::ModelObject* { return static_cast<CDXUTControl*>(row); },
                    .changed_code = tarn::ui_control_properties});
}

void CDlgGuiManagerCtrl::update_ui(int code)
{
    if (!core())
        return;
    switch (code) {
    case tarn::ui_full_refresh:
        if (isVisible())
            scene()->SetMTFunction(0, 0);
        refresh();
        break;
    case tarn::ui_scene_changed:
        scene()->disarm();
        refresh();
        break;
    case tarn::ui_control_selected:
        scene()->disarm();
        refill();
        update_buttons();
        break;
    case tarn::ui_control_properties: m_list->refresh_all_item_caption(); break;
    case tarn::ui_selection_changed:
        if (!m_selecting)
            select_rows_of_selection();
        break;
    case tarn::ui_controls_changed:
        m_list->refresh_all_item_caption();
        m_list->sort_by_column(CReportListControl::Layer, true);
        break;
    default: break;
    }
    show_armed_type();
}

void CDlgGuiManagerCtrl::model_changed(const tarn::ModelChange& change)
{
    m_order_stale |= change.everything || change.is_of_structure() || change.is_of(tarn::key<&tarn::ControlState::name>)
        || change.is_of(tarn::key<&tarn::DialogState::name>);
    // In what order the controls lie changes captions, not rows.
    const bool other_objects = change.everything
        || std::any_of(change.objects.begin(), change.objects.end(), [](const tarn::ModelChange::Object& object) {
                                   return object.before->parent != object.object->shown_state().parent;
                               });
    if (change.is_of_structure() || change.is_of(tarn::key<&tarn::DialogState::name>))
        follow_dialogs();
    if (other_objects)
        refill();
    else
        m_list->refresh_all_item_caption();
}

/// The filter's entries are the present dialogs; the chosen one stays chosen while it is there.
void CDlgGuiManagerCtrl::follow_dialogs()
{
    const auto& dialogs = core()->GetDialogs();
    auto* filter = control_as<QComboBox>(id_dialog_filter);
    QStringList entries{all_entry, QStringLiteral("---ROOT---")};
    for (const CDXUTDialog* dialog : dialogs)
        entries.append(dialog->name());
    const bool of_dialog = m_filter_dialog && m_filter_dialog != core()->GetRootDialog();
    const qsizetype place = of_dialog ? dialogs.indexOf(m_filter_dialog) : -1;
    if (of_dialog && place < 0)
        m_filter_dialog = nullptr;
    const int chosen = place >= 0 ? first_dialog + int(place) : m_filter_dialog ? 1 : 0;
    filter->clear();
    filter->addItems(entries);
    filter->setCurrentIndex(chosen);
}

void CDlgGuiManagerCtrl::refresh()
{
    const CDXUTDialog* before = std::exchange(m_filter_dialog, nullptr);
    QStringList entries{all_entry, QStringLiteral("---ROOT---")};
    int chosen = 0;
    if (before == core()->GetRootDialog()) {
        m_filter_dialog = before;
        chosen = 1;
    }
    const auto& dialogs = core()->GetDialogs();
    for (int i = 0; i < int(dialogs.size()); ++i) {
        entries.append(dialogs[i]->name());
        if (dialogs[i] == before) {
            m_filter_dialog = before;
            chosen = i; // The dialog's place among the dialogs, two before that of its entry.
        }
    }
    auto* filter = control_as<QComboBox>(id_dialog_filter);
    filter->clear();
    filter->addItems(entries);
    filter->setCurrentIndex(chosen);
    refill();
}

void CDlgGuiManagerCtrl::refill()
{
    const int type_entry = control_as<QComboBox>(id_type_filter)->currentIndex();
    std::vector<void*> listed;
    for (CDXUTControl* control : core()->controls())
        if (is_sought(*control) && (type_entry <= 0 || control->GetType() + 1 == type_entry)
            && (!m_filter_dialog || control->dialog() == m_filter_dialog))
            listed.push_back(control);
    const bool sorted = m_list->refill_list(listed);
    // Rows do not jump while a name is typed, but what undo or a click elsewhere leaves is in order.
    if (std::exchange(m_order_stale, false) && !sorted)
        m_list->sort_again();
    m_list->selecte_item_by_ptr_binded(core()->selection().current_control);
    if (core()->selection().controls.size() > 1)
        select_rows_of_selection(); // Undo brings back all of it.
    update_buttons();
}

bool CDlgGuiManagerCtrl::is_sought(const CDXUTControl& control) const
{
    return m_sought.isEmpty() || control.name().contains(m_sought, Qt::CaseInsensitive)
        || QString::number(control.id()) == m_sought;
}

void CDlgGuiManagerCtrl::select_rows_of_selection()
{
    const std::vector<CDXUTControl*>& selected = core()->selection().controls;
    m_list->selecte_items_by_ptr_binded(std::vector<void*>(selected.begin(), selected.end()), true);
    update_buttons();
}

void CDlgGuiManagerCtrl::update_buttons()
{
    const bool editing = is_editing();
    const bool has_row = m_list->selectionModel()->hasSelection();
    for (const RowButton& row : row_buttons)
        button(row.id)->setEnabled(editing && has_row);
    for (const tarn::ControlClass& row : tarn::control_classes())
        button(row.create_button)->setEnabled(editing);
    button(id_clean_scripts)->setEnabled(editing);
    m_list->set_rows_draggable(editing);
}

void CDlgGuiManagerCtrl::showEvent(QShowEvent* event)
{
    CListPage::showEvent(event);
    if (scene())
        show_armed_type();
}

void CDlgGuiManagerCtrl::show_armed_type()
{
    for (const tarn::ControlClass& row : tarn::control_classes())
        button(row.create_button)->SetCheck(scene()->mouse_function_type() == row.type);
}

void CDlgGuiManagerCtrl::on_type_clicked(int button_id, int type)
{
    const bool wanted = button(button_id)->GetCheck();
    scene()->SetMTFunction(wanted ? draw_control : 0, wanted ? type : 0);
    show_armed_type();
}

void CDlgGuiManagerCtrl::on_dialog_filter(int entry)
{
    m_filter_dialog = entry == 1 ? core()->GetRootDialog() : core()->GetDialogs().value(entry - first_dialog);
    refill();
}

void CDlgGuiManagerCtrl::on_list_clicked(int row, int column)
{
    CDXUTControl* clicked = m_list->control(row);
    // Who adds rows to the selection does not want to hide what they stand for.
    const bool adds = QGuiApplication::keyboardModifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    if (clicked && column != CReportListControl::Id && !adds && is_editing()) {
        // The step ends before the selection changes: undone, it leaves what was selected.
        run_action([&] { clicked->SetVisible(!clicked->GetVisible()); },
                   lang(u"显示/隐藏控件", u"Show or Hide Control"));
        m_list->refresh_all_item_caption();
        update_all_views();
    }
    select_controls_of_rows(clicked);
}

/// Locks or unlocks all selected controls when the clicked one is among them.
void CDlgGuiManagerCtrl::on_lock_clicked(int row)
{
    CDXUTControl* clicked = m_list->control(row);
    if (!clicked || !is_editing())
        return;
    std::vector<CDXUTControl*> meant = m_list->selected_controls();
    if (std::find(meant.begin(), meant.end(), clicked) == meant.end())
        meant = {clicked};
    const bool lock = !clicked->locked();
    run_action(
        [&] {
            for (CDXUTControl* control : meant)
                control->set_locked(lock);
        },
        lock ? lang(u"锁定", u"Lock") : lang(u"解锁", u"Unlock"));
    broadcast(tarn::ui_control_properties);
}

/// The selected controls come to lie beside the one of the row, in its dialog. Rows stand in the order of layers or in one
/// that says nothing of them; below a row is then above it in the layers.
void CDlgGuiManagerCtrl::on_rows_dropped(int row, bool below)
{
    const CDXUTControl* beside = m_list->control(row);
    CDXUTDialog* dialog = beside ? beside->dialog() : nullptr;
    std::vector<CDXUTControl*> moved = m_list->selected_controls();
    if (!dialog || moved.empty() || !is_editing())
        return;
    const bool topmost_first = m_list->sort_column() == CReportListControl::Layer
        && m_list->horizontalHeader()->sortIndicatorOrder() == Qt::DescendingOrder;
    if (topmost_first)
        std::reverse(moved.begin(), moved.end());
    const bool changes_dialog = std::any_of(
        moved.begin(), moved.end(), [dialog](const CDXUTControl* control) { return control->dialog() != dialog; });
    run_action(
        [&] {
            core()->move_controls_to(moved, dialog);
            QList<CDXUTControl*> order = dialog->controls();
            order.removeIf(
                [&](CDXUTControl* control) { return std::find(moved.begin(), moved.end(), control) != moved.end(); });
            qsizetype place = order.indexOf(beside) + (below != topmost_first ? 1 : 0);
            for (CDXUTControl* control : moved)
                order.insert(place++, control);
            dialog->reorder_controls(order);
        },
        changes_dialog ? lang(u"切换控件窗口", u"Switch Dialog") : lang(u"图层顺序", u"Layer Order"));
    broadcast(tarn::ui_controls_changed);
}

void CDlgGuiManagerCtrl::on_menu(int row, const QPoint& place)
{
    if (!core())
        return;
    select_controls_of_rows(m_list->control(row));
    pop_list_menu(place);
}

void CDlgGuiManagerCtrl::select_controls_of_rows(CDXUTControl* current)
{
    core()->ClearCtrlSelection();
    core()->SelectControls(m_list->selected_controls());
    if (core()->selection().contains(current))
        core()->SelectControl(current, true); // The one that is selected last is the current one.
    {
        const QScopedValueRollback selecting(m_selecting, true);
        broadcast(tarn::ui_selection_changed);
    }
    update_all_views();
    update_buttons();
}

void CDlgGuiManagerCtrl::on_remove()
{
    const std::vector<CDXUTControl*> chosen = m_list->selected_controls();
    if (chosen.empty() || !is_editing()
        || !tarn::boxes::confirm(this, lang(u"你正在删除你的控件!", u"Ensure delete control?"),
                                 tarn::removal_title_of(chosen)))
        return;
    scene()->RemoveCtrls(chosen);
    broadcast(tarn::ui_control_selected); // This list is refilled by it too.
    update_all_views();
}

void CDlgGuiManagerCtrl::change_layer(bool (CDXUTDialog::*operation)(CDXUTControl*, int), int argument)
{
    CDXUTControl* control = m_list->control(m_list->get_last_sel_index());
    if (CDXUTDialog* dialog = control ? control->dialog() : nullptr)
        (dialog->*operation)(control, argument);
    broadcast(tarn::ui_controls_changed);
    update_all_views();
}

void CDlgGuiManagerCtrl::on_switch_dialog()
{
    std::vector<CDXUTDialog*> candidates{core()->GetRootDialog()};
    candidates.insert(candidates.end(), core()->GetDialogs().begin(), core()->GetDialogs().end());
    std::vector<tarn::boxes::MenuItem> items;
    for (const CDXUTDialog* dialog : candidates)
        items.push_back({.id = first_command + int(items.size()), .text = dialog->name()});

    const int command = menufun::pop_menu(this, items);
    const tarn::SelectionRecord selection = core()->selection();
    if (command >= first_command && selection.current_control && selection.controls_selected)
        scene()->switch_ctrl_dialog(selection.controls, candidates.at(size_t(command - first_command)));
    m_list->refresh_all_item_caption();
    update_all_views();
}
