#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/gui_input.h"
#include "gui_core/menu_outline.h"
#include "gui_core/open_menu.h"
#include "support/gui_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class Menus : public GuiTest {
protected:
    void SetUp() override
    {
        m_menu = m_core.create_menu();
        m_journal.clear();
    }
    /// Lines such as ">Save": a '>' for each level; "-" is a separator.
    void fill(const QStringList& lines)
    {
        for (const QString& line : lines) {
            const int level = int(line.count(u'>'));
            m_core.create_menu_item(*m_menu, int(m_menu->items().size()),
                                    {.text = line.mid(level), .separator = line.endsWith(u'-'), .level = level});
        }
    }
    QStringList outline() const
    {
        QStringList lines;
        for (int i = 0; i < int(m_menu->items().size()); ++i)
            lines.append(QString(m_menu->levels()[std::size_t(i)], u'>') + m_menu->items()[i]->item_state().text);
        return lines;
    }
    CDXUTMenuItem* item(const QString& text) const
    {
        for (CDXUTMenuItem* item : m_menu->items())
            if (item->item_state().text == text)
                return item;
        ADD_FAILURE() << "no item " << text.toStdString();
        return nullptr;
    }
    CDXUTMenu* m_menu = nullptr;
};

/// A menu in an interface that runs.
class RunningMenu : public Menus {
protected:
    void SetUp() override
    {
        Menus::SetUp();
        fill({u"File"_s, u">New"_s, u">Recent"_s, u">>One"_s, u"-"_s, u"Off"_s, u"Grid"_s});
        (void)set(*item(u"Off"_s), "enabled", false);
        (void)set(*item(u"Grid"_s), "checkable", true);
        m_dialog = dialog({100, 100, 300, 200});
        m_button = button(m_dialog, {20, 20, 80, 30});
        m_core.set_screen_size({800, 600});
        m_core.EnableGui(false);
        m_core.on_event = nullptr;
    }
    /// The highlighted items from the outermost list on; "" where none is.
    QStringList way() const
    {
        QStringList texts;
        for (const OpenMenu::Panel& panel : m_core.open_menu()->panels())
            texts.append(
                panel.highlighted < 0
                    ? QString()
                    : m_menu->items()[panel.list.rows[std::size_t(panel.highlighted)].item]->item_state().text);
        return texts;
    }
    QPointF place_of(const QString& text) const
    {
        const int wanted = m_menu->index_of(item(text));
        for (const OpenMenu::Panel& panel : m_core.open_menu()->panels())
            for (int row = 0; row < int(panel.list.rows.size()); ++row)
                if (panel.list.rows[std::size_t(row)].item == wanted)
                    return panel.row_area(row).center();
        ADD_FAILURE() << text.toStdString() << " is not shown";
        return {};
    }
    void keys(std::initializer_list<int> pressed)
    {
        for (const int key : pressed)
            m_input.key_pressed(key, {});
    }
    void click(QPointF place)
    {
        m_input.mouse_moved(place);
        m_input.mouse_pressed(place);
        m_input.mouse_released(place);
    }

    CDXUTDialog* m_dialog = nullptr;
    CDXUTButton* m_button = nullptr;
    GuiInput m_input{m_core};
};

} // namespace

TEST_F(Menus, whatever_levels_a_file_gives_the_outline_has_no_holes)
{
    fill({u">>>a"_s, u">>>b"_s, u"-"_s, u">c"_s, u">>d"_s, u"e"_s});
    EXPECT_EQ(outline(), (QStringList{u"a"_s, u">b"_s, u"-"_s, u"c"_s, u">d"_s, u"e"_s})) << "none below a separator";
    EXPECT_EQ(m_menu->rows_of(-1), (std::vector{0, 2, 3, 5}));
    EXPECT_EQ(m_menu->opener_of(4), 3);
    EXPECT_FALSE(m_menu->opens_submenu(5));
}

TEST_F(Menus, an_item_moves_with_its_submenu_and_every_move_is_undone)
{
    fill({u"a"_s, u">b"_s, u">>c"_s, u">d"_s, u"-"_s, u"e"_s});
    m_journal.clear();
    const auto move = [&](const QString& text, MenuMove how) {
        const UserAction action(m_journal, u"move"_s);
        EXPECT_TRUE(can_move(*item(text), how)) << text.toStdString();
        move_menu_item(*item(text), how);
        return outline();
    };
    const QStringList start = outline();
    EXPECT_EQ(move(u"b"_s, MenuMove::Down), (QStringList{u"a"_s, u">d"_s, u">b"_s, u">>c"_s, u"-"_s, u"e"_s}));
    EXPECT_EQ(move(u"b"_s, MenuMove::In), (QStringList{u"a"_s, u">d"_s, u">>b"_s, u">>>c"_s, u"-"_s, u"e"_s}));
    EXPECT_EQ(move(u"b"_s, MenuMove::Out), (QStringList{u"a"_s, u">d"_s, u">b"_s, u">>c"_s, u"-"_s, u"e"_s}));
    EXPECT_EQ(move(u"d"_s, MenuMove::Out), (QStringList{u"a"_s, u">b"_s, u">>c"_s, u"d"_s, u"-"_s, u"e"_s}))
        << "those behind it stay in their submenu";
    EXPECT_EQ(move(u"e"_s, MenuMove::Up), (QStringList{u"a"_s, u">b"_s, u">>c"_s, u"d"_s, u"e"_s, u"-"_s}));
    EXPECT_EQ(move(u"a"_s, MenuMove::Down), (QStringList{u"d"_s, u"a"_s, u">b"_s, u">>c"_s, u"e"_s, u"-"_s}));
    for (const auto& [text, how] : {std::pair{u"d"_s, MenuMove::Up}, std::pair{u"-"_s, MenuMove::Down},
                                    std::pair{u"b"_s, MenuMove::In}, std::pair{u"e"_s, MenuMove::Out}})
        EXPECT_FALSE(can_move(*item(text), how)) << text.toStdString();
    while (m_journal.undo()) {}
    EXPECT_EQ(outline(), start);
}

TEST_F(Menus, a_dragged_item_takes_its_submenu_anywhere_but_into_itself)
{
    fill({u"A"_s, u"B"_s, u">C"_s, u">>D"_s, u"E"_s});
    m_journal.clear();
    const QStringList before = outline();
    const auto drop = [&](const QString& text, MenuSpot spot) {
        const UserAction action(m_journal, u"drop"_s);
        move_menu_item(*item(text), spot);
    };
    drop(u"B"_s, {3, 2});
    EXPECT_EQ(outline(), before) << "into itself";
    drop(u"C"_s, {0, 0});
    EXPECT_EQ(outline(), (QStringList{u"C"_s, u">D"_s, u"A"_s, u"B"_s, u"E"_s}));
    drop(u"C"_s, {4, 1});
    EXPECT_EQ(outline(), (QStringList{u"A"_s, u"B"_s, u">C"_s, u">>D"_s, u"E"_s}));
    drop(u"E"_s, {1, 1});
    EXPECT_EQ(outline(), (QStringList{u"A"_s, u">E"_s, u"B"_s, u">C"_s, u">>D"_s}));
    EXPECT_EQ(m_journal.step_count(), 3u);
    drop(u"B"_s, {2, MenuItemState::deepest_level - 1});
    EXPECT_EQ(outline().size(), 5);
    EXPECT_EQ(m_menu->items()[2]->item_state().level, 0) << "its submenu would have no room";
    while (m_journal.undo()) {}
    EXPECT_EQ(outline(), before);
}

TEST_F(Menus, are_named_with_the_smallest_number_that_is_free)
{
    EXPECT_EQ(m_menu->name(), u"Menu1"_s);
    CDXUTMenu* second = m_core.create_menu();
    EXPECT_EQ(second->name(), u"Menu2"_s);
    m_core.remove_menu(m_menu);
    EXPECT_EQ(m_core.create_menu()->name(), u"Menu1"_s);
}

TEST_F(Menus, items_are_added_behind_submenus_not_below_separators_and_not_too_deep)
{
    fill({u"a"_s, u">b"_s, u"-"_s});
    EXPECT_TRUE(add_menu_item(m_core, *m_menu, item(u"a"_s), MenuPlace::Behind, u"c"_s));
    EXPECT_TRUE(add_menu_item(m_core, *m_menu, item(u"a"_s), MenuPlace::Inside, u"d"_s));
    EXPECT_FALSE(add_menu_item(m_core, *m_menu, item(u"-"_s), MenuPlace::Inside, u"x"_s));
    EXPECT_TRUE(add_menu_item(m_core, *m_menu, nullptr, MenuPlace::Inside, u"e"_s));
    EXPECT_EQ(outline(), (QStringList{u"a"_s, u">b"_s, u">d"_s, u"c"_s, u"-"_s, u"e"_s}));
    CDXUTMenuItem* deepest = item(u"e"_s);
    int made = 0;
    while (CDXUTMenuItem* next = add_menu_item(m_core, *m_menu, deepest, MenuPlace::Inside, u"f"_s)) {
        deepest = next;
        ++made;
    }
    EXPECT_EQ(made, MenuItemState::deepest_level);
    m_core.remove_menu_item(item(u"e"_s));
    m_core.remove_menu_item(item(u"a"_s));
    EXPECT_EQ(outline(), (QStringList{u"c"_s, u"-"_s})) << "submenus go along";
}

TEST_F(Menus, the_current_menu_and_item_go_with_what_is_removed)
{
    fill({u"a"_s});
    SelectionRecord& selection = m_core.selection();
    EXPECT_EQ(selection.current_menu, m_menu) << "a new menu is the current one";
    selection.current_menu_item = item(u"a"_s);
    m_core.remove_menu_item(item(u"a"_s));
    EXPECT_EQ(m_core.selection().current_menu_item, nullptr);
    m_core.remove_menu(m_menu);
    m_core.remove_menu(nullptr);
    EXPECT_EQ(m_core.selection().current_menu, nullptr);
    EXPECT_TRUE(m_core.GetMenus().isEmpty());
    ASSERT_TRUE(m_journal.undo());
    EXPECT_EQ(m_core.GetMenus(), QList<CDXUTMenu*>{m_menu});
}

TEST_F(Menus, of_two_widths_that_crossed_the_one_written_last_stays_and_marks_need_a_box)
{
    (void)set(*m_menu, "max_width", qint64(100));
    EXPECT_EQ(m_menu->menu_state().min_width, 100);
    (void)set(*m_menu, "min_width", qint64(300));
    EXPECT_EQ(m_menu->menu_state().max_width, 300);
    fill({u"a"_s});
    (void)set(*item(u"a"_s), "checked", true);
    EXPECT_FALSE(item(u"a"_s)->item_state().checked);
}

TEST_F(RunningMenu, stays_on_the_screen_wherever_it_opens)
{
    for (const QPointF& place : {QPointF(10, 10), QPointF(795, 10), QPointF(10, 595), QPointF(799, 599)}) {
        m_core.pop_menu(*m_menu, place);
        keys({Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Right});
        ASSERT_EQ(m_core.open_menu()->panels().size(), 3u);
        for (const OpenMenu::Panel& panel : m_core.open_menu()->panels())
            EXPECT_TRUE(QRectF(0, 0, 800, 600).contains(panel.area)) << place.x() << ' ' << place.y();
    }
    m_core.pop_menu(*m_menu, {50, 60});
    EXPECT_EQ(m_core.open_menu()->panels().front().area.topLeft(), QPointF(50, 60))
        << "at the mouse where there is room";
}

TEST_F(RunningMenu, that_is_higher_than_the_screen_scrolls)
{
    for (int i = 0; i < 40; ++i)
        fill({u"row %1"_s.arg(i)});
    m_core.pop_menu(*m_menu, {10, 300});
    const auto panel = [this]() -> const OpenMenu::Panel& { return m_core.open_menu()->panels().front(); };
    ASSERT_TRUE(panel().can_scroll());
    EXPECT_EQ(panel().area.height(), 600);
    m_input.wheel_turned({20, 300}, -1000);
    EXPECT_NEAR(panel().scrolled + panel().area.height(), panel().list.size.height(), 0.01);
    keys({Qt::Key_Home});
    EXPECT_EQ(panel().scrolled, 0) << "the keyboard shows what it chooses";
    keys({Qt::Key_End});
    EXPECT_EQ(way(), QStringList{u"row 39"_s});
    EXPECT_TRUE(panel().area.contains(place_of(u"row 39"_s)));
}

TEST_F(RunningMenu, is_walked_by_the_keyboard_past_what_cannot_be_chosen)
{
    m_core.pop_menu(*m_menu, {10, 10});
    keys({Qt::Key_Down});
    EXPECT_EQ(way(), QStringList{u"File"_s});
    keys({Qt::Key_Down});
    EXPECT_EQ(way(), QStringList{u"Grid"_s}) << "no separator, nothing disabled";
    keys({Qt::Key_Down, Qt::Key_Right});
    EXPECT_EQ(way(), (QStringList{u"File"_s, u"New"_s})) << "around the end, and into the submenu";
    keys({Qt::Key_Left, Qt::Key_Escape});
    EXPECT_EQ(m_core.open_menu(), nullptr);

    m_core.pop_menu(*m_menu, {10, 10});
    m_input.text_typed(u"g"_s, {});
    EXPECT_EQ(way(), QStringList{u"Grid"_s});
    keys({Qt::Key_Return});
    EXPECT_EQ(m_core.open_menu(), nullptr);
    EXPECT_TRUE(item(u"Grid"_s)->item_state().checked);
}

TEST_F(RunningMenu, is_walked_by_the_mouse_which_may_cross_rows_on_its_way_to_a_submenu)
{
    m_core.pop_menu(*m_menu, {10, 10});
    m_input.mouse_moved(place_of(u"File"_s));
    ASSERT_EQ(way(), (QStringList{u"File"_s, QString()}));
    const QPointF on_the_way(m_core.open_menu()->panels()[0].area.right() - 4, place_of(u"File"_s).y() + 10);
    m_input.mouse_moved(on_the_way);
    EXPECT_EQ(way().front(), u"File"_s);
    m_input.mouse_moved(place_of(u"Recent"_s));
    EXPECT_EQ(way(), (QStringList{u"File"_s, u"Recent"_s, QString()}));
    m_input.mouse_moved(place_of(u"Grid"_s));
    EXPECT_EQ(way(), QStringList{u"Grid"_s}) << "another row closes the submenu";

    click(place_of(u"Off"_s));
    EXPECT_NE(m_core.open_menu(), nullptr) << "a disabled item does nothing";
    click({700, 500});
    EXPECT_EQ(m_core.open_menu(), nullptr) << "a click beside it closes the menu";
    EXPECT_EQ(m_core.live().pressed, nullptr) << "and does nothing else";
}

TEST_F(RunningMenu, opens_for_what_is_under_the_right_click)
{
    EXPECT_FALSE(m_input.right_clicked({130, 150})) << "nothing is bound";
    CDXUTMenu* other = m_core.create_menu();
    m_core.create_menu_item(*other, 0, {.text = u"x"_s});
    (void)set(*m_dialog, "right_click_menu", ObjectRef{other->id()});
    (void)set(*m_button, "right_click_menu", ObjectRef{m_menu->id()});
    const QPointF on_button = m_button->screen_rect().center();
    const auto opened = [&](QPointF place) -> CDXUTMenu* {
        m_core.close_menu();
        (void)m_input.right_clicked(place);
        return m_core.open_menu() ? &m_core.open_menu()->menu() : nullptr;
    };
    EXPECT_EQ(opened(on_button), m_menu);
    EXPECT_EQ(m_core.open_menu()->owner().get(), m_button);
    EXPECT_EQ(opened({300, 300}), other);
    EXPECT_EQ(opened({700, 500}), nullptr) << "the screen has none";
    (void)set(*m_button, "enabled", false);
    EXPECT_EQ(opened(on_button), other) << "a disabled control leaves it to its dialog";
    (void)set(*m_core.GetRootDialog(), "right_click_menu", ObjectRef{m_menu->id()});
    EXPECT_EQ(opened({700, 500}), m_menu);
    m_core.remove_menu(m_menu);
    EXPECT_EQ(m_core.open_menu(), nullptr) << "an open menu goes with its removal";
    EXPECT_EQ(opened({700, 500}), nullptr);
}

TEST_F(RunningMenu, of_a_button_opens_after_its_click_and_not_when_the_button_went)
{
    (void)set(*m_button, "click_menu", ObjectRef{m_menu->id()});
    QList<GuiEventType> raised;
    std::vector<GuiEvent> asked;
    m_core.on_event = [&](const GuiEvent& event) {
        raised.append(event.type);
        if (event.type == EVENT_MENU_OPENS)
            asked.push_back(event);
    };
    click(m_button->screen_rect().center());
    EXPECT_EQ(raised.mid(raised.size() - 2), (QList<GuiEventType>{EVENT_BUTTON_CLICKED, EVENT_MENU_OPENS}));
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(m_core.open_menu(), nullptr) << "whoever hears it opens the menu";
    m_core.open_bound_menu(*m_button, asked[0].menu_field, asked[0].place);
    ASSERT_NE(m_core.open_menu(), nullptr);
    EXPECT_EQ(m_core.open_menu()->panels()[0].area.topLeft(), m_button->screen_rect().center());
    m_core.close_menu();
    m_dialog->SetVisible(false);
    m_core.open_bound_menu(*m_button, asked[0].menu_field, asked[0].place);
    EXPECT_EQ(m_core.open_menu(), nullptr);
}

TEST_F(RunningMenu, follows_what_changes_in_it_while_it_is_open)
{
    m_core.pop_menu(*m_menu, {10, 10});
    keys({Qt::Key_Down, Qt::Key_Right});
    const double width = m_core.open_menu()->panels()[1].area.width();
    item(u"New"_s)->set_text(QString(60, u'W'));
    EXPECT_GT(m_core.open_menu()->panels()[1].area.width(), width);
    EXPECT_EQ(way().size(), 2) << "the submenu stays open";
    m_core.remove_menu_item(item(u"File"_s));
    EXPECT_EQ(m_core.open_menu()->panels().size(), 1u);
    m_core.EnableGui(true);
    EXPECT_EQ(m_core.open_menu(), nullptr) << "none is open while the interface is edited";
}
