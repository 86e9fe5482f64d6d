#include "gui_core/dxut_items.h"
#include "gui_core/dxut_scroll_bar.h"
#include "gui_core/dxut_slider.h"
#include "support/editor_fixture.h"
#include "support/gui_fixture.h"
#include "widgets/super_edit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

namespace tarn::test {

namespace {

enum Id : int {
    id_min = 6380,
    id_max = 6358,
    id_value = 6381,
    id_item = 6395,
    id_combo_list = 6538,
    id_insert = 6540,
    id_delete = 6120,
    id_list = 6387,
    id_add = 6390,
    id_remove = 6392,
    id_up = 6893,
    id_down = 6894,
    id_paste = 6895,
};

class ValuePages : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_home = core().create_dialog({0, 0, 400, 300});
        m_frame.show();
        m_frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_frame));
    }
    template <class Control>
    Control* make(int type)
    {
        return static_cast<Control*>(core().create_control(type, m_home, {0, 0, 80, 24}));
    }
    /// The last one is current.
    void select(const QString& page_name, std::initializer_list<CDXUTControl*> controls)
    {
        core().ClearCtrlSelection();
        for (CDXUTControl* control : controls)
            core().SelectControl(control, true);
        m_world.broadcast(ui_selection_changed);
        m_page = page(page_name);
        m_scene->journal().clear();
    }
    template <class Widget>
    Widget& at(int id)
    {
        return *qobject_cast<Widget*>(m_page->control(id));
    }
    void type(int id, const QString& number)
    {
        auto& edit = at<CSuperEdit>(id);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, number);
        QTest::keyClick(&edit, Qt::Key_Return);
    }
    void click(int id) { at<QAbstractButton>(id).click(); }
    std::size_t steps() { return m_scene->journal().step_count(); }

    CDXUTDialog* m_home = nullptr;
    CChildDlg* m_page = nullptr;
};

} // namespace

TEST_F(ValuePages, a_sliders_ends_push_its_value_and_narrow_what_can_be_typed)
{
    auto* first = make<CDXUTSlider>(DXUT_CONTROL_SLIDER);
    auto* slider = make<CDXUTSlider>(DXUT_CONTROL_SLIDER);
    select(u"CDlgPropSlider"_s, {first, slider});
    type(id_max, u"10"_s);
    type(id_value, u"5"_s);
    type(id_min, u"7"_s);
    for (const CDXUTSlider* each : {first, slider})
        EXPECT_EQ((QList<int>{each->min(), each->value(), each->max()}), (QList<int>{7, 7, 10}));
    EXPECT_EQ(at<CSuperEdit>(id_value).get_min(), 7);
    EXPECT_EQ(at<CSuperEdit>(id_value).get_max(), 10);
    type(id_min, u"10"_s);
    EXPECT_EQ(at<CSuperEdit>(id_value).get_min(), 1) << "without room the range from before, when 1 was typed";

    ASSERT_TRUE(set(*slider, "min", qint64(3)));
    m_page->control(id_min)->clearFocus();
    const std::size_t before = steps();
    m_world.broadcast(ui_full_refresh);
    EXPECT_EQ(at<CSuperEdit>(id_min).get_pos(), 3);
    EXPECT_EQ(first->min(), 10) << "a refresh changes nothing";
    EXPECT_EQ(steps(), before);
}

TEST_F(ValuePages, only_the_current_scroll_bar_changes)
{
    auto* first = make<CDXUTScrollBar>(DXUT_CONTROL_SCROLLBAR);
    auto* current = make<CDXUTScrollBar>(DXUT_CONTROL_SCROLLBAR);
    select(u"CDlgPropScrollbar"_s, {first, current});
    type(id_max, u"40"_s);
    type(id_value, u"30"_s);
    EXPECT_EQ(current->max(), 40);
    EXPECT_EQ(current->position(), 30);
    EXPECT_EQ(first->max(), 100);
    EXPECT_EQ(first->position(), 0);
}

TEST_F(ValuePages, new_items_of_combo_boxes_are_numbered_through_and_chosen_those_of_list_boxes_are_not)
{
    auto* one = make<CDXUTItems>(DXUT_CONTROL_COMBOBOX);
    auto* other = make<CDXUTItems>(DXUT_CONTROL_COMBOBOX);
    select(u"CDlgPropCombo"_s, {one});
    click(id_insert);
    EXPECT_EQ(one->GetSelectedIndex(), 0);
    EXPECT_EQ(steps(), 1u) << "the item and that it is chosen";
    EXPECT_EQ(at<QLineEdit>(id_item).selectedText(), one->GetItem(0));
    const int number = one->GetItem(0).mid(7).toInt();
    EXPECT_EQ(one->GetItem(0), u"NewItem%1"_s.arg(number));
    select(u"CDlgPropCombo"_s, {other});
    click(id_insert);
    EXPECT_EQ(other->items(), QStringList{u"NewItem%1"_s.arg(number + 1)});

    auto* list = make<CDXUTItems>(DXUT_CONTROL_LISTBOX);
    select(u"CDlgPropListBox"_s, {list});
    for (int i = 0; i < 3; ++i)
        click(id_add);
    EXPECT_EQ(list->items(), (QStringList{u"New Item"_s, u"New Item"_s, u"New Item"_s}));
    EXPECT_EQ(list->GetSelectedIndex(), 2);
    EXPECT_EQ(at<QLineEdit>(id_item).maxLength(), 254);
}

TEST_F(ValuePages, an_item_is_renamed_in_one_step_with_the_caret_where_it_was)
{
    auto* combo = make<CDXUTItems>(DXUT_CONTROL_COMBOBOX);
    combo->AddItem(u"low"_s);
    combo->AddItem(u"high"_s);
    select(u"CDlgPropCombo"_s, {combo});
    at<QListWidget>(id_combo_list).setCurrentRow(1);
    EXPECT_EQ(combo->GetSelectedIndex(), 1) << "the list chooses for the control";
    auto& edit = at<QLineEdit>(id_item);
    EXPECT_TRUE(edit.hasFocus());
    EXPECT_EQ(edit.selectedText(), u"high"_s);
    m_scene->journal().clear();
    edit.setCursorPosition(2);
    QTest::keyClicks(&edit, u"abc"_s);
    EXPECT_EQ(combo->items(), (QStringList{u"low"_s, u"hiabcgh"_s}));
    EXPECT_EQ(edit.cursorPosition(), 5);
    EXPECT_EQ(steps(), 1u);
    EXPECT_EQ(at<QListWidget>(id_combo_list).item(1)->text(), u"hiabcgh"_s);
    ASSERT_TRUE(m_scene->journal().undo());
    m_world.broadcast(ui_full_refresh);
    EXPECT_EQ(edit.text(), u"high"_s);
    EXPECT_EQ(edit.maxLength(), 255);
}

TEST_F(ValuePages, items_are_moved_removed_and_pasted_as_lines_with_the_choice_going_along)
{
    auto* list = make<CDXUTItems>(DXUT_CONTROL_LISTBOX);
    for (const QString& item : {u"a"_s, u"b"_s, u"c"_s})
        list->AddItem(item);
    select(u"CDlgPropListBox"_s, {list});
    EXPECT_FALSE(m_page->control(id_remove)->isEnabled()) << "nothing is chosen";
    at<QListWidget>(id_list).setCurrentRow(2);
    m_scene->journal().clear();
    click(id_up);
    EXPECT_EQ(list->items().join(u""_s), u"acb"_s);
    EXPECT_EQ(list->GetSelectedItem(), u"c"_s);
    click(id_up);
    EXPECT_FALSE(m_page->control(id_up)->isEnabled());
    click(id_down);
    EXPECT_EQ(list->items().join(u""_s), u"acb"_s);
    QApplication::clipboard()->setText(u"x\r\n\ny\n"_s);
    click(id_paste);
    EXPECT_EQ(list->items().join(u""_s), u"acxyb"_s);
    EXPECT_EQ(list->GetSelectedItem(), u"y"_s);
    click(id_remove);
    EXPECT_EQ(list->GetSelectedItem(), u"b"_s) << "the one that took its place";
    click(id_remove);
    EXPECT_EQ(list->GetSelectedItem(), u"x"_s);
    EXPECT_EQ(steps(), 6u);
    while (m_scene->journal().undo()) {}
    EXPECT_EQ(list->items().join(u""_s), u"abc"_s);
}

} // namespace tarn::test
