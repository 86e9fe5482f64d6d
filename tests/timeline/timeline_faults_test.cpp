#include "timeline_fixture.h"

#include "timeline/dlg_top_timer.h"
#include "timeline/timeline_tips.h"

namespace tarn::test {

namespace {

class TimelineFaults : public TimelineTest {
protected:
    void SetUp() override
    {
        TimelineTest::SetUp();
        m_button = core().create_control(DXUT_CONTROL_BUTTON, m_dialog, QRectF(5, 30, 150, 30));
        m_scene->document().forget_history();
        m_world.broadcast(ui_timebars_changed);
    }
    /// On a screen that the dialog leaves at about one and a half seconds.
    std::vector<SceneModel::Problem> check()
    {
        EXPECT_TRUE(m_scene->model().check_layout({QSize(160, 200)}, {}).ok());
        m_world.broadcast(ui_timebars_changed);
        return m_scene->layout_problems();
    }
    CStaticTimer& shown() { return *dynamic_cast<CDlgTopTimer*>(page(u"CDlgTopTimer"_s))->timeline(); }

    CDXUTControl* m_button = nullptr;
};

} // namespace

TEST_F(TimelineFaults, a_check_leaves_the_scene_alone_and_the_ruler_has_a_tick_for_what_it_found)
{
    {
        const UserAction action(journal(), u"Move"_s);
        m_dialog->SetLocation(33, 44);
    }
    const QPoint pose = m_dialog->rect().topLeft();
    const auto before = m_scene->animation().unrecorded().keys();
    ASSERT_FALSE(before.isEmpty());
    const auto found = check();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found.front().object, m_button);
    EXPECT_EQ(found.front().timebar, m_bar->id());
    const float began = found.front().time;
    EXPECT_TRUE(found.front().text.contains(QString::number(double(began))));
    EXPECT_EQ(m_dialog->rect().topLeft(), pose);
    EXPECT_EQ(m_scene->animation().unrecorded().keys(), before) << "what was not recorded is still there";
    const auto& faults = shown().view().faults;
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults.front().time, found.front().time);

    m_timeline.set_faults(faults);
    const int x = int(m_timeline.pixel_from_time(faults.front().time)) + 2;
    EXPECT_TRUE(timeline_tip(m_timeline.view(), x, 3).contains(m_button->name()));
    EXPECT_TRUE(timeline_tip(m_timeline.view(), x + 20, 3).isEmpty());
    press(x, 3);
    EXPECT_EQ(m_timeline.current_time(), faults.front().time);
    EXPECT_TRUE(m_timeline.selected_keys().empty());

    for (const float time : {began - 0.02f, began}) {
        m_scene->model().show_time(m_bar->id(), time);
        EXPECT_EQ(m_button->screen_bounds().left() >= 160, time == began) << time;
    }
}

TEST_F(TimelineFaults, ticks_go_with_their_object_their_timebar_and_their_scene)
{
    ASSERT_EQ(check().size(), 1u);
    m_scene->model().show_time(m_bar->id(), 2.5F);
    m_world.broadcast(ui_timebars_changed);
    EXPECT_EQ(shown().current_time(), 2.5F);
    (void)m_animation->create_bar(5, u"Other"_s);
    m_world.broadcast(ui_timebars_changed);
    EXPECT_TRUE(shown().view().faults.empty()) << "another timebar is shown";
    m_scene->model().show_time(m_bar->id(), 0);
    core().remove_control(m_button);
    m_world.broadcast(ui_timebars_changed);
    EXPECT_TRUE(shown().view().faults.empty());
    m_scene->journal().undo();
    EXPECT_EQ(m_scene->layout_problems().size(), 1u);
    bool goes_on = false;
    const Progress::Tell tell = [&](double) { return goes_on; };
    EXPECT_TRUE(is_stopped(m_scene->model().check_layout({QSize(1000, 1000)}, Progress(tell))));
    EXPECT_EQ(m_scene->layout_problems().size(), 1u) << "a check that was stopped changes nothing";
    goes_on = true;
    EXPECT_TRUE(m_scene->model().check_layout({QSize(1000, 1000)}, Progress(tell)).ok());
    EXPECT_TRUE(m_scene->layout_problems().empty());
    ASSERT_EQ(check().size(), 1u);
    m_scene->new_scene();
    EXPECT_TRUE(m_scene->layout_problems().empty());
}

} // namespace tarn::test
