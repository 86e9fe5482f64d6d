#include "control_list_fixture.h"

namespace tarn::test {

TEST_F(ControlList, a_right_click_selects_its_row_unless_it_is_selected_and_opens_a_menu)
{
    add(0, 4);
    tell(ui_scene_changed);
    const auto all = listed();
    const auto right_click = [&](int row, int command) {
        const QPoint place = list().visualRect(list().model()->index(row, 2)).center();
        m_answers.commands = {command};
        QTest::mouseClick(list().viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list().viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list().viewport(), &event);
    };
    click_rows({0, 1});
    right_click(0, 0);
    EXPECT_EQ(core().selection().controls.size(), 2u);
    EXPECT_EQ(core().selection().current_control, all[0]);
    right_click(3, 0);
    EXPECT_EQ(core().selection().controls, std::vector{all[3]});
    EXPECT_TRUE(all[3]->GetVisible());
    const QStringList found = m_answers.texts.filter(u"删除"_s);
    ASSERT_FALSE(found.isEmpty());
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    right_click(3, found.first().section(u' ', 0, 0).toInt());
    EXPECT_EQ(list().row_count(), 4);
    right_click(3, found.first().section(u' ', 0, 0).toInt());
    EXPECT_EQ(list().row_count(), 3);
    EXPECT_EQ(m_answers.texts.last(), u"你正在删除你的控件!"_s) << "as the button asks";
    EXPECT_EQ(m_answers.titles.last(), u"删除 “Button4”"_s);
}

TEST_F(ControlList, the_menu_of_a_hidden_control_shows_or_deletes_it_and_that_of_a_locked_one_does_neither)
{
    add(0, 3);
    tell(ui_scene_changed);
    const auto all = listed();
    const auto choose = [&](int row, const QString& command) {
        const QPoint place = list().visualRect(list().model()->index(row, 0)).center();
        QTest::mouseClick(list().viewport(), Qt::RightButton, {}, place);
        m_answers.texts.clear();
        const auto open = [&](int chosen) {
            m_answers.commands = {chosen};
            QContextMenuEvent event(QContextMenuEvent::Mouse, place, list().viewport()->mapToGlobal(place));
            QCoreApplication::sendEvent(list().viewport(), &event);
        };
        open(0);
        const QStringList found = m_answers.texts.filter(command);
        open(found.isEmpty() ? 0 : found.first().section(u' ', 0, 0).toInt());
        return !found.isEmpty();
    };
    for (const int row : {0, 1})
        EXPECT_TRUE(choose(row, u"隐藏"_s));
    EXPECT_EQ(all[0]->GetVisible() || all[1]->GetVisible(), false);
    EXPECT_FALSE(choose(1, u"隐藏"_s)) << "it is hidden";
    EXPECT_TRUE(choose(1, u"显示"_s));
    EXPECT_TRUE(all[1]->GetVisible());
    for (const bool both : {false, true}) {
        EXPECT_TRUE(m_scene->journal().undo());
        EXPECT_EQ(all[1]->GetVisible(), both) << "each was a step of its own";
        EXPECT_FALSE(all[0]->GetVisible());
    }
    m_answers.buttons = {boxes::Button::Ok};
    EXPECT_TRUE(choose(0, u"删除"_s));
    EXPECT_EQ(m_answers.titles.last(), u"删除 “Button1”"_s);
    EXPECT_EQ(listed(), (std::vector{all[1], all[2]}));

    all[2]->SetVisible(false);
    all[2]->set_locked(true);
    for (const QString& command : {u"删除"_s, u"显示"_s, u"隐藏"_s})
        choose(1, command);
    EXPECT_EQ(listed().size(), 2u);
    EXPECT_FALSE(all[2]->GetVisible());
}

TEST_F(ControlList, clicks_that_add_rows_hide_nothing_and_two_clicks_are_two_steps)
{
    add(0, 3);
    tell(ui_scene_changed);
    const auto all = listed();
    click_rows({0, 2}, CReportListControl::Name);
    EXPECT_EQ(core().selection().controls.size(), 2u);
    EXPECT_TRUE(all[2]->GetVisible()) << "Ctrl adds it";
    EXPECT_FALSE(all[0]->GetVisible());
    click_rows({1}, CReportListControl::Name);
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(all[1]->GetVisible());
    EXPECT_FALSE(all[0]->GetVisible());
}

TEST_F(ControlList, f2_renames_the_current_row_in_one_step)
{
    add(0, 2);
    tell(ui_scene_changed);
    m_frame.show();
    const auto type = [&](const QString& name, Qt::Key end) {
        QTest::keyClick(&list(), Qt::Key_F2);
        auto* field = list().findChild<QLineEdit*>();
        if (!field)
            return false;
        field->setText(name);
        QTest::keyClick(field, end);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return true;
    };
    EXPECT_FALSE(type(u"Nobody"_s, Qt::Key_Return)) << "nothing is selected";
    click_rows({0, 1});
    m_codes.clear();
    EXPECT_TRUE(type(u"New"_s, Qt::Key_Return));
    EXPECT_EQ(column(CReportListControl::Name), QStringList({u"Button1"_s, u"New"_s}));
    EXPECT_EQ(m_codes, std::vector{int(ui_control_properties)});
    EXPECT_EQ(core().selection().controls.size(), 2u);
    EXPECT_TRUE(type(u"Other"_s, Qt::Key_Escape));
    EXPECT_TRUE(type(u"New"_s, Qt::Key_Return));
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(column(CReportListControl::Name).last(), u"Button2"_s) << "what was given up or is the same is no step";
    m_scene->play(true);
    EXPECT_FALSE(type(u"Nobody"_s, Qt::Key_Return));
    m_scene->play(false);
}

TEST_F(ControlList, the_lock_locks_what_is_selected_and_neither_hides_nor_selects)
{
    add(0, 3);
    tell(ui_scene_changed);
    manager().resize(400, 700);
    widen();
    const auto lock_of = [&](int row) { return list().cell_icon_rect(row, CReportListControl::Layer, 1).center(); };
    click_rows({0});
    widen();
    m_codes.clear();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, lock_of(2));
    EXPECT_TRUE(listed()[2]->locked());
    EXPECT_TRUE(listed()[2]->GetVisible());
    EXPECT_EQ(core().selection().current_control, listed()[0]);
    EXPECT_EQ(m_codes, std::vector<int>{ui_control_properties});
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, lock_of(2));
    EXPECT_TRUE(listed()[2]->locked()) << "two clicks";
    click_rows({0, 1});
    widen();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, lock_of(1));
    EXPECT_TRUE(listed()[0]->locked() && listed()[1]->locked());
    EXPECT_EQ(list().cell_icons_at(1, CReportListControl::Layer)[1].number, 3);
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_FALSE(listed()[0]->locked() || listed()[1]->locked());
}

TEST_F(ControlList, rows_are_dragged_into_other_layers_and_dialogs_in_one_step)
{
    add(0, 4);
    add(1, 2);
    tell(ui_scene_changed);
    const std::vector<CDXUTControl*> made = listed();
    const auto layers = [&](int dialog) {
        const auto& controls = m_dialogs[size_t(dialog)]->controls();
        return std::vector<CDXUTControl*>(controls.begin(), controls.end());
    };
    drag_row(0, 2, true);
    EXPECT_EQ(layers(0), (std::vector{made[1], made[2], made[0], made[3]}));
    EXPECT_EQ(core().selection().current_control, made[0]);
    EXPECT_EQ(list().sort_column(), CReportListControl::Layer);
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(layers(0), (std::vector{made[0], made[1], made[2], made[3]}));

    const auto row_of = [&](CDXUTControl* control) {
        const auto rows = listed();
        return int(std::find(rows.begin(), rows.end(), control) - rows.begin());
    };
    click_rows({row_of(made[1]), row_of(made[3])});
    drag_row(row_of(made[1]), row_of(made[4]), true);
    EXPECT_EQ(layers(0), (std::vector{made[0], made[2]}));
    EXPECT_EQ(layers(1), (std::vector{made[4], made[1], made[3], made[5]}));
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(layers(1), (std::vector{made[4], made[5]}));
    EXPECT_EQ(layers(0).size(), 4U);

    list().sort_by_column(CReportListControl::Layer, false);
    drag_row(row_of(made[0]), row_of(made[3]), false);
    EXPECT_EQ(layers(0), (std::vector{made[1], made[2], made[3], made[0]})) << "the topmost stands first";
}

TEST_F(ControlList, a_drag_that_ends_beside_rows_or_in_a_running_interface_moves_nothing)
{
    add(0, 3);
    tell(ui_scene_changed);
    const QList<CDXUTControl*> before = m_dialogs[0]->controls();
    drag_row(0, 0, true);
    QTest::mousePress(list().viewport(), Qt::LeftButton, {}, middle_of(0));
    QMouseEvent move(QEvent::MouseMove, middle_of(2), list().viewport()->mapToGlobal(middle_of(2)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(list().viewport(), &move);
    QTest::keyClick(&list(), Qt::Key_Escape);
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, middle_of(2));
    m_scene->play(true);
    m_world.broadcast(ui_full_refresh);
    drag_row(0, 2, true);
    m_scene->play(false);
    EXPECT_EQ(m_dialogs[0]->controls(), before);
}

} // namespace tarn::test
