#include "control_list_fixture.h"

namespace tarn::test {

TEST_F(ControlList, layers_get_another_digit_one_before_their_number_does)
{
    struct Case {
        int count;
        QString first, last;
    };
    int made = 0;
    for (const Case& c : {Case{8, u"1"_s, u"8"_s}, Case{9, u"01"_s, u"09"_s}, Case{98, u"01"_s, u"98"_s},
                          Case{99, u"001"_s, u"099"_s}, Case{998, u"001"_s, u"998"_s}, Case{999, u"0001"_s, u"0999"_s},
                          Case{9998, u"0001"_s, u"9998"_s}, Case{9999, QString(), QString()}}) {
        add(0, c.count - made);
        made = c.count;
        tell(ui_scene_changed);
        EXPECT_EQ(list().item_caption(0, CReportListControl::Layer), c.first) << c.count;
        EXPECT_EQ(list().item_caption(c.count - 1, CReportListControl::Layer), c.last) << c.count;
    }
}

TEST_F(ControlList, a_hidden_control_has_no_icon_until_a_click_beside_its_number_shows_it)
{
    add(0, 2);
    core().create_control(DXUT_CONTROL_PIP, m_dialogs[0], QRectF(0, 0, 50, 50));
    core().create_control(DXUT_CONTROL_MAP, m_dialogs[0], QRectF(0, 0, 50, 50));
    tell(ui_scene_changed);
    EXPECT_EQ(list().icon_index(2), 15);
    EXPECT_EQ(list().icon_index(3), 14);
    CDXUTControl* second = list().control(1);
    click_rows({1}, CReportListControl::Type);
    EXPECT_FALSE(second->GetVisible());
    EXPECT_EQ(list().icon_index(1), 99);
    EXPECT_EQ(core().selection().current_control, second) << "it is selected too";
    EXPECT_EQ(m_codes, std::vector<int>{ui_selection_changed});
    click_rows({1}, CReportListControl::Layer);
    EXPECT_EQ(list().icon_index(1), 0);
    click_rows({1}, CReportListControl::Id);
    EXPECT_TRUE(second->GetVisible());
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_FALSE(second->GetVisible());
}

TEST_F(ControlList, the_filter_outlives_a_refresh_although_the_combo_shows_another_entry)
{
    for (int dialog = 0; dialog < 3; ++dialog)
        add(dialog, dialog + 1);
    core().create_control(DXUT_CONTROL_STATIC, core().GetRootDialog(), QRectF(0, 0, 9, 9));
    tell(ui_scene_changed);
    EXPECT_EQ(list().row_count(), 7);
    choose(id_dialog_filter, 4);
    EXPECT_EQ(column(CReportListControl::Dialog), QStringList(3, u"Third"_s));
    tell(ui_scene_changed);
    EXPECT_EQ(column(CReportListControl::Dialog), QStringList(3, u"Third"_s));
    EXPECT_EQ(combo(id_dialog_filter).currentIndex(), 2);
    choose(id_dialog_filter, 1);
    tell(ui_full_refresh);
    EXPECT_EQ(combo(id_dialog_filter).currentIndex(), 1);
    EXPECT_EQ(column(CReportListControl::Type), QStringList{u"静态文本"_s});

    choose(id_type_filter, DXUT_CONTROL_BUTTON + 1);
    EXPECT_EQ(list().row_count(), 0);
    choose(id_dialog_filter, 3);
    EXPECT_EQ(list().row_count(), 2);
    m_scene->RemoveDialog(m_dialogs[1]);
    EXPECT_EQ(list().row_count(), 4) << "without its dialog the filter ends, that of the type stays";
    EXPECT_EQ(combo(id_dialog_filter).currentIndex(), 0);
}

TEST_F(ControlList, arming_a_type_releases_the_others_until_it_is_drawn)
{
    click(id_button);
    click(id_check_box);
    for (const int id : type_buttons)
        EXPECT_EQ(button(id).GetCheck(), id == id_check_box) << id;
    click(id_check_box);
    EXPECT_EQ(m_scene->mouse_function(), 0);
    for (const int id : type_buttons) {
        const int before = list().row_count();
        click(id);
        for (const auto kind : {MouseEvent::Kind::Press, MouseEvent::Kind::Release})
            m_world.mouse_tool()->mouse({.kind = kind, .place = {20, 50}, .button = Qt::LeftButton, .modifiers = {}});
        EXPECT_EQ(list().row_count(), before + 1) << id;
        EXPECT_EQ(list().control(before)->GetType(), list().control(list().get_last_sel_index())->GetType()) << id;
        EXPECT_FALSE(button(id).GetCheck()) << id;
    }
}

TEST_F(ControlList, edits_nothing_while_the_interface_runs)
{
    add(0, 2);
    m_scene->play(true);
    tell(ui_scene_changed);
    click_rows({0}, CReportListControl::Name);
    EXPECT_EQ(core().selection().current_control, listed()[0]);
    EXPECT_TRUE(listed()[0]->GetVisible());
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(list().row_count(), 2);
    for (const int id : {int(id_button), int(id_remove), int(id_set_top), int(id_switch_dialog), 6592})
        EXPECT_FALSE(button(id).isEnabled()) << id;
    m_scene->play(false);
    tell(ui_scene_changed);
    EXPECT_TRUE(button(id_button).isEnabled());
}

TEST_F(ControlList, shows_all_rows_of_what_a_frame_in_the_view_selects)
{
    add(0, 3);
    tell(ui_scene_changed);
    for (const auto kind : {MouseEvent::Kind::Press, MouseEvent::Kind::Move, MouseEvent::Kind::Release})
        m_world.mouse_tool()->mouse({.kind = kind,
                                     .place = kind == MouseEvent::Kind::Press ? QPointF(500, 500) : QPointF(1, 1),
                                     .button = Qt::LeftButton,
                                     .modifiers = {}});
    ASSERT_EQ(core().selection().controls.size(), 3u);
    EXPECT_EQ(list().selected_controls().size(), 3u);
}

TEST_F(ControlList, rows_select_controls_in_their_order_and_the_clicked_one_is_current)
{
    add(0, 5);
    tell(ui_scene_changed);
    const auto all = listed();
    click_rows({3, 0, 2});
    EXPECT_EQ(core().selection().controls, (std::vector<CDXUTControl*>{all[0], all[2], all[3]}));
    EXPECT_EQ(core().selection().current_control, all[2]);
    EXPECT_EQ(m_codes, std::vector<int>(3, ui_selection_changed));
    EXPECT_EQ(list().selected_controls().size(), 3u) << "the page does not answer its own notification";
    for (const int id : row_buttons)
        EXPECT_TRUE(button(id).isEnabled()) << id;

    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(core().selection().controls, std::vector<CDXUTControl*>{all[3]});
    QTest::keyClick(&list(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(core().selection().current_control, all[4]);
    EXPECT_EQ(core().selection().controls.size(), 2u);

    core().ClearCtrlSelection();
    tell(ui_selection_changed);
    EXPECT_TRUE(list().selected_controls().empty());
    for (const int id : row_buttons)
        EXPECT_FALSE(button(id).isEnabled()) << id;
}

TEST_F(ControlList, remove_asks_once_for_all_rows_and_is_one_step)
{
    add(0, 4);
    tell(ui_scene_changed);
    const auto before = listed();
    click_rows({1, 3});
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    m_codes.clear();
    click(id_remove);
    EXPECT_EQ(listed(), before);
    EXPECT_TRUE(m_codes.empty());
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(listed(), (std::vector<CDXUTControl*>{before[0], before[2]}));
    EXPECT_EQ(m_codes, std::vector<int>{ui_control_selected});
    EXPECT_EQ(m_answers.texts, QStringList(2, u"你正在删除你的控件!"_s));
    EXPECT_EQ(m_answers.titles, QStringList(2, u"删除 “Button2”、“Button4”"_s));
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(m_answers.texts.size(), 2) << "without a row there is no question";
    EXPECT_TRUE(m_scene->journal().undo());
    tell(ui_scene_changed);
    EXPECT_EQ(listed(), before);
}

TEST_F(ControlList, layer_buttons_move_the_last_selected_row_and_sort_by_layer)
{
    add(0, 9);
    tell(ui_scene_changed);
    CDXUTControl* moved = list().control(4);
    click_rows({2, 4});
    const auto press = [&](int id, int layer) {
        m_codes.clear();
        click(id);
        EXPECT_EQ(m_dialogs[0]->GetControlIndex(moved), layer) << id;
        EXPECT_EQ(list().control(layer), moved) << id;
        EXPECT_EQ(m_codes, std::vector<int>{ui_controls_changed}) << id;
        core().SelectControl(moved, false);
        tell(ui_selection_changed);
    };
    press(id_set_top, 8);
    press(id_move_down, 7);
    press(id_move_up, 8);
    press(id_set_bottom, 0);
    press(id_move_down, 0);
    QStringList sorted = column(CReportListControl::Layer);
    EXPECT_EQ(sorted.first(), u"01"_s);
    EXPECT_EQ(sorted.last(), u"09"_s);
}

TEST_F(ControlList, the_switch_menu_moves_all_selected_controls_silently)
{
    add(0, 3);
    add(1, 1);
    tell(ui_scene_changed);
    CDXUTControl* first = list().control(0);
    CDXUTControl* third = list().control(2);
    click_rows({2, 0});
    m_answers.commands = {0, 102};
    m_codes.clear();
    click(id_switch_dialog);
    EXPECT_EQ(m_answers.texts, QStringList({u"100 ROOT"_s, u"101 First"_s, u"102 Second"_s, u"103 Third"_s}));
    EXPECT_EQ(m_dialogs[0]->GetControlNum(), 3);
    click(id_switch_dialog);
    EXPECT_EQ(m_dialogs[1]->controls().mid(1), QList<CDXUTControl*>({first, third}));
    EXPECT_EQ(column(CReportListControl::Dialog), QStringList({u"Second"_s, u"First"_s, u"Second"_s, u"Second"_s}));
    EXPECT_TRUE(m_codes.empty());
    EXPECT_EQ(core().selection().controls.size(), 2u) << "they stay selected";
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(m_dialogs[0]->GetControlNum(), 3);
}

TEST_F(ControlList, names_of_any_script_are_shown_and_numbers_sort_as_numbers)
{
    const QStringList names{u"确定按钮"_s,        u"زر الموافقة"_s, u"👩‍🚀🚀"_s,
                            u"e\u0301t\u0308é"_s, u"a&b\n%1"_s,     QString(5000, u'名')};
    add(0, 12);
    const auto controls = core().controls();
    for (int i = 0; i < int(names.size()); ++i)
        (void)set(*controls[size_t(i)], "name", names[i]);
    tell(ui_scene_changed);
    manager().grab();
    EXPECT_EQ(column(CReportListControl::Name).mid(0, names.size()), names);
    list().sort_by_column(CReportListControl::Id, false);
    EXPECT_EQ(list().control(0), controls.back());
    tell(ui_control_properties);
    EXPECT_EQ(list().control(0), controls.back()) << "changed properties leave the order alone";
}

TEST_F(ControlList, undo_leaves_the_list_sorted_and_what_was_selected_selected)
{
    add(0, 4);
    tell(ui_scene_changed);
    const auto all = listed();
    const auto act = [&](auto change) {
        const UserAction action(m_scene->journal(), u"act"_s);
        change();
    };
    const auto is_sorted = [](const QStringList& texts) {
        return std::is_sorted(texts.begin(), texts.end(), std::greater<>());
    };
    click_rows({0, 2});
    for (const int by : {int(CReportListControl::Layer), int(CReportListControl::Name)}) {
        list().sort_by_column(by, false);
        act([&] { m_dialogs[0]->SetCtrlLayer(all[1], 0); });
        act([&] { (void)set(*all[2], "name", u"Zed"_s); });
        m_scene->RemoveCtrl(all[0]);
        m_world.broadcast(ui_scene_changed);
        EXPECT_EQ(list().row_count(), 3);
        for (int step = 0; step < 3; ++step) {
            EXPECT_TRUE(is_sorted(column(by))) << column(by).join(u' ').toStdString();
            EXPECT_TRUE(m_scene->journal().undo());
            m_world.broadcast(ui_scene_changed);
            m_world.broadcast(ui_selection_changed);
        }
        EXPECT_TRUE(is_sorted(column(by)));
        EXPECT_EQ(list().sort_column(), by);
        EXPECT_EQ(core().selection().current_control, all[2]);
        EXPECT_EQ(list().selected_controls().size(), 2u);
    }
}

TEST_F(ControlList, the_armed_type_is_shown_whatever_happens)
{
    for (const int code : {ui_scene_changed, ui_control_selected}) {
        click(id_check_box);
        m_world.broadcast(code);
        EXPECT_FALSE(button(id_check_box).GetCheck()) << code;
        EXPECT_EQ(m_scene->mouse_function(), 0) << code;
    }
    click(id_check_box);
    m_scene->new_scene();
    EXPECT_FALSE(button(id_check_box).GetCheck());
    click(id_check_box);
    m_scene->SetMTFunction(2, DXUT_CONTROL_BUTTON);
    m_world.broadcast(ui_selection_changed);
    EXPECT_TRUE(button(id_button).GetCheck());
    EXPECT_FALSE(button(id_check_box).GetCheck());
}

TEST_F(ControlList, the_search_box_lists_what_bears_the_letters_or_the_number)
{
    add(0, 3);
    add(1, 1);
    tell(ui_scene_changed);
    EXPECT_TRUE(listed()[2]->set_property(*listed()[2]->fields().find("name"), u"Close Button"_s));
    const QString number = QString::number(core().controls().front()->id());
    auto& search = *dynamic_cast<QLineEdit*>(manager().control(id_search));
    QTest::keyClicks(&search, u"close"_s);
    EXPECT_EQ(column(CReportListControl::Name), QStringList{u"Close Button"_s});
    search.setText(number);
    EXPECT_EQ(column(CReportListControl::Id), QStringList{number});
    choose(id_dialog_filter, 3);
    EXPECT_EQ(list().row_count(), 0) << "the filters hold together";
    search.clear();
    EXPECT_EQ(list().row_count(), 1);
}

} // namespace tarn::test
