#include "gui_core/dxut_menu.h"
#include "manager/report_list_menu.h"
#include "support/attributes.h"
#include "support/editor_fixture.h"
#include "widgets/button_st.h"

#include <QLineEdit>
#include <QTest>

namespace tarn::test {

namespace {

class MenuList : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_page = page(u"CDlgGuiMenu"_s);
        m_list = static_cast<CReportListMenu*>(m_page->control(6098));
    }
    void click(int id) { static_cast<QAbstractButton*>(m_page->control(id))->click(); }
    QStringList names() const
    {
        QStringList list;
        for (int row = 0; row < m_list->row_count(); ++row)
            list.append(m_list->item_caption(row, 0));
        return list;
    }
    CDXUTMenu* current() { return core().selection().current_menu; }

    CChildDlg* m_page = nullptr;
    CReportListMenu* m_list = nullptr;
};

} // namespace

TEST_F(MenuList, a_new_menu_is_current_and_selected_and_told_as_a_selection)
{
    m_answers.texts.clear();
    click(6099);
    click(6099);
    ASSERT_EQ(core().GetMenus().size(), 2);
    EXPECT_EQ(current(), core().GetMenus().last());
    EXPECT_EQ(m_list->menu(m_list->get_last_sel_index()), current());
    EXPECT_EQ(m_codes, (std::vector<int>{ui_selection_changed, ui_selection_changed}));
    EXPECT_EQ(names().size(), 2);
    EXPECT_EQ(m_scene->journal().step_count(), 2u);
}

TEST_F(MenuList, deleting_asks_and_broadcasts_nothing_and_does_nothing_without_a_row)
{
    auto* remove = static_cast<QAbstractButton*>(m_page->control(6317));
    EXPECT_TRUE(remove->isEnabled()) << "also without a row";
    click(6317);
    EXPECT_TRUE(m_codes.empty() && m_scene->journal().step_count() == 0);
    click(6099);
    m_codes.clear();
    click(6317);
    EXPECT_TRUE(core().GetMenus().isEmpty() && names().isEmpty());
    EXPECT_TRUE(m_codes.empty());
    EXPECT_TRUE(m_answers.texts.isEmpty());
    EXPECT_EQ(current(), nullptr);
    ASSERT_TRUE(m_scene->journal().undo());
    m_world.broadcast(ui_full_refresh);
    EXPECT_EQ(names().size(), 1);
}

TEST_F(MenuList, a_click_beside_the_rows_leaves_no_current_menu_and_is_told)
{
    click(6099);
    m_codes.clear();
    m_side.resize(400, 600);
    m_side.show();
    m_list->selecte_item_by_ptr_binded(nullptr);
    Q_EMIT m_list->item_clicked(-1, -1);
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(m_codes, std::vector{int(ui_selection_changed)});
}

TEST_F(MenuList, names_follow_the_codes_of_properties_and_selection)
{
    click(6099);
    for (const int code : {int(ui_control_properties), int(ui_selection_changed)}) {
        (void)set(*current(), "name", u"code %1"_s.arg(code));
        m_world.broadcast(code);
        EXPECT_EQ(names(), QStringList{u"code %1"_s.arg(code)});
    }
}

TEST_F(MenuList, nothing_is_made_or_deleted_while_the_interface_runs)
{
    click(6099);
    m_scene->play(true);
    click(6099);
    click(6317);
    EXPECT_EQ(core().GetMenus().size(), 1);
    m_scene->play(false);
}

TEST_F(MenuList, f2_renames_the_selected_menu_in_one_step)
{
    click(6099);
    click(6099);
    const QString before = current()->name();
    QTest::keyClick(m_list, Qt::Key_F2);
    auto* field = m_list->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    field->setText(u"Pause"_s);
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_EQ(current()->name(), u"Pause"_s);
    EXPECT_EQ(names().last(), u"Pause"_s);
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(current()->name(), before);
}

} // namespace tarn::test
