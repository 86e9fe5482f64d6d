#include "child_menu_item.h"

#include "core/language.h"
#include "frame/boxes.h"
#include "frame/cmd_test.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_scene/gui_plug_scene.h"
#include "menu_tree.h"
#include "page_base/menu_picture.h"
#include "script/config_scene.h"
#include "widgets/button_st.h"

#include <QLineEdit>

#include <algorithm>
#include <array>

using tarn::FieldKey;
using tarn::FieldRow;
using tarn::key;
using tarn::lang;
using tarn::MenuItemState;
using tarn::MenuMove;
using tarn::MenuPlace;
using tarn::ModelObject;

namespace {

enum Id : int {
    id_add = 6812,
    id_add_inside = 6813,
    id_add_separator = 6814,
    id_remove = 6815,
    id_open_function = 6828,
    id_text = 6820,
};

struct MoveButton {
    int id;
    MenuMove move;
};
constexpr std::array moves{MoveButton{6816, MenuMove::Up}, MoveButton{6817, MenuMove::Down},
                           MoveButton{6818, MenuMove::In}, MoveButton{6819, MenuMove::Out}};

const MenuItemState& state_of(const ModelObject& item)
{
    return static_cast<const CDXUTMenuItem&>(item).item_state();
}

bool is_no_separator(const ModelObject& item)
{
    return !state_of(item).separator;
}

bool can_be_checked(const ModelObject& item)
{
    return state_of(item).checkable;
}

std::vector<tarn::ChoiceItem> functions(CGuiPlugScene& scene, const ModelObject&)
{
    std::vector<tarn::ChoiceItem> items{{QString(), lang(u"（无）", u"(None)")}};
    for (const FuncPtr& function : scene.functions().functions())
        items.push_back({function->name(), function->name()});
    return items;
}

constexpr FieldRow item_row(int control, FieldKey field, bool (*enabled_if)(const ModelObject&) = is_no_separator)
{
    return {.control = control, .field = field, .scope = tarn::Scope::Current, .enabled_if = enabled_if};
}

constexpr FieldRow text_row(int control, FieldKey field)
{
    FieldRow row = item_row(control, field);
    row.reset = tarn::Default::None;
    return row;
}

constexpr FieldRow function_row(int control)
{
    FieldRow row = item_row(control, key<&MenuItemState::function>);
    row.choices = functions;
    return row;
}

constexpr FieldRow rows[] = {
    text_row(id_text, key<&MenuItemState::text>),
    text_row(6821, key<&MenuItemState::shortcut>),
    item_row(6824, key<&MenuItemState::enabled>),
    item_row(6825, key<&MenuItemState::checkable>),
    item_row(6826, key<&MenuItemState::checked>, can_be_checked),
    function_row(6827),
};

constexpr tarn::ImageRow images[] = {{6822, 6823, key<&MenuItemState::icon>}};

} // namespace

CChildMenuItem::CChildMenuItem(QWidget* parent)
    : CBoundPage(QStringLiteral("CChildMenuItem"), tarn::current_menu_item, parent)
{
}

QWidget* CChildMenuItem::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name == QLatin1String("CMenuTree"))
        return m_tree = new CMenuTree(parent);
    if (class_name == QLatin1String("CMenuPicture"))
        return m_picture = new CMenuPicture(parent);
    return nullptr;
}

void CChildMenuItem::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    bind_images(images);
    on_click(id_add, [this] { add(MenuPlace::Behind, false); });
    on_click(id_add_inside, [this] { add(MenuPlace::Inside, false); });
    on_click(id_add_separator, [this] { add(MenuPlace::Behind, true); });
    on_click(id_remove, [this] { remove(); });
    on_click(id_open_function, [this] { open_function(); });
    for (const MoveButton& button : moves)
        on_click(button.id, [this, move = button.move] { this->move(move); });
    connect(m_tree, &CMenuTree::item_chosen, this, [this](int index) { choose(index); });
    connect(m_tree, &CMenuTree::text_changed, this, [this](int index, const QString& text) { rename(index, text); });
    connect(m_tree, &CMenuTree::delete_pressed, this,
            [this] { run_action([this] { remove(); }, lang(u"删除菜单项", u"Remove Menu Item")); });
    connect(m_tree, &CMenuTree::move_pressed, this, [this](CMenuTree::Move pressed) {
        run_action([this, pressed] { move(moves[std::size_t(pressed)].move); }, lang(u"移动菜单项", u"Move Menu Item"));
    });
    connect(m_tree, &CMenuTree::item_dropped, this, [this](int index, tarn::MenuSpot spot) {
        run_action([&] { drop(index, spot); }, lang(u"移动菜单项", u"Move Menu Item"));
    });
    connect(m_picture, &CMenuPicture::item_clicked, this, [this](int index) { choose(index); });
    update_buttons();
}

CDXUTMenu* CChildMenuItem::menu() const
{
    return core() && is_editing() ? core()->selection().current_menu : nullptr;
}

CDXUTMenuItem* CChildMenuItem::item() const
{
    return menu() ? core()->selection().current_menu_item : nullptr;
}

void CChildMenuItem::refresh()
{
    CBoundPage::refresh();
    const CDXUTMenu* shown = menu();
    const int chosen = shown ? shown->index_of(item()) : -1;
    m_tree->show_menu(shown, chosen);
    m_picture->show_menu(core(), shown, chosen);
    update_buttons();
}

void CChildMenuItem::update_buttons()
{
    const CDXUTMenuItem* chosen = item();
    const bool separator = chosen && chosen->item_state().separator;
    button(id_add)->setEnabled(menu());
    button(id_add_separator)->setEnabled(menu());
    button(id_add_inside)->setEnabled(chosen && !separator);
    button(id_remove)->setEnabled(chosen);
    button(id_open_function)->setEnabled(chosen && !separator);
    for (const MoveButton& button : moves)
        this->button(button.id)->setEnabled(chosen && tarn::can_move(*chosen, button.move));
}

void CChildMenuItem::choose(int index)
{
    CDXUTMenu* const shown = menu();
    if (!shown)
        return;
    core()->selection().current_menu_item = shown->items().value(index);
    end_typing();
    refresh();
}

void CChildMenuItem::add(MenuPlace place, bool separator)
{
    CDXUTMenu* const shown = menu();
    if (!shown)
        return;
    const QString text = separator ? QString() : lang(u"新菜单项", u"New Item");
    CDXUTMenuItem* made = tarn::add_menu_item(*core(), *shown, item(), place, text, separator);
    if (!made)
        return tarn::boxes::error(this, lang(u"无法在此处添加菜单项。", u"No item can be added here."));
    core()->selection().current_menu_item = made;
    refresh();
    tell_changed();
    if (separator)
        return;
    auto* name = control_as<QLineEdit>(id_text);
    name->setFocus();
    name->selectAll();
}

void CChildMenuItem::remove()
{
    CDXUTMenuItem* const gone = item();
    if (!gone)
        return;
    CDXUTMenu& shown = *menu();
    const int first = shown.index_of(gone);
    scene()->RemoveMenuItem(gone);
    const int left = int(shown.items().size());
    core()->selection().current_menu_item = shown.items().value(std::min(first, left - 1));
    refresh();
    tell_changed();
}

void CChildMenuItem::move(MenuMove move)
{
    if (CDXUTMenuItem* moved = item()) {
        tarn::move_menu_item(*moved, move);
        refresh();
        tell_changed();
    }
}

void CChildMenuItem::drop(int index, tarn::MenuSpot spot)
{
    CDXUTMenu* const shown = menu();
    if (CDXUTMenuItem* moved = shown ? shown->items().value(index) : nullptr) {
        tarn::move_menu_item(*moved, spot);
        refresh();
        tell_changed();
    }
}

void CChildMenuItem::rename(int index, const QString& text)
{
    CDXUTMenu* const shown = menu();
    CDXUTMenuItem* const renamed = shown ? shown->items().value(index) : nullptr;
    if (!renamed)
        return;
    run_action([&] { renamed->set_text(text); }, lang(u"重命名菜单项", u"Rename Menu Item"));
    refresh();
    tell_changed();
}

/// An item without a function gets one of its own.
void CChildMenuItem::open_function()
{
    CDXUTMenuItem* const chosen = item();
    if (!chosen)
        return;
    QString name = chosen->item_state().function;
    if (name.isEmpty())
        name = QStringLiteral("MENU_ITEM_FUNC_%1").arg(chosen->id());
    CConfigScene& all = scene()->functions();
    if (!all.find_function(name)) {
        if (const tarn::Status added = all.add_function(IFunc::create_func(all, name), true); !added)
            return tarn::boxes::error(this, added.message());
    }
    if (chosen->set_function(name))
        tell_changed();
    const tarn::MenuItemState& state = chosen->item_state();
    CDlgCmdTest::do_modal(name, world(), this, -1,
                          {.first_line = QStringLiteral("local item, event, checked, opened_for = ...\n"),
                           .arguments = {chosen->shared_from_this(), tarn::Value(QStringLiteral("MenuItem")),
                                         state.checkable ? tarn::Value(state.checked) : tarn::Value(), tarn::Value()}});
    refresh();
}
