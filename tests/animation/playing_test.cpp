#include "animation_fixture.h"
#include "support/attributes.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class PlayingTest : public AnimationTest {
protected:
    PlayingTest()
    {
        for (const float time : {0.f, 1.f, 2.5f, 4.f})
            m_bar->insert_script_key(time);
    }
    /// What is heard in frames of these lengths, a bar between them.
    QString play(PlayMode mode, std::initializer_list<float> frames, float from = 0)
    {
        m_bar->active_bar(0);
        EXPECT_TRUE(set(*m_bar, "play_mode", qint64(mode)));
        m_bar->set_current_time(from);
        m_bar->active_bar(1);
        QStringList heard;
        for (const float frame : frames) {
            m_bar->frame_move(frame);
            heard << m_hearer.take();
        }
        return heard.join(u'|');
    }

    CTimebar* m_bar = m_scene.create_bar(4);
};

} // namespace

TEST_F(PlayingTest, script_keys_are_passed_once_each_in_order_however_long_a_frame_is)
{
    EXPECT_EQ(play(PlayMode::Normal, {0.5f, 0.5f, 0.4f, 2.f, 5.f, 1.f}), u"0|1||2.5|4 end|"_s);
    EXPECT_FALSE(m_bar->is_playing());
    EXPECT_EQ(m_bar->current_time(), 4);
    EXPECT_EQ(play(PlayMode::Normal, {100}), u"0 1 2.5 4 end"_s);
    EXPECT_EQ(play(PlayMode::Repeat, {3, 2, 2.f}), u"0 1 2.5|4 0 1|2.5"_s);
    EXPECT_EQ(m_bar->current_time(), 3);
    EXPECT_EQ(play(PlayMode::Repeat, {4, 0.5f}), u"0 1 2.5 4|0"_s) << "the end itself is shown";
    EXPECT_EQ(play(PlayMode::Swing, {3, 2, 4, 1}), u"0 1 2.5|4|2.5 1 0 1|"_s);
    EXPECT_EQ(play(PlayMode::ReverseOnce, {1, 3, 1}), u"4|2.5 1 0 end|"_s);
    EXPECT_EQ(play(PlayMode::ReverseRepeat, {3.5f, 1}), u"4 2.5 1|0 4"_s);
    EXPECT_EQ(play(PlayMode::Normal, {1.f}, 2.5f), u"2.5"_s) << "the one where it begins, too";
    EXPECT_EQ(play(PlayMode::Normal, {1.f}, 4), u"0 1"_s) << "from the end it begins anew";
    m_bar->set_speed(0.5f);
    EXPECT_EQ(play(PlayMode::Normal, {1.f, 1.f}), u"0|1"_s);
    EXPECT_EQ(play(PlayMode::Repeat, {1e30f}).count(u'0'), 2) << "an endless frame ends all the same";
}

TEST_F(PlayingTest, a_bar_without_length_ends_at_once)
{
    m_bar->set_total_length(0);
    for (const PlayMode mode : {PlayMode::Normal, PlayMode::Repeat, PlayMode::Swing, PlayMode::ReverseRepeat})
        EXPECT_EQ(play(mode, {0, 1}), u"0 end|"_s);
}

TEST_F(PlayingTest, a_preview_begins_with_the_bars_that_play_by_themselves_and_leaves_the_times_as_they_were)
{
    m_bar->set_current_time(2);
    ASSERT_TRUE(set(*m_bar, "auto_play", true));
    CTimebar* other = m_scene.create_bar(9);
    CTCommandScript* command = other->create_script_object();
    command->set_script(u"blink(1)"_s);
    const QByteArray before = text();
    m_scene.set_running(true);
    EXPECT_TRUE(m_bar->is_playing());
    EXPECT_FALSE(other->is_playing());
    m_scene.frame_move(1);
    EXPECT_EQ(m_hearer.take(), u"0 1"_s);
    other->active_bar(1);
    m_scene.frame_move(1);
    EXPECT_EQ(m_hearer.take(), u"blink(1)"_s);
    m_scene.set_running(false);
    EXPECT_EQ(m_bar->current_time(), 2);
    EXPECT_EQ(other->current_time(), 0);
    EXPECT_FALSE(m_bar->is_playing());
    m_scene.frame_move(1);
    EXPECT_EQ(m_hearer.take(), QString());
    EXPECT_EQ(text(), before);
}

TEST_F(PlayingTest, whoever_hears_of_a_script_key_may_remove_the_bar)
{
    class Remover final : public AnimationListener {
    public:
        explicit Remover(CAnimationScene& scene) : m_scene(scene) {}
        void script_key_passed(CTimebar& bar, float, const QString&) override
        {
            ++heard;
            m_scene.remove_bar(&bar);
            m_scene.document().forget_history();
        }
        void command_due(CTCommandScript&) override {}
        void bar_ended(CTimebar&) override {}
        int heard = 0;

    private:
        CAnimationScene& m_scene;
    } remover(m_scene);
    m_scene.set_listener(&remover);
    m_scene.set_running(true);
    m_bar->active_bar(1);
    m_scene.frame_move(10);
    m_scene.frame_move(10);
    EXPECT_EQ(remover.heard, 1);
}

TEST_F(PlayingTest, a_command_makes_the_variables_that_it_names_and_follows_their_names)
{
    CTCommandScript* command = m_bar->create_script_object();
    command->set_script(u"blink(life, 'life', mana * (life + 1), math.floor(mana))"_s);
    command->create_var(VarType::Int, u"mana"_s);
    command->analyze_script();
    ASSERT_EQ(command->variables().size(), 2u) << "what is named and not there is made";
    EXPECT_EQ(command->variables()[1]->name(), u"life"_s);
    EXPECT_TRUE(command->rename_var(command->variables()[1], u"生命"_s));
    EXPECT_EQ(command->script(), u"blink(生命, 'life', mana * (生命 + 1), math.floor(mana))"_s);
    command->analyze_script();
    EXPECT_EQ(command->variables().size(), 2u);
}

TEST_F(PlayingTest, a_command_runs_when_the_bar_begins_and_when_a_variable_has_another_value)
{
    CTCommandScript* command = m_bar->create_script_object();
    command->set_script(u"show(life)"_s);
    m_scene.set_running(true);
    m_bar->active_bar(1);
    const auto runs = [&] {
        m_scene.frame_move(0.25f);
        return m_hearer.take().count(u"show"_s);
    };
    EXPECT_EQ(runs(), 1) << "without variables";
    EXPECT_EQ(runs(), 0);
    CTVar* life = command->create_var(VarType::Int, u"life"_s);
    life->set_key_value(0, KeyValue::whole(3));
    EXPECT_EQ(runs(), 1);
    EXPECT_EQ(runs(), 0);
    life->set_key_value(0, KeyValue::whole(4));
    EXPECT_EQ(runs(), 1);
    m_bar->active_bar(1, 1);
    EXPECT_EQ(runs(), 1);
}

TEST_F(PlayingTest, a_part_repeats_while_the_author_plays_and_not_in_a_preview)
{
    EXPECT_TRUE(m_bar->set_loop(1, 2));
    EXPECT_TRUE(m_bar->has_loop());
    m_bar->active_bar(1, 1);
    m_scene.frame_move(0.25f);
    EXPECT_EQ(m_bar->current_time(), 1.25f) << "from its begin";
    m_scene.frame_move(10);
    EXPECT_EQ(m_bar->current_time(), 1.25f);
    EXPECT_TRUE(m_bar->is_playing());
    ASSERT_TRUE(set(*m_bar, "play_mode", qint64(PlayMode::ReverseOnce)));
    m_bar->active_bar(1, 1);
    m_scene.frame_move(1.5f);
    EXPECT_EQ(m_bar->current_time(), 1.5f);
    ASSERT_TRUE(set(*m_bar, "play_mode", qint64(PlayMode::Normal)));
    m_scene.set_running(true);
    m_bar->active_bar(1, 1);
    m_scene.frame_move(100);
    EXPECT_EQ(m_bar->current_time(), m_bar->get_total_length());
    EXPECT_FALSE(m_bar->is_playing());
    m_scene.set_running(false);
    m_bar->set_loop(3, 3);
    EXPECT_FALSE(m_bar->has_loop());
}

TEST_F(PlayingTest, what_is_muted_or_beside_a_solo_drives_nothing_until_a_preview)
{
    Thing* first = thing();
    Thing* second = thing();
    CTimerObject* first_timer = timer(m_bar, first);
    CTimerObject* second_timer = timer(m_bar, second);
    for (CTimerObject* object : {first_timer, second_timer})
        with_keys(object, Channel::Position, {{0, 5}});
    m_scene.set_editing(true);
    const auto shown = [&] {
        m_scene.show_frame();
        return QStringLiteral("%1 %2").arg(double(first->shown().x)).arg(double(second->shown().x));
    };
    const QByteArray saved = text();
    EXPECT_EQ(shown(), u"5 5"_s);
    m_scene.set_muted(first_timer->id(), true);
    EXPECT_EQ(shown(), u"0 5"_s);
    m_scene.set_muted(first_timer->id(), false);
    m_scene.set_solo(first_timer->id(), true);
    EXPECT_EQ(shown(), u"5 0"_s);
    m_scene.set_muted(first_timer->id(), true);
    EXPECT_EQ(shown(), u"0 0"_s) << "muted wins";
    EXPECT_EQ(text(), saved);
    m_scene.set_running(true);
    m_bar->active_bar(1);
    EXPECT_EQ(shown(), u"5 5"_s);
}
