#include "animation_fixture.h"
#include "support/attributes.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class EvaluationTest : public AnimationTest {
protected:
    CTimebar* m_bar = m_scene.create_bar(10);
    Thing* m_thing = thing();
    CTimerObject* m_timer = timer(m_bar, m_thing);
};

} // namespace

TEST_F(EvaluationTest, what_is_shown_is_what_the_variables_have_at_any_time)
{
    const CTVar* place = with_keys(m_timer, Channel::Position, {{0, 0}, {2, 100}, {5, -40}, {10, 7}});
    CTVar* alpha = with_keys(m_timer, Channel::Transparency, {{1, 0}, {9, 1}});
    alpha->set_key_ease(9, 80);
    const CTVar* color = with_keys(m_timer, Channel::Color, {{0, 0x00ff00}, {10, 0xff0000}});
    const CTVar* shows = with_keys(m_timer, Channel::Show, {{0, 1}, {4, 0}, {6, 1}});
    m_scene.set_editing(true);
    const QByteArray before = text();
    for (int i = 0; i <= 400; ++i) {
        const float time = float(i % 7 ? i * 37 % 401 : i) / 40; // forward, back and by leaps
        m_bar->set_current_time(time);
        const ThingState& shown = m_thing->shown();
        ASSERT_EQ(shown.x, place->value_at(time).part(0));
        ASSERT_EQ(shown.y, place->value_at(time).part(1));
        ASSERT_EQ(shown.transparency, alpha->value_at(time).part(0));
        ASSERT_EQ(shown.color, color->value_at(time).as_color());
        ASSERT_EQ(shown.visible, shows->value_at(time).as_int() != 0);
    }
    m_bar->set_current_time(99);
    EXPECT_EQ(m_bar->current_time(), 10);
    EXPECT_EQ(m_thing->shown().x, 7);
    m_scene.set_editing(false);
    EXPECT_EQ(m_thing->shown().x, 0);
    EXPECT_EQ(text(), before) << "showing changes no byte of a save";
}

TEST_F(EvaluationTest, the_derivative_is_the_slope_of_the_value)
{
    CTVar* place = with_keys(m_timer, Channel::Position, {{0, 0}, {4, 10}, {6, -10}});
    place->set_key_ease(4, -60);
    place->set_key_ease(6, 30);
    constexpr float h = 0.005f;
    for (const float time : {0.5f, 1.f, 3.f, 3.9f, 4.5f, 5.5f})
        for (const int part : {0, 1, 2}) {
            const float slope = (place->value_at(time + h).part(part) - place->value_at(time - h).part(part)) / (2 * h);
            EXPECT_NEAR(place->get_derivative(time, part), slope, 0.02 * std::max(1.f, std::abs(slope))) << time;
        }
    EXPECT_EQ(place->get_derivative(7), 0);
    EXPECT_EQ(place->get_derivative(6), 0);
}

TEST_F(EvaluationTest, what_changes_a_bar_is_shown_once_the_model_tells)
{
    CTVar* place = with_keys(m_timer, Channel::Position, {{0, 5}});
    m_scene.set_editing(true);
    EXPECT_EQ(m_thing->shown().x, 5);
    const auto told_x = [&] {
        m_document.changes().tell();
        return m_thing->shown().x;
    };
    place->set_key_value(0, KeyValue::vec(8, 0, 0));
    EXPECT_EQ(told_x(), 8);
    m_document.journal().undo();
    EXPECT_EQ(told_x(), 5);
    ASSERT_TRUE(set(*m_timer, "flags", qint64(chosen_channels & ~bit(Channel::Position))));
    EXPECT_EQ(told_x(), 0) << "a channel that takes no part is shown as authored";
    ASSERT_TRUE(set(*m_timer, "flags", qint64(chosen_channels)));
    EXPECT_EQ(told_x(), 5);
    m_bar->remove_obj(m_timer);
    EXPECT_EQ(told_x(), 0);
    m_document.journal().undo();
    EXPECT_EQ(told_x(), 5);
    m_scene.set_current_bar(nullptr);
    EXPECT_EQ(told_x(), 0);
    m_thing->place(3, 0);
    m_scene.set_current_bar(m_bar);
    EXPECT_EQ(m_thing->shown().x, 5);
    EXPECT_EQ(m_thing->authored().x, 3);
}

TEST_F(EvaluationTest, the_higher_bar_wins_where_both_drive_a_channel)
{
    CTimebar* lower = m_scene.create_bar(10);
    CTimerObject* other = timer(lower, m_thing);
    with_keys(m_timer, Channel::Position, {{0, 1}});
    with_keys(other, Channel::Position, {{0, 2}});
    with_keys(other, Channel::Transparency, {{0, 0.5f}});
    m_scene.set_running(true);
    m_bar->active_bar(1);
    lower->active_bar(1);
    m_scene.frame_move(0.1f);
    EXPECT_EQ(m_thing->shown().x, 1);
    EXPECT_EQ(m_thing->shown().transparency, 0.5f);
    EXPECT_EQ(m_scene.driver_of(m_thing->id(), Channel::Position), m_bar);
    EXPECT_EQ(m_scene.driver_of(m_thing->id(), Channel::Transparency), lower);
    EXPECT_EQ(m_scene.driver_of(m_thing->id(), Channel::Color), nullptr);
    EXPECT_TRUE(m_scene.move_up(lower));
    m_scene.frame_move(0.1f);
    EXPECT_EQ(m_thing->shown().x, 2);
    lower->active_bar(0);
    m_scene.frame_move(0.1f);
    EXPECT_EQ(m_thing->shown().x, 1);
    m_bar->active_bar(0);
    m_scene.frame_move(0.1f);
    EXPECT_EQ(m_thing->shown().x, 1) << "what stopped leaves its last values";
    lower->set_current_time(1);
    EXPECT_EQ(m_thing->shown().x, 2) << "a bar that does not play can be shown at a time";
}

TEST_F(EvaluationTest, a_target_that_is_gone_leaves_its_timer_object_and_comes_back)
{
    with_keys(m_timer, Channel::Position, {{0, 5}});
    m_scene.set_editing(true);
    EXPECT_EQ(m_timer->name(), u"thing"_s);
    ModelObject* gone = m_thing;
    {
        const UserAction action(m_document.journal());
        m_document.detach({&gone, 1});
    }
    m_document.changes().tell();
    EXPECT_TRUE(m_timer->is_broken());
    EXPECT_EQ(m_timer->target().id, gone->id());
    m_bar->set_current_time(1);
    Thing* other = thing(u"other"_s);
    m_timer->set_target({other->id()});
    m_document.changes().tell();
    EXPECT_FALSE(m_timer->is_broken());
    EXPECT_EQ(other->shown().x, 5);
    undo_all();
    EXPECT_TRUE(m_scene.bars().empty());
}
