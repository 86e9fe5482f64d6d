#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "page_base/dlg_menu_pick.h"
#include "page_base/menu_picture.h"
#include "props/menu_tree.h"
#include "script/config_scene.h"
#include "support/editor_fixture.h"
#include "support/gui_fixture.h"
#include "widgets/button_st.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

class MenuPage : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_menu = core().create_menu();
        m_page = page(u"CChildMenuItem"_s);
        m_tree = static_cast<CMenuTree*>(m_page->control(6811));
        m_frame.resize(700, 1400);
        core().selection().menu_editing = true;
        m_frame.show();
        m_world.broadcast(ui_selection_changed);
        m_codes.clear();
    }
    void click(int id) { static_cast<QAbstractButton*>(m_page->control(id))->click(); }
    static bool enabled(const CChildDlg& page, int id) { return page.control(id)->isEnabledTo(&page); }
    QStringList outline()
    {
        QStringList lines;
        for (int i = 0; i < int(m_menu->items().size()); ++i)
            lines.append(QString(m_menu->levels()[std::size_t(i)], u'>') + m_menu->items()[i]->item_state().text);
        return lines;
    }
    /// Types over the text of the current row.
    void rename(const QString& text)
    {
        m_tree->edit_current();
        const auto editors = m_tree->viewport()->findChildren<QLineEdit*>();
        auto* editor = editors.isEmpty() ? nullptr : editors.last();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // The view takes it over later.
    }

    CDXUTMenu* m_menu = nullptr;
    CChildDlg* m_page = nullptr;
    CMenuTree* m_tree = nullptr;
};

} // namespace

TEST_F(MenuPage, a_tree_is_made_renamed_and_moved_and_all_of_it_is_undone)
{
    m_scene->journal().clear();
    click(6812);
    rename(u"File"_s);
    click(6813);
    rename(u"Open"_s);
    click(6814);
    click(6812);
    rename(u"Quit"_s);
    EXPECT_EQ(outline(), (QStringList{u"File"_s, u">Open"_s, u">"_s, u">Quit"_s}));
    EXPECT_FALSE(enabled(*m_page, 6817) || enabled(*m_page, 6818)) << "no further down, and not into a separator";
    click(6819);
    EXPECT_EQ(outline().last(), u"Quit"_s);
    click(6816);
    EXPECT_EQ(outline(), (QStringList{u"Quit"_s, u"File"_s, u">Open"_s, u">"_s}));
    m_tree->setCurrentItem(m_tree->topLevelItem(1));
    QTest::keyClick(m_tree, Qt::Key_Delete);
    EXPECT_EQ(outline(), QStringList{u"Quit"_s}) << "with its submenu";
    EXPECT_EQ(m_tree->topLevelItemCount(), 1);
    EXPECT_EQ(m_scene->journal().step_count(), 10u);
    while (m_scene->journal().undo()) {}
    m_world.broadcast(ui_full_refresh);
    EXPECT_TRUE(outline().isEmpty());
    EXPECT_EQ(m_tree->topLevelItemCount(), 0);
}

TEST_F(MenuPage, the_name_follows_what_is_typed_and_is_told_as_a_property)
{
    auto* name = static_cast<QLineEdit*>(page(u"CDlgPropMenu"_s)->control(6396));
    ASSERT_TRUE(name->isEnabled());
    EXPECT_EQ(name->text(), m_menu->name());
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, u"Pause"_s);
    EXPECT_EQ(m_menu->name(), u"Pause"_s);
    EXPECT_EQ(m_codes.back(), ui_control_properties);
    core().selection().select(nullptr);
    m_world.broadcast(ui_selection_changed);
    EXPECT_FALSE(name->isEnabled());
    EXPECT_FALSE(enabled(*m_page, 6812));
}

TEST_F(MenuPage, a_click_in_the_live_picture_chooses_the_item)
{
    click(6812);
    click(6812);
    auto* picture = static_cast<CMenuPicture*>(m_page->control(6810));
    Q_EMIT picture->item_clicked(0);
    EXPECT_EQ(core().selection().current_menu_item, m_menu->items().front());
    EXPECT_EQ(m_tree->currentItem(), m_tree->topLevelItem(0));
    const QImage before = picture->grab().toImage();
    rename(u"Something else"_s);
    EXPECT_NE(picture->grab().toImage(), before);
}

TEST_F(MenuPage, the_live_picture_has_room_for_its_submenus_before_they_are_opened)
{
    for (int id : {6812, 6812, 6812, 6812, 6812, 6813})
        click(id);
    auto* picture = static_cast<CMenuPicture*>(m_page->control(6810));
    const auto shown = [&](int item) {
        Q_EMIT picture->item_clicked(item);
        for (int round = 0; round < 5; ++round)
            QCoreApplication::processEvents(); // The page gives it the room that it wants, step by step.
        return picture->grab().toImage();
    };
    (void)shown(5);
    const QImage closed = shown(-1);
    const QSize size = picture->sizeHint();
    const QImage open = shown(5);
    EXPECT_NE(open, closed);
    EXPECT_EQ(picture->sizeHint(), size);
    const QRect above(0, 0, picture->width(), picture->height() / 2);
    EXPECT_EQ(open.copy(above), closed.copy(above)) << "the rows above the opened one stay where they are";
}

TEST_F(MenuPage, an_item_gets_a_function_of_its_own_or_keeps_the_one_it_has)
{
    click(6812);
    m_answers.dialogs.push_back([](QDialog& dialog) { dialog.reject(); });
    click(6828);
    const QString name = m_menu->items().front()->item_state().function;
    EXPECT_FALSE(name.isEmpty());
    EXPECT_TRUE(m_scene->functions().find_function(name));
    m_answers.dialogs.push_back([](QDialog& dialog) { dialog.reject(); });
    click(6828);
    EXPECT_EQ(m_scene->functions().functions().size(), 1u);
}

TEST_F(MenuPage, pictures_of_the_look_are_kept_by_name_and_leave_the_scene_with_it)
{
    CChildDlg* design = page(u"CChildMenuDesign"_s);
    QTemporaryDir folder;
    QFile file(folder.filePath(u"back.png"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(png(Qt::blue));
    file.close();
    m_answers.files.push_back(file.fileName());
    static_cast<QAbstractButton*>(design->control(6854))->click();
    EXPECT_EQ(m_menu->menu_state().style_images, (TextMap{{u"Background.normal"_s, u"back.png"_s}}));
    EXPECT_EQ(core().texture_names(), QStringList{u"back.png"_s});
    EXPECT_FALSE(enabled(*design, 6858)) << "the other picture is not chosen";
    static_cast<QAbstractButton*>(design->control(6855))->click();
    EXPECT_TRUE(m_menu->menu_state().style_images.isEmpty() && core().texture_names().isEmpty());
}

TEST_F(MenuPage, controls_and_dialogs_are_bound_to_menus_that_are_picked)
{
    CDXUTDialog* home = core().create_dialog({0, 0, 300, 200});
    CDXUTControl* button = core().create_control(DXUT_CONTROL_BUTTON, home, {10, 10, 80, 30});
    CDXUTControl* text = core().create_control(DXUT_CONTROL_STATIC, home, {10, 50, 80, 30});
    core().selection().menu_editing = false;
    const auto pick = [this](int row) {
        m_answers.dialogs.push_back([row](QDialog& dialog) {
            dialog.findChild<QListWidget*>()->setCurrentRow(row);
            dialog.accept();
        });
    };
    const auto press = [](CChildDlg* page, int id) { static_cast<QAbstractButton*>(page->control(id))->click(); };
    const ObjectRef bound{m_menu->id()};

    CChildDlg* of_controls = page(u"CChildCtrlMenu"_s);
    core().SelectControls({button, text});
    m_world.broadcast(ui_selection_changed);
    EXPECT_FALSE(enabled(*of_controls, 6873)) << "a text has no click";
    pick(1);
    press(of_controls, 6871);
    EXPECT_TRUE(get(*text, "right_click_menu") == Value(bound) && get(*button, "right_click_menu") == Value(bound));
    press(of_controls, 6872);
    EXPECT_TRUE(get(*button, "right_click_menu") == Value(ObjectRef()));
    core().SelectControl(button, false);
    m_world.broadcast(ui_selection_changed);
    pick(1);
    press(of_controls, 6873);
    EXPECT_TRUE(get(*button, "click_menu") == Value(bound));
    EXPECT_EQ(static_cast<QAbstractButton*>(of_controls->control(6873))->text(), m_menu->name());
    pick(0);
    press(of_controls, 6873);
    EXPECT_TRUE(get(*button, "click_menu") == Value(ObjectRef())) << "the first row is no menu";

    CChildDlg* of_dialogs = page(u"CChildDialogMenu"_s);
    core().SelectDialog(home, false);
    m_world.broadcast(ui_selection_changed);
    pick(1);
    press(of_dialogs, 6871);
    EXPECT_TRUE(get(*home, "right_click_menu") == Value(bound));
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(get(*home, "right_click_menu") == Value(ObjectRef()));
}

} // namespace tarn::test
