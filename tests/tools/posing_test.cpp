// The mouse and the arrow keys on what a timebar drives.

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/authored.h"
#include "core/field.h"
#include "gui_core/dxut_control.h"
#include "mouse_fixture.h"
#include "tools/hit_test.h"

namespace tarn::test {

namespace {

class Posing : public MouseToolsTest {
protected:
    void SetUp() override
    {
        m_home = home();
        m_button = button(m_home, {20, 20, 80, 30});
        m_bar = m_scene.animation().create_bar(4);
        m_scene.animation().set_editing(true);
        m_bar->record_selection({m_home, m_button});
        m_bar->set_current_time(2);
        m_scene.document().forget_history();
    }
    double authored_x(const ModelObject& object)
    {
        const Value x = Authored::property(object, *object.fields().find("x"));
        return std::holds_alternative<qint64>(x) ? double(std::get<qint64>(x)) : std::get<double>(x);
    }
    void tell() { m_scene.document().changes().tell(); }

    CDXUTDialog* m_home = nullptr;
    CDXUTControl* m_button = nullptr;
    CTimebar* m_bar = nullptr;
};

} // namespace

TEST_F(Posing, a_drag_moves_the_pose_from_where_it_is_seen)
{
    core().SelectDialog(m_home, false);
    drag({300, 110}, {350, 140});
    EXPECT_EQ(m_home->rect().topLeft(), QPoint(150, 130));
    drag({350, 140}, {360, 140});
    EXPECT_EQ(m_home->rect().topLeft(), QPoint(160, 130)) << "not from where it was authored";
    EXPECT_EQ(authored_x(*m_home), 100);
    EXPECT_EQ(m_scene.journal().step_count(), 2u);
    drag({360, 140}, {500, 300}, false);
    escape();
    tell();
    EXPECT_EQ(m_home->rect().topLeft(), QPoint(160, 130));
    m_scene.journal().undo();
    tell();
    EXPECT_EQ(m_home->rect().topLeft(), QPoint(150, 130));
    m_bar->set_current_time(2);
    EXPECT_EQ(m_home->rect().topLeft(), QPoint(100, 100)) << "time moved";
}

TEST_F(Posing, what_is_driven_and_what_is_not_move_together_in_one_step)
{
    CDXUTControl* plain = control(0, m_home, {200, 20, 80, 30});
    m_bar->set_current_time(2);
    core().SelectControls({m_button, plain});
    m_scene.document().forget_history();
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Right);
    EXPECT_EQ(m_button->rect().x(), 23);
    EXPECT_EQ(plain->rect().x(), 203);
    EXPECT_EQ(authored_x(*m_button), 20);
    EXPECT_EQ(authored_x(*plain), 203);
    EXPECT_EQ(m_scene.journal().step_count(), 1u);
    EXPECT_EQ(m_bar->record_selection({m_button}), 1);
    EXPECT_EQ(undo_all(), 2);
    tell();
    EXPECT_EQ(m_button->rect().x(), 20);
    EXPECT_EQ(plain->rect().x(), 200);
}

TEST_F(Posing, a_handle_changes_the_size_of_the_pose_alone)
{
    core().SelectControl(m_button, false);
    const QRectF frame = m_button->screen_rect();
    drag(frame.bottomRight(), frame.bottomRight() + QPointF(20, 10));
    EXPECT_EQ(m_button->rect(), QRectF(20, 20, 100, 40));
    EXPECT_EQ(m_scene.animation().unrecorded().value(m_button->id()).channels(), bit(Channel::Scale));
    m_scene.animation().set_editing(false);
    EXPECT_EQ(m_button->rect(), QRectF(20, 20, 80, 30));
}

TEST_F(Posing, what_is_faded_out_is_not_under_the_mouse)
{
    const QPointF middle = m_button->screen_rect().center();
    EXPECT_EQ(targets_at(core(), middle).front().control, m_button);
    ASSERT_TRUE(m_button->set_property(*m_button->fields().find("transparency"), 1.0));
    EXPECT_EQ(targets_at(core(), middle).front().control, nullptr);
    ASSERT_TRUE(m_home->set_property(*m_home->fields().find("color"), qint64(0x00ffffff)));
    EXPECT_TRUE(targets_at(core(), middle).empty());
}

} // namespace tarn::test
