#include "dlg_world.h"

#include "core/language.h"
#include "dlg_prop_world.h"
#include "engine/base_world.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "frame/menufun.h"
#include "frame/rollup.h"
#include "import/model_importer.h"
#include "report_list_world.h"
#include "widgets/button_st.h"
#include "world/world_scene.h"
#include "world_commands.h"
#include "world_kinds.h"

#include <QApplication>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>

#include <algorithm>
#include <cmath>

using tarn::lang;
using tarn::WorldObject;
using tarn::boxes::MenuItem;

namespace {

enum Id : int {
    id_search = 7101,
    id_add = 7102,
    id_duplicate = 7103,
    id_remove = 7104,
    id_find = 7105,
    id_list = 7106
};

constexpr int template_properties = 7110;
constexpr int list_share = 2; ///< of the height
constexpr int rollup_share = 3;

struct ButtonRow {
    int id;
    int icon;
    const char16_t* chinese; ///< tool tip
    const char16_t* english;
    int command; ///< of world_commands(); 0 for none
};
constexpr ButtonRow button_rows[] = {
    {id_add, 7007, u"添加物体", u"Add an object", 0},
    {id_duplicate, 18, u"再制所选物体", u"Duplicate the selected objects", 3},
    {id_remove, 6420, u"删除所选物体", u"Delete the selected objects", 4},
    {id_find, 7008, u"让视图对准所选物体", u"Have the view look at the selected objects", 1},
};

// Of new objects, metres
constexpr float near_objects = 0.3f;
constexpr float aside = 1.5f;
constexpr int most_aside = 20; ///< times

constexpr int rename_command = 100;
constexpr int file_command = 150;
constexpr int first_kind = 200; ///< of the commands that add objects

const tarn::WorldCommand& command_row(int id)
{
    const auto all = tarn::world_commands();
    return *std::find_if(all.begin(), all.end(), [id](const tarn::WorldCommand& row) { return row.id == id; });
}

/// One for what comes from files, and one for each kind that needs none.
std::vector<MenuItem> kinds_to_add()
{
    std::vector<MenuItem> items{{.id = file_command, .text = lang(u"模型文件...", u"Model from File...")}};
    for (const tarn::WorldKind& kind : tarn::world_kinds())
        if (kind.from_nothing)
            items.push_back({.id = first_kind + int(kind.type),
                             .text = lang(tarn::row_of(kind.type).chinese, tarn::row_of(kind.type).english)});
    return items;
}

} // namespace

CDlgWorld::CDlgWorld(QWidget* parent) : CListPage(QStringLiteral("CDlgWorld"), parent) {}

QWidget* CDlgWorld::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListWorld"))
        return nullptr;
    m_list = new CReportListWorld(parent);
    return m_list;
}

void CDlgWorld::OnInitDialog()
{
    CListPage::OnInitDialog();
    m_rollup = findChild<CMyRollup*>();
    auto* properties = new CDlgPropWorld;
    properties->Create(template_properties, m_rollup);
    m_rollup->InsertPage(lang(u"物体属性", u"Properties"), properties);
    m_rollup->ExpandAllPages(true);
    auto* parts = findChild<QSplitter*>();
    parts->setStretchFactor(parts->indexOf(m_list), list_share);
    parts->setStretchFactor(parts->indexOf(m_rollup), rollup_share);
    parts->setSizes({list_share * 100, rollup_share * 100}); // The splitter scales them to its height.
    set_up_buttons();
    set_up_list();
    update_buttons();
}

void CDlgWorld::set_up_buttons()
{
    for (const ButtonRow& row : button_rows) {
        button(row.id)->SetIcon(row.icon);
        button(row.id)->SetTooltipText(lang(row.chinese, row.english));
        if (row.command)
            connect(button(row.id), &QAbstractButton::clicked, this, [this, command = row.command] { run(command); });
    }
    connect(button(id_add), &QAbstractButton::clicked, this, [this] { on_add(); });
    auto* search = control_as<QLineEdit>(id_search);
    search->setPlaceholderText(lang(u"按名称查找", u"Search by name"));
    search->setClearButtonEnabled(true);
    connect(search, &QLineEdit::textChanged, this, [this] { refill(); });
}

void CDlgWorld::set_up_list()
{
    connect(m_list, &CReportList::selection_changed_by_user, this, [this] { select_objects_of_rows(); });
    connect(m_list, &CReportList::item_clicked, this, [this](int row, int column) { on_list_clicked(row, column); });
    connect(m_list, &CReportList::item_double_clicked, this, [this] { run(1); });
    connect(m_list, &CReportList::menu_requested, this, [this](int, const QPoint& place) { on_menu(place); });
    connect(m_list, &CReportList::delete_pressed, this, [this] { run(4); });
    // As in the view.
    auto* find = new QShortcut(Qt::Key_F, m_list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(find, &QShortcut::activated, this, [this] { run(1); });
    offer_renaming(*m_list,
                   {.column = CReportListWorld::Name,
                    .name = tarn::key<&tarn::WorldObjectState::name>,
                    .object_of = [](void* row) -> tarn::ModelObject* { return static_cast<WorldObject*>(row); },
                    .changed_code = tarn::ui_world_selection_changed});
}

void CDlgWorld::on_world_created(CBaseWorld* world)
{
    CListPage::on_world_created(world);
    m_rollup->on_world_created(world);
}

void CDlgWorld::update_ui(int code)
{
    if (!core())
        return;
    switch (code) {
    case tarn::ui_full_refresh:
    case tarn::ui_scene_changed:
        enable_controls(is_editing());
        refill();
        select_rows_of_selection();
        break;
    case tarn::ui_world_selection_changed:
        m_list->refresh_all_item_caption();
        if (!m_selecting)
            select_rows_of_selection();
        break;
    default: break;
    }
    update_buttons();
    m_rollup->update_ui(code);
}

void CDlgWorld::model_changed(const tarn::ModelChange& change)
{
    if (!world())
        return;
    const bool is_named = change.is_of(tarn::key<&tarn::WorldObjectState::name>);
    if (change.everything || change.is_of_structure() || is_named)
        refill();
    if (change.is_of(tarn::key<&tarn::WorldObjectState::visible>)
        || change.is_of(tarn::key<&tarn::WorldObjectState::locked>) || is_named)
        m_list->refresh_all_item_caption();
    update_buttons();
}

void CDlgWorld::refill()
{
    if (!world())
        return;
    const QString part = control_as<QLineEdit>(id_search)->text().trimmed();
    std::vector<void*> rows;
    for (WorldObject* object : world()->objects().objects())
        if (object->name().contains(part, Qt::CaseInsensitive))
            rows.push_back(object);
    m_list->set_empty_hint(
        part.isEmpty() || world()->objects().objects().empty()
            ? lang(u"三维世界中还没有物体。请点击“添加”。", u"There are no objects in the world yet. Click \"Add\".")
            : lang(u"没有这样命名的物体。", u"No object has such a name."));
    if (m_list->refill_list(rows))
        select_rows_of_selection();
}

void CDlgWorld::select_rows_of_selection()
{
    const std::vector<WorldObject*> objects = world()->selection().objects();
    if (m_list->selected_objects() == objects)
        return;
    m_list->selecte_items_by_ptr_binded({objects.begin(), objects.end()});
}

void CDlgWorld::select_objects_of_rows()
{
    if (!core() || !is_editing())
        return;
    std::vector<WorldObject*> objects = m_list->selected_objects();
    // The one that the keyboard is on was selected last.
    const auto current = std::find(objects.begin(), objects.end(), m_list->object(m_list->currentIndex().row()));
    if (current != objects.end())
        std::rotate(current, current + 1, objects.end());
    const QScopedValueRollback selecting(m_selecting, true);
    tarn::select_world_objects(*world(), objects);
}

void CDlgWorld::update_buttons()
{
    const QWidget* const focused = QApplication::focusWidget();
    const bool is_ours = focused && isAncestorOf(focused);
    button(id_add)->setEnabled(core() && is_editing());
    for (const ButtonRow& row : button_rows)
        if (row.command)
            button(row.id)->setEnabled(core() && is_editing() && command_row(row.command).enabled_if(*world()));
    if (is_ours && !focused->isEnabled())
        m_list->setFocus(); // Not the search, which would take the next keys.
}

/// What a click beside a name is meant for: the selected objects when it is one of them.
std::vector<WorldObject*> CDlgWorld::rows_or(WorldObject& clicked) const
{
    if (world()->selection().contains(&clicked))
        return world()->selection().objects();
    return {&clicked};
}

void CDlgWorld::on_list_clicked(int row, int column)
{
    WorldObject* clicked = m_list->object(row);
    if (!clicked || !core() || !is_editing())
        return;
    if (column == CReportListWorld::Shown)
        tarn::show_world_objects(*world(), rows_or(*clicked), !clicked->is_visible());
    else if (column == CReportListWorld::Locked)
        tarn::lock_world_objects(*world(), rows_or(*clicked), !clicked->is_locked());
}

void CDlgWorld::on_menu(const QPoint& place)
{
    if (!core() || !is_editing())
        return;
    std::vector<MenuItem> items;
    for (const tarn::WorldCommand& row : tarn::world_commands()) {
        if (row.begins_group)
            items.push_back({});
        items.push_back({.id = row.id,
                         .text = lang(row.chinese, row.english),
                         .enabled = row.enabled_if(*world()),
                         .checked = row.checked_if && row.checked_if(*world())});
    }
    items.push_back({.id = rename_command,
                     .text = lang(u"重命名\tF2", u"Rename\tF2"),
                     .enabled = m_list->get_last_sel_index() >= 0});
    items.push_back({});
    for (MenuItem kind : kinds_to_add()) {
        kind.text = lang(u"添加：%1", u"Add: %1").arg(kind.text);
        items.push_back(kind);
    }
    const int chosen = tarn::boxes::menu(this, {.items = items, .place = place});
    if (chosen == rename_command)
        edit_name();
    else if (chosen >= first_kind)
        add(chosen - first_kind);
    else if (chosen == file_command)
        add_from_file();
    else if (chosen)
        run(chosen);
}

void CDlgWorld::on_add()
{
    const int chosen = menufun::pop_menu(this, kinds_to_add());
    if (chosen == file_command)
        add_from_file();
    else if (chosen)
        add(chosen - first_kind);
}

void CDlgWorld::add_from_file()
{
    const QString endings = QStringLiteral("*.") + tarn::ModelImporter::layouts().join(QStringLiteral(";*."));
    filter_man filter;
    filter.add_filter(lang(u"三维模型", u"3D models"), QStringLiteral("(%1)|%1||").arg(endings));
    const QString path = filedlg::pop_file_dlg(filter, filedlg::mode_open, window());
    if (path.isEmpty())
        return;
    const tarn::Status added = world()->work(
        lang(u"正在读取 %1", u"Reading %1").arg(QFileInfo(path).fileName()), [&](const tarn::Progress& progress) {
            return tarn::add_world_model(*world(), path, new_place(), progress).status();
        });
    if (!added)
        tarn::boxes::error(this, added.message());
}

void CDlgWorld::run(int command)
{
    const tarn::WorldCommand& row = command_row(command);
    if (core() && is_editing() && row.enabled_if(*world()))
        row.run(*world());
}

/// On the ground, where the view looks at, or beside what stands there.
QVector3D CDlgWorld::new_place() const
{
    QVector3D ground = world()->camera().target();
    ground.setY(0);
    const auto& objects = world()->objects().objects();
    const auto is_taken = [&] {
        return std::any_of(objects.begin(), objects.end(), [&](const WorldObject* object) {
            const QVector3D way = object->place() - ground;
            return std::hypot(way.x(), way.z()) < near_objects;
        });
    };
    for (int tries = 0; tries < most_aside && is_taken(); ++tries)
        ground.setX(ground.x() + aside);
    return ground;
}

void CDlgWorld::add(int type)
{
    if (!tarn::add_world_object(*world(), tarn::WorldType(type), new_place()))
        tarn::boxes::error(this,
                           lang(u"世界中没有空间再添加物体。", u"There is no room for more objects in the world."));
}
