#include "support/attributes.h"
#include "timeline_fixture.h"

#include <QTest>

using namespace tarn;
using namespace tarn::test;

namespace {

constexpr int keys_y = 15;
constexpr int keys_only_y = 10; // above the band of the whole selection
constexpr int scripts_y = 60;   // below the ease handles

class TimelineDragging : public TimelineTest {};

} // namespace

TEST_F(TimelineDragging, begins_with_what_is_under_the_press)
{
    struct Case {
        int x;
        int y;
        int mode;
        float current_time;
    };
    const Case cases[] = {
        {38, keys_y, 3, 1},
        {42, keys_only_y, 3, 1},
        {43, keys_y, -1, 1.075f},
        {122, scripts_y, 1, 3},
        {123, scripts_y, -1, 3.075f},
        {400, 30, 7, 0},
        {418, 22, 7, 0},
        {419, 30, -1, 10},
        {400, 40, -1, 10},
        {300, 5, -1, 7.5f},
        {300, 79, -1, 7.5f},
        {120, 50, 1, 3},
        {100, keys_y, -1, 2.5f},
    };
    for (const Case& row : cases) {
        m_timeline.clear_selection();
        m_timeline.set_current_time(0);
        press(row.x, row.y);
        EXPECT_EQ(m_timeline.drag_mode(), row.mode) << row.x << ' ' << row.y;
        EXPECT_FLOAT_EQ(m_timeline.current_time(), row.current_time) << row.x << ' ' << row.y;
        release(row.x, row.y);
    }
    EXPECT_FALSE(journal().can_undo());
}

TEST_F(TimelineDragging, takes_the_whole_selection_up_to_two_pixels_beside_it)
{
    for (const auto& [x, mode] : {std::pair(37, -1), {38, 6}, {44, 6}, {45, 5}, {75, 5}, {76, 6}, {82, 6}, {83, -1}}) {
        m_timeline.clear_selection();
        drag({36, 90}, {84, 120}); // a box around the keys at 1 and 2 seconds
        ASSERT_EQ(view().selection.key_count(), 2u);
        press(x, 21);
        EXPECT_EQ(m_timeline.drag_mode(), mode) << x;
        release(x, 21);
    }
    // What is as narrow as one key has no ends to stretch it by.
    m_timeline.clear_selection();
    click(40, keys_only_y);
    for (const auto& [x, mode] : {std::pair(37, -1), {38, 5}, {42, 5}, {43, -1}}) {
        press(x, 21);
        EXPECT_EQ(m_timeline.drag_mode(), mode) << x;
        release(x, 21);
    }
}

TEST_F(TimelineDragging, moves_a_key_and_the_cursor_in_one_step)
{
    const QByteArray before = text();
    drag({41, keys_y}, {61, keys_y});
    EXPECT_EQ(times(m_place), (Times{0, 1.5f, 2, 4}));
    EXPECT_FLOAT_EQ(m_timeline.current_time(), 1.5f);
    EXPECT_TRUE(view().selection.has_key(m_place, 1.5f));
    EXPECT_EQ(m_place->value_at(1.5f).part(0), 100);
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(text(), before);
    EXPECT_EQ(m_refreshing, (std::vector{true, false}));
}

TEST_F(TimelineDragging, is_a_click_when_it_is_short_or_hardly_moves)
{
    press(40, keys_y);
    wait(100);
    move(90, keys_y);
    release(90, keys_y);
    EXPECT_FALSE(journal().can_undo()) << "100 ms";

    // Up as far as to the right cancels out.
    for (const QPoint way : {QPoint(5, 0), QPoint(0, -5), QPoint(40, -40), QPoint(-30, 35)}) {
        m_timeline.clear_selection();
        drag({40, keys_y}, QPoint(40, keys_y) + way);
        EXPECT_FALSE(journal().can_undo()) << way.x() << ' ' << way.y();
        EXPECT_EQ(times(m_place), (Times{0, 1, 2, 4}));
    }
    m_timeline.clear_selection();
    drag({40, keys_y}, {45, keys_y + 1});
    EXPECT_EQ(undo_all(), 1);
}

TEST_F(TimelineDragging, keeps_first_keys_where_they_are)
{
    drag({0, keys_y}, {60, keys_y});
    EXPECT_EQ(times(m_place), (Times{0, 1, 2, 4}));
    EXPECT_FALSE(journal().can_undo());
    m_timeline.clear_selection();
    drag({40, keys_y}, {-60, keys_y}); // Others stay behind the first one.
    EXPECT_EQ(m_place->keys().size(), 4);
    EXPECT_EQ(m_place->keys().first_time(), 0);
    EXPECT_LT(times(m_place)[1], 0.001f);
}

TEST_F(TimelineDragging, is_undone_whole_by_escape_and_lost_capture)
{
    const QByteArray before = text();
    const auto lose = [&](const std::function<void()>& how, const char* name) {
        m_timeline.clear_selection();
        m_refreshing.clear();
        press(40, keys_y);
        wait(101);
        move(100, keys_y);
        EXPECT_FALSE(journal().undo()) << name;
        EXPECT_NE(times(m_place), (Times{0, 1, 2, 4})) << name;
        how();
        EXPECT_EQ(text(), before) << name;
        EXPECT_EQ(m_timeline.drag_mode(), -1) << name;
        EXPECT_EQ(m_refreshing, (std::vector{true, false})) << name;
        EXPECT_FALSE(journal().can_undo()) << name;
        EXPECT_TRUE(view().selection.has_key(m_place, 1)) << name;
        release(100, keys_y);
        EXPECT_EQ(text(), before) << name;
    };
    lose([&] { key(Qt::Key_Escape); }, "escape");
    lose([&] { m_timeline.hide(); }, "hidden");
    m_timeline.show();
    lose([&] { m_timeline.setEnabled(false); }, "disabled");
    m_timeline.setEnabled(true);
    lose(
        [&] {
            QEvent event(QEvent::WindowDeactivate);
            QApplication::sendEvent(&m_timeline, &event);
        },
        "another window");
    lose(
        [&] {
            m_held = Qt::NoButton;
            move(120, keys_y);
        },
        "released elsewhere");
}

TEST_F(TimelineDragging, refuses_the_place_of_another_script_key)
{
    answer_box(boxes::Button::Ok);
    drag({120, scripts_y}, {200, scripts_y});
    EXPECT_EQ(m_bar->script_key_times(), (Times{3, 5}));
    EXPECT_EQ(m_answers.texts.takeLast(), u"There is a script here already!"_s);
    EXPECT_FALSE(journal().can_undo());

    drag({120, scripts_y}, {160, scripts_y});
    EXPECT_EQ(m_bar->script_key_times(), (Times{4, 5}));
    click(200, scripts_y, Qt::ShiftModifier);
    drag({160, scripts_y}, {200, scripts_y}); // Both move, the one onto where the other was.
    EXPECT_EQ(m_bar->script_key_times(), (Times{5, 6}));
    drag({240, scripts_y}, {700, scripts_y}); // Not beyond the end
    EXPECT_EQ(m_bar->script_key_times(), (Times{9, 10}));
    EXPECT_EQ(undo_all(), 3);
}

TEST_F(TimelineDragging, deletes_what_is_dropped_off)
{
    struct Case {
        int height;
        int y;
        bool asks;
    };
    for (const Case& row : {Case{60, 160, false},
                            {60, 161, true},
                            {300, 396, false},
                            {300, 397, true},
                            {300, -100, false},
                            {300, -101, true}}) {
        m_timeline.resize(800, row.height);
        m_timeline.clear_selection();
        if (row.asks)
            answer_box(boxes::Button::Cancel);
        drag({120, scripts_y}, {120, row.y});
        EXPECT_EQ(m_answers.texts.size(), row.asks ? 1 : 0) << row.y;
        EXPECT_EQ(m_bar->script_key_times(), (Times{3, 5}));
        m_answers.texts.clear();
    }
    m_timeline.resize(800, 300);

    m_timeline.clear_selection();
    answer_box(boxes::Button::Ok);
    drag({120, scripts_y}, {120, 400});
    EXPECT_EQ(m_answers.texts.takeLast(), u"Remove Seletede Script?"_s);
    EXPECT_EQ(m_bar->script_key_times(), (Times{5}));
    m_timeline.clear_selection();
    answer_box(boxes::Button::Ok);
    drag({40, keys_y}, {40, -110});
    EXPECT_EQ(m_answers.texts.takeLast(), u"Remove Seletede Key frames?"_s);
    EXPECT_EQ(times(m_place), (Times{0, 2, 4}));
    EXPECT_EQ(undo_all(), 2);

    m_timeline.clear_selection();
    key(Qt::Key_A, Qt::ControlModifier);
    answer_box(boxes::Button::Ok);
    answer_box(boxes::Button::Ok);
    drag({120, scripts_y}, {120, 400});
    EXPECT_EQ(m_answers.texts,
              (QStringList{u"Remove All Scripts and Key frames?"_s, u"First key can not be removed!"_s}));
    EXPECT_EQ(times(m_place), (Times{0}));
    EXPECT_TRUE(m_bar->script_key_times().empty());
    EXPECT_EQ(undo_all(), 1);
}

TEST_F(TimelineDragging, selects_a_range_with_shift)
{
    click(20, 70); // 0.5 seconds
    const QByteArray before = text();
    press(40, keys_y, Qt::ShiftModifier);
    EXPECT_EQ(m_timeline.drag_mode(), -1);
    EXPECT_TRUE(view().range_select);
    EXPECT_FLOAT_EQ(m_timeline.current_time(), 0.5f);
    move(140, keys_y, Qt::ShiftModifier);
    release(140, keys_y);
    EXPECT_FLOAT_EQ(view().range_begin(), 0.5f);
    EXPECT_FLOAT_EQ(view().range_end(), 3.5f);
    EXPECT_EQ(view().selection.keys().at(m_place), (Times{1, 2}));
    EXPECT_EQ(view().selection.scripts(), (Times{3}));

    drag({140, keys_y}, {180, keys_y}); // Its end, which nothing that is selected reaches
    EXPECT_TRUE(view().range_select);
    EXPECT_FLOAT_EQ(view().range_end(), 4.5f);
    EXPECT_EQ(view().selection.keys().at(m_place), (Times{1, 2, 4}));
    drag({20, keys_y}, {60, keys_y}); // and its begin
    EXPECT_FLOAT_EQ(view().range_begin(), 1.5f);
    EXPECT_EQ(view().selection.keys().at(m_place), (Times{2, 4}));
    EXPECT_EQ(text(), before);
    click(300, 70);
    EXPECT_FALSE(view().range_select);

    press(300, 5, Qt::ShiftModifier);
    release(300, 5);
    EXPECT_FALSE(view().range_select) << "without a length";
}

TEST_F(TimelineDragging, moves_and_stretches_the_selection_from_its_first_times)
{
    drag({36, 90}, {164, 120});
    ASSERT_EQ(view().selection.keys().at(m_place), (Times{1, 2, 4}));
    drag({100, 20}, {120, 20});
    EXPECT_EQ(times(m_place), (Times{0, 1.5f, 2.5f, 4.5f}));
    press(180, 20); // by the end
    EXPECT_EQ(m_timeline.drag_mode(), 6);
    wait(101);
    move(61, 20); // Squeezed together they stay apart,
    EXPECT_EQ(m_place->keys().size(), 4);
    move(300, 20); // and come out as they were.
    release(300, 20);
    EXPECT_EQ(times(m_place), (Times{0, 1.5f, 3.5f, 7.5f}));
    EXPECT_FLOAT_EQ(view().selection.section_end(), 7.5f);
    EXPECT_EQ(undo_all(), 2);
}

TEST_F(TimelineDragging, keeps_what_is_selected_where_a_selected_one_is_pressed)
{
    click(120, scripts_y);
    EXPECT_EQ(view().selection.scripts(), (Times{3}));
    click(200, scripts_y, Qt::ShiftModifier);
    EXPECT_EQ(view().selection.scripts(), (Times{3, 5}));
    click(120, scripts_y);
    EXPECT_EQ(view().selection.scripts(), (Times{3, 5}));
    click(80, keys_y); // No key is selected yet.
    EXPECT_TRUE(view().selection.scripts().empty());
    EXPECT_EQ(view().selection.keys().at(m_place), (Times{2}));
    click(40, keys_y);
    EXPECT_EQ(view().selection.keys().at(m_place), (Times{1}));
    key(Qt::Key_A, Qt::ControlModifier);
    click(80, keys_y); // In the band of the whole selection nothing is under the mouse.
    EXPECT_EQ(view().selection.key_count(), 4u);
    EXPECT_EQ(view().hover.key, 2);
    key(Qt::Key_Escape);
    EXPECT_TRUE(view().selection.is_empty());
}

TEST_F(TimelineDragging, moves_the_end_marks_and_eases)
{
    drag({405, 30}, {480, 30});
    EXPECT_FLOAT_EQ(m_bar->get_total_length(), 12);

    CTimeMark* mark = m_bar->create_mark(6, 1, u"wave"_s);
    drag({241, keys_y}, {261, keys_y});
    EXPECT_FLOAT_EQ(mark->time(), 6.5f);
    drag({300, scripts_y}, {320, scripts_y}); // its end
    EXPECT_FLOAT_EQ(mark->length(), 1.5f);
    answer_box(boxes::Button::Ok);
    drag({260, keys_y}, {260, 500});
    EXPECT_TRUE(m_bar->marks().empty());

    m_object->set_current_variable(m_place);
    m_bar->set_current_object(m_object);
    press(120, 47); // between 2 and 4 seconds, above the script key's reach
    EXPECT_EQ(m_timeline.drag_mode(), 1) << "a script key wins";
    release(120, 47);
    press(60, 50);
    EXPECT_EQ(m_timeline.drag_mode(), 8);
    wait(101);
    move(67, 50); // The way is 28 pixels long.
    release(67, 50);
    EXPECT_FLOAT_EQ(m_place->get_ease(2), 50);
    EXPECT_EQ(m_place->get_ease(1), 0);
    drag({67, 50}, {600, 50});
    EXPECT_EQ(m_place->get_ease(2), 100);

    drag({36, 90}, {84, 120}); // the keys at 1 and 2 seconds
    drag({74, 50}, {60, 50});
    EXPECT_FLOAT_EQ(m_place->get_ease(2), 0);
    EXPECT_FLOAT_EQ(m_place->get_ease(1), 0);
    drag({60, 50}, {67, 50});
    EXPECT_FLOAT_EQ(m_place->get_ease(1), 50);
    EXPECT_EQ(m_place->get_ease(4), 0);
}

TEST_F(TimelineDragging, holds_the_scene_with_ctrl)
{
    const QRect before = m_dialog->rect();
    click(40, 70, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(m_timeline.current_time(), 1);
    EXPECT_EQ(m_bar->current_time(), 0);
    EXPECT_EQ(m_dialog->rect(), before);
    click(40, 70);
    EXPECT_FLOAT_EQ(m_bar->current_time(), 1);
    EXPECT_NE(m_dialog->rect(), before);
}

TEST_F(TimelineDragging, snaps_to_frames_where_frames_are_shown)
{
    ASSERT_TRUE(set(*m_bar, "display_mode", qint64(TimebarState::frames_mode)));
    click(101, 70); // 2.525 seconds
    EXPECT_EQ(m_timeline.current_time(), frame_time(63, 25));
    drag({40, keys_y}, {62, keys_y}); // 1.55
    EXPECT_EQ(times(m_place)[1], frame_time(39, 25));
    journal().undo();
    drag({40, keys_only_y}, {62, keys_only_y}, {}, Qt::AltModifier);
    EXPECT_FLOAT_EQ(times(m_place)[1], 1.55f);
    ASSERT_TRUE(set(*m_bar, "display_mode", qint64(TimebarState::seconds_mode)));
    click(101, 70);
    EXPECT_EQ(m_timeline.current_time(), m_timeline.time_from_pixel(101));
}

TEST_F(TimelineDragging, takes_later_keys_along_while_shift_is_held)
{
    drag({40, keys_y}, {60, keys_y}, {}, Qt::ShiftModifier);
    EXPECT_EQ(times(m_place), (Times{0, 1.5f, 2.5f, 4.5f}));
    EXPECT_EQ(undo_all(), 1);
}

TEST_F(TimelineDragging, scrolls_at_the_edges_only_while_it_drags)
{
    press(200, 70);
    move(20, 70);
    EXPECT_EQ(m_timeline.view_origin(), 0);
    wait(101);
    move(771, 70);
    QTest::qWait(130);
    EXPECT_GE(m_timeline.view_origin(), 0.75f);
    EXPECT_FLOAT_EQ(m_timeline.current_time(), 10);
    move(29, 70); // It stops at the begin.
    QTest::qWait(300);
    EXPECT_EQ(m_timeline.view_origin(), 0);
    EXPECT_FLOAT_EQ(m_timeline.current_time(), 29 * 0.025f);
    move(790, 70);
    release(790, 70);
    const float origin = m_timeline.view_origin();
    QTest::qWait(120);
    EXPECT_EQ(m_timeline.view_origin(), origin);
}

TEST_F(TimelineDragging, zooms_by_the_wheel_while_the_button_is_down)
{
    wheel(100, 30, 120);
    EXPECT_EQ(m_timeline.seconds_per_pixel(), 0.025f);
    press(100, 70);
    wheel(100, 30, 120);
    EXPECT_EQ(m_timeline.seconds_per_pixel(), 0.05f);
    wheel(100, 30, 0);
    wheel(100, 30, -120);
    EXPECT_EQ(m_timeline.seconds_per_pixel(), 0.0125f);
    release(100, 70);
    m_timeline.set_view_origin(1);
    const float under_mouse = m_timeline.time_from_pixel(100);
    wheel(100, 90, -120, Qt::ControlModifier);
    EXPECT_EQ(m_timeline.seconds_per_pixel(), 0.025f);
    EXPECT_EQ(m_timeline.view_origin(), 0) << "not before the begin";
    wheel(100, 90, 120, Qt::ControlModifier);
    EXPECT_EQ(m_timeline.seconds_per_pixel(), 0.0125f);
    EXPECT_NEAR(double(m_timeline.time_from_pixel(100)), double(under_mouse), 0.3);
}

TEST_F(TimelineDragging, works_without_a_timebar)
{
    m_animation->set_current_bar(nullptr);
    for (int y = -5; y < 200; y += 5)
        drag({40, y}, {90, y + 20});
    m_answers.commands.assign(20, 0);
    for (int y = 5; y < 100; y += 5)
        mouse(QEvent::MouseButtonPress, 40, y, {}, Qt::RightButton);
    wheel(100, 90, 120);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_FALSE(journal().can_undo());
}
