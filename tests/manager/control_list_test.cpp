#include "support/attributes.h"
#include "support/editor_fixture.h"

#include "manager/report_list_control.h"
#include "widgets/button_st.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <array>
#include <functional>

namespace tarn::test {

namespace {

enum Id : int {
    id_list = 6316,
    id_dialog_filter = 6548,
    id_type_filter = 6551,
    id_remove = 6338,
    id_set_top = 6322,
    id_set_bottom = 6106,
    id_move_up = 6588,
    id_move_down = 6108,
    id_switch_dialog = 6370,
    id_button = 6328,
    id_check_box = 6330,
    id_search = 6990,
};

constexpr std::array type_buttons{6328, 6330, 6332, 6334, 6336, 6342, 6344, 6346,
                                  6348, 6354, 6361, 6367, 6117, 6118, 6608, 6610};
constexpr std::array row_buttons{id_remove, id_set_top, id_set_bottom, id_move_up, id_move_down, id_switch_dialog};

class ControlList : public Editor {
protected:
    void SetUp() override
    {
        start();
        for (const auto& name : {u"First"_s, u"Second"_s, u"Third"_s})
            m_dialogs.push_back(core().create_dialog(QRect(0, 0, 400, 300), name));
    }
    CChildDlg& manager() { return *page(u"CDlgGuiManagerCtrl"_s); }
    CReportListControl& list() { return *dynamic_cast<CReportListControl*>(manager().control(id_list)); }
    CButtonST& button(int id) { return *dynamic_cast<CButtonST*>(manager().control(id)); }
    QComboBox& combo(int id) { return *dynamic_cast<QComboBox*>(manager().control(id)); }
    void click(int id) { button(id).click(); }
    void choose(int id, int entry)
    {
        combo(id).setCurrentIndex(entry);
        Q_EMIT combo(id).activated(entry);
    }
    void add(int dialog, int count, int type = DXUT_CONTROL_BUTTON)
    {
        for (int i = 0; i < count; ++i)
            core().create_control(type, m_dialogs[size_t(dialog)], QRectF(0, 20 * i, 60, 18));
    }
    void tell(int code)
    {
        m_world.broadcast(code);
        m_codes.clear();
    }
    /// As the user clicks, with Ctrl for all but the first.
    void click_rows(std::initializer_list<int> rows, int column = CReportListControl::Id)
    {
        manager().resize(400, 700);
        Qt::KeyboardModifiers modifiers;
        for (const int row : rows) {
            const QRect cell = list().visualRect(list().model()->index(row, column));
            QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, cell.center());
            modifiers = Qt::ControlModifier;
        }
    }
    /// Windows that are not shown hear of their sizes late.
    void widen()
    {
        list().resize(600, 400);
        QResizeEvent event(list().size(), list().size());
        QApplication::sendEvent(&list(), &event);
        list().setColumnWidth(CReportListControl::Layer, 150); // A list that is not shown has narrow ones.
    }
    QPoint middle_of(int row)
    {
        return list().visualRect(list().model()->index(row, CReportListControl::Name)).center();
    }
    /// Drops what is selected after the press above or below another row.
    void drag_row(int row, int onto, bool below)
    {
        manager().resize(400, 700);
        widen();
        const QPoint place = middle_of(onto) + QPoint(0, below ? 4 : -4);
        QTest::mousePress(list().viewport(), Qt::LeftButton, {}, middle_of(row));
        QMouseEvent move(QEvent::MouseMove, place, list().viewport()->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(list().viewport(), &move);
        QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, place);
    }
    QStringList column(int column)
    {
        QStringList texts;
        for (int row = 0; row < list().row_count(); ++row)
            texts.append(list().item_caption(row, column));
        return texts;
    }
    std::vector<CDXUTControl*> listed()
    {
        std::vector<CDXUTControl*> controls;
        for (int row = 0; row < list().row_count(); ++row)
            controls.push_back(list().control(row));
        return controls;
    }

    std::vector<CDXUTDialog*> m_dialogs;
};

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

} // namespace

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
