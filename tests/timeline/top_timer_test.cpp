#include "timeline_pages_fixture.h"

#include "core/authored.h"
#include "gui_core/dxut_control.h"
#include "timeline/row_names.h"

#include <QDockWidget>
#include <QTest>

namespace tarn::test {

namespace {

class TopTimer : public TimelinePages {
protected:
    QScrollBar& scroll() { return tool<QScrollBar>(6169); }
    /// 800 pixels of timeline at 40 pixels a second.
    void make_bar(float length)
    {
        m_frame.resize(1400, 800);
        m_frame.show();
        m_frame.findChild<QDockWidget*>(u"CTimerControlBar"_s)->show();
        QCoreApplication::processEvents();
        timer().setFixedWidth(800);
        QCoreApplication::processEvents();
        animation().create_bar(length);
        m_world.broadcast(ui_timebars_changed);
        ASSERT_EQ(timer().width(), 800);
    }
};

} // namespace

TEST_F(TopTimer, lists_timebars_targets_and_variables)
{
    record_at({0});
    CDXUTControl* control = core().create_control(0, m_dialog, QRectF(0, 0, 10, 10), u"OK"_s);
    bar()->create_object(TimerObjectType::Control, {control->id()});
    bar()->create_script_object()->set_script(u"blink(1)"_s);
    bar()->create_object(TimerObjectType::Camera, {});
    m_scene->document().changes().tell();
    EXPECT_EQ(items(6157), QStringList{u"Bar1"_s});
    EXPECT_EQ(items(6158),
              (QStringList{u"Dialog:Title"_s, u"Control:OK"_s, u"Script:blink(1)"_s, u"Camera:(deleted)"_s}));
    EXPECT_EQ(tool<QComboBox>(6158).currentIndex(), 0) << "recording makes the object current";
    EXPECT_TRUE(items(6156).contains(u"Position"_s)) << items(6156).join(u' ').toStdString();
    EXPECT_EQ(tool<QComboBox>(6156).currentIndex(), -1);

    choose(6156, 0);
    EXPECT_EQ(bar()->current_object()->current_variable(), bar()->current_object()->variables().front());
    choose(6156, 0);
    EXPECT_EQ(bar()->current_object()->current_variable(), nullptr) << "chosen again";
    choose(6158, 1);
    EXPECT_EQ(bar()->current_object(), bar()->objects()[1]);
    EXPECT_TRUE(items(6156).isEmpty());
    animation().create_bar(3);
    m_scene->document().changes().tell();
    EXPECT_EQ(items(6158), QStringList());
    choose(6157, 0);
    EXPECT_EQ(bar()->name(), u"Bar1"_s);
    EXPECT_EQ(m_codes, std::vector<int>(4, ui_timebar_content));
}

TEST_F(TopTimer, names_stand_beside_their_rows_and_fold_lock_and_choose_them)
{
    make_bar(4);
    record_at({0});
    CTimerObject* other = bar()->create_script_object();
    m_scene->document().changes().tell();
    QCoreApplication::processEvents();
    auto& names = *tools().findChild<RowNames*>();
    const auto click_name = [&](int row, RowPart part) {
        const TimelineRow at = timeline_rows(timer().view())[std::size_t(row)];
        const QPoint place = part == RowPart::Name ? QPoint(60, at.middle())
                                                   : row_part(at, part, names.width()).center();
        const QPoint on_window = timer().mapTo(&m_frame, QPoint(0, place.y()));
        QTest::mouseClick(&names, Qt::LeftButton, {}, {place.x(), names.mapFrom(&m_frame, on_window).y()});
    };
    EXPECT_LE(names.mapTo(&m_frame, QPoint()).y(), timer().mapTo(&m_frame, QPoint(0, bands::rows_top)).y())
        << "the first row has room";
    const std::size_t folded = timeline_rows(timer().view()).size();
    click_name(1, RowPart::Fold);
    EXPECT_GT(timeline_rows(timer().view()).size(), folded);
    click_name(1, RowPart::Fold);
    EXPECT_EQ(timeline_rows(timer().view()).size(), folded);
    click_name(1, RowPart::Lock);
    EXPECT_TRUE(timer().view().rows.locked.contains(bar()->objects().front()->id()));
    click_name(1, RowPart::Mute);
    EXPECT_TRUE(animation().is_muted(bar()->objects().front()->id()));
    click_name(2, RowPart::Name);
    EXPECT_EQ(bar()->current_object(), other);
}

TEST_F(TopTimer, another_timebar_takes_its_own_time_and_nothing_stays_selected_or_plays)
{
    record_at({0, 4});
    CTimebar* first = bar();
    click(6468);
    EXPECT_TRUE(first->is_playing());
    animation().create_bar(3);
    m_world.broadcast(ui_timebars_changed);
    EXPECT_FALSE(first->is_playing());
    EXPECT_EQ(timer().current_time(), 0);
    choose(6157, 0);
    EXPECT_EQ(timer().current_time(), 4);
    bar()->set_total_length(2);
    m_scene->document().changes().tell();
    EXPECT_EQ(timer().current_time(), 2) << "not beyond the end";
}

TEST_F(TopTimer, play_pressed_twice_stops_and_a_loop_begins_anew_at_the_end)
{
    record_at({0});
    click(6468);
    EXPECT_TRUE(bar()->is_playing());
    click(6468);
    EXPECT_FALSE(bar()->is_playing());
    const float stopped = timer().current_time();
    QTest::qWait(60);
    EXPECT_EQ(timer().current_time(), stopped) << "the clock stands still";

    bar()->set_total_length(0.1f);
    m_scene->document().changes().tell();
    click(6468);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !bar()->is_playing(); }, 2000));
    EXPECT_EQ(timer().current_time(), 0.1f);
    click(6882);
    click(6468);
    QTest::qWait(250);
    EXPECT_TRUE(bar()->is_playing());
    EXPECT_GT(m_world.document().journal().step_count(), 0u);
    click(6468);
}

TEST_F(TopTimer, the_speed_is_that_of_playing_here_only)
{
    record_at({0});
    choose(6881, 1);
    EXPECT_EQ(bar()->speed(), 0.25f);
    animation().create_bar(3);
    m_world.broadcast(ui_timebars_changed);
    EXPECT_EQ(bar()->speed(), 0.25f);
    m_scene->play(true);
    EXPECT_EQ(bar()->speed(), 1);
    m_scene->play(false);
}

TEST_F(TopTimer, next_and_previous_go_from_key_to_key_and_stay_at_the_ends)
{
    record_at({0, 1, 5});
    timer().set_current_time(0.5f);
    for (const float time : {1.f, 5.f, 5.f}) {
        click(6495);
        EXPECT_EQ(timer().current_time(), time);
    }
    for (const float time : {1.f, 0.f, 0.f}) {
        click(6479);
        EXPECT_EQ(timer().current_time(), time);
    }
}

TEST_F(TopTimer, without_a_timebar_nothing_happens_and_the_buttons_stay_enabled)
{
    for (const int id : {6468, 6487, 6479, 6495, 6170, 6171, 6575, 6579, 6200, 6880}) {
        EXPECT_TRUE(tool<QAbstractButton>(id).isEnabled()) << id;
        click(id);
    }
    EXPECT_FALSE(scroll().isEnabled());
    EXPECT_EQ(m_scene->journal().step_count(), 1u) << "of the fixture";
    EXPECT_FALSE(tool<CButtonST>(6579).GetCheck()) << "no control, no centre";
    EXPECT_EQ(m_answers.texts.size(), 0);
    for (const int id : {6597, 6473, 6490})
        EXPECT_TRUE(tools().control(id)->isHidden());
}

TEST_F(TopTimer, zooming_goes_by_twos_between_its_limits)
{
    make_bar(100);
    const std::pair<int, float> steps[] = {{6171, 0.05f}, {6171, 0.1f}, {6170, 0.05f}};
    for (const auto& [button, scale] : steps) {
        click(button);
        EXPECT_FLOAT_EQ(timer().seconds_per_pixel(), scale);
    }
    for (int i = 0; i < 9; ++i)
        click(6170);
    EXPECT_FLOAT_EQ(timer().seconds_per_pixel(), 0.005f);
    for (int i = 0; i < 9; ++i)
        click(6171);
    EXPECT_FLOAT_EQ(timer().seconds_per_pixel(), 1);
    EXPECT_FALSE(scroll().isEnabled()) << "all of it is visible";
    EXPECT_EQ(timer().view_origin(), 0);
}

TEST_F(TopTimer, scrolling_places_the_origin_in_percent_with_a_margin_behind_the_end)
{
    make_bar(100);
    ASSERT_TRUE(scroll().isEnabled());
    // 100 s less the 700 pixels that are visible at 0.025 s each
    const auto origin = [](int position) { return (100 - 17.5f) * float(position) / 100; };
    scroll().triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_FLOAT_EQ(timer().view_origin(), origin(100));
    scroll().triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_FLOAT_EQ(timer().view_origin(), origin(99));
    scroll().triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_FLOAT_EQ(timer().view_origin(), origin(89));
    scroll().setSliderDown(true);
    scroll().setSliderPosition(30);
    EXPECT_FLOAT_EQ(timer().view_origin(), origin(89)) << "while the thumb is held";
    scroll().setSliderDown(false);
    EXPECT_FLOAT_EQ(timer().view_origin(), origin(30));
    scroll().triggerAction(QAbstractSlider::SliderToMinimum);
    EXPECT_EQ(timer().view_origin(), 0);

    timer().set_current_time(40.9f);
    click(6170);
    EXPECT_EQ(scroll().value(), int(timer().view_origin()));
    timer().set_view_origin(0);
    click(6171);
    EXPECT_EQ(scroll().value(), timer().view_origin() > 0 ? int(timer().view_origin()) : 40) << "then the cursor's";

    timer().set_view_origin(5);
    bar()->set_total_length(19);
    m_scene->document().changes().tell();
    EXPECT_FALSE(scroll().isEnabled());
    EXPECT_EQ(timer().view_origin(), 0);
    bar()->set_total_length(20);
    m_scene->document().changes().tell();
    EXPECT_TRUE(scroll().isEnabled()) << "it just does not fit";
}

TEST_F(TopTimer, records_what_is_selected_at_the_cursor_in_one_step)
{
    CDXUTDialog* other = core().create_dialog(QRect(0, 0, 50, 50), u"Other"_s);
    core().SelectDialog(other, true);
    animation().create_bar(10);
    m_world.broadcast(ui_timebars_changed);
    const std::size_t steps = m_scene->journal().step_count();
    timer().set_current_time(1.5f);
    tools().command(CDlgTopTimer::record_key);
    EXPECT_EQ(bar()->objects().size(), core().selection().dialogs.size());
    EXPECT_TRUE(bar()->objects().front()->has_key(1.5f));
    EXPECT_EQ(m_scene->journal().step_count(), steps + 1);
    core().ClearDialogSelection();
    click(6487);
    EXPECT_EQ(m_scene->journal().step_count(), steps + 1) << "with nothing selected";

    CTCommandScript* script = bar()->create_script_object();
    CTVar* number = script->create_var(tarn::VarType::Float);
    number->set_key_value(0, tarn::KeyValue::number(7));
    bar()->set_current_object(script);
    click(6487);
    EXPECT_EQ(number->value_at(1.5f).part(0), 7);
    EXPECT_TRUE(script->has_key(1.5f)) << "its variables keep what they have now";
}

TEST_F(TopTimer, releases_what_is_selected_after_a_question)
{
    record_at({0});
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(6575);
    EXPECT_EQ(bar()->objects().size(), 1u);
    click(6575);
    EXPECT_EQ(m_answers.texts.last(), u"Remove animation of selection?"_s);
    EXPECT_TRUE(bar()->objects().empty());
    EXPECT_TRUE(items(6158).isEmpty());
    core().ClearDialogSelection();
    click(6575);
    EXPECT_EQ(m_answers.texts.size(), 2) << "nothing is selected";
}

TEST_F(TopTimer, the_turning_point_of_a_control_is_edited_while_the_button_is_down)
{
    click(6579);
    EXPECT_FALSE(tool<CButtonST>(6579).GetCheck()) << "a dialog does not turn";
    CDXUTControl* control = core().create_control(0, m_dialog, QRectF(0, 0, 10, 10), u"OK"_s);
    core().SelectControl(control, false);
    click(6579);
    EXPECT_TRUE(tool<CButtonST>(6579).GetCheck());
    EXPECT_EQ(animation().edited_center().id, control->id());
    click(6579);
    EXPECT_EQ(animation().edited_center().id, 0u);
}

TEST_F(TopTimer, the_target_follows_the_selection_unless_the_window_is_locked)
{
    record_at({0});
    CDXUTDialog* other = core().create_dialog(QRect(0, 0, 50, 50), u"Other"_s);
    bar()->create_object(TimerObjectType::Dialog, {other->id()});
    const auto select = [&](CDXUTDialog* dialog) {
        core().ClearDialogSelection();
        core().SelectDialog(dialog, false);
        m_world.broadcast(ui_selection_changed);
    };
    select(other);
    EXPECT_EQ(tool<QComboBox>(6158).currentIndex(), 1);
    choose(6158, 0);
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(tool<QComboBox>(6158).currentIndex(), 0) << "the same selection does not take a choice back";
    click(6200);
    select(m_dialog);
    select(other);
    EXPECT_EQ(tool<QComboBox>(6158).currentIndex(), 0);
}

TEST_F(TopTimer, the_select_tool_comes_back_by_command)
{
    m_scene->SetMTFunction(2, 0);
    tools().command(CDlgTopTimer::select_again);
    EXPECT_EQ(m_scene->mouse_function(), 0);
    EXPECT_TRUE(core().selection().editing);
    m_scene->play(true);
    tools().command(CDlgTopTimer::select_again);
    EXPECT_FALSE(core().selection().editing) << "a preview goes on";
    m_scene->play(false);
}

} // namespace tarn::test
