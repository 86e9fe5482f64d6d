#include "animation_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class RecordingTest : public AnimationTest {
protected:
    RecordingTest() { m_scene.set_editing(true); }
    int record(float time)
    {
        if (m_bar->current_time() != time)
            m_bar->set_current_time(time);
        return m_bar->record_selection({m_thing});
    }
    std::vector<float> keys(Channel channel) const
    {
        const CTimerObject* timer = m_bar->SearchItemUsage(*m_thing);
        const CTVar* variable = timer ? timer->channel_variable(channel) : nullptr;
        return variable ? times(variable) : std::vector<float>();
    }
    using Times = std::vector<float>;

    CTimebar* m_bar = m_scene.create_bar(10);
    Thing* m_thing = thing();
};

} // namespace

TEST_F(RecordingTest, first_all_channels_are_written_later_what_changed_and_all_when_nothing_did)
{
    m_thing->place(10, 20);
    EXPECT_EQ(record(0), 4);
    EXPECT_EQ(m_bar->current_object(), m_bar->SearchItemUsage(*m_thing));
    EXPECT_EQ(m_bar->objects().size(), 1u);
    EXPECT_EQ(m_scene.driver_of(m_thing->id(), Channel::Position), m_bar);

    m_bar->set_current_time(2);
    EXPECT_TRUE(m_scene.set_unrecorded(m_thing->id(), Channel::Position, KeyValue::vec(50, 60, 0)));
    EXPECT_EQ(m_thing->shown().x, 50);
    EXPECT_EQ(m_thing->authored().x, 10);
    EXPECT_EQ(record(2), 1);
    EXPECT_EQ(keys(Channel::Position), (Times{0, 2}));
    EXPECT_EQ(keys(Channel::Color), (Times{0}));
    EXPECT_TRUE(m_scene.unrecorded().isEmpty());
    EXPECT_EQ(m_thing->shown().x, 50);

    EXPECT_EQ(record(5), 4);
    EXPECT_EQ(keys(Channel::Color), (Times{0, 5}));
    m_bar->set_current_time(1);
    EXPECT_EQ(m_thing->shown().x, 30);
    EXPECT_EQ(m_thing->authored().x, 10);

    m_bar->current_object()->set_flags(bit(Channel::Position));
    m_document.changes().tell();
    EXPECT_EQ(record(6), 1) << "only what takes part";
}

TEST_F(RecordingTest, a_key_that_is_recorded_again_keeps_its_ease_and_group)
{
    record(0);
    record(4);
    CTVar* place = m_bar->current_object()->channel_variable(Channel::Position);
    place->set_key_ease(4, 33);
    place->set_key_group(4, 2);
    m_bar->set_current_time(4);
    m_scene.set_unrecorded(m_thing->id(), Channel::Position, KeyValue::vec(1, 2, 3));
    record(4);
    EXPECT_EQ(place->keys().key(1), (Key{4, KeyValue::vec(1, 2, 3), 33, 2}));
}

TEST_F(RecordingTest, a_pose_is_undone_and_redone_and_goes_with_the_cursor)
{
    record(0);
    EXPECT_FALSE(m_scene.set_unrecorded(m_thing->id(), Channel::Rotation, KeyValue::vec(1, 0, 0)))
        << "nothing drives that";
    EXPECT_FALSE(m_scene.set_unrecorded(m_thing->id(), Channel::Position, KeyValue::number(1)));
    const auto shown_x = [&] {
        m_document.changes().tell();
        return m_thing->shown().x;
    };
    m_scene.set_unrecorded(m_thing->id(), Channel::Position, KeyValue::vec(7, 0, 0));
    m_scene.set_unrecorded(m_thing->id(), Channel::Position, KeyValue::vec(8, 0, 0));
    EXPECT_EQ(shown_x(), 8);
    m_document.journal().undo();
    EXPECT_EQ(shown_x(), 7);
    m_document.journal().redo();
    EXPECT_EQ(shown_x(), 8);
    const QByteArray before = text();
    m_bar->set_current_time(1, 0);
    EXPECT_EQ(shown_x(), 8) << "a cursor that moves alone leaves it";
    m_bar->set_current_time(1);
    EXPECT_EQ(shown_x(), 0);
    EXPECT_EQ(text(), before) << "and it is in no package";
    undo_all();
    EXPECT_EQ(shown_x(), 0);
    EXPECT_TRUE(m_scene.bars().empty());
    while (m_document.journal().redo())
        ;
    EXPECT_EQ(text(), before);
}

TEST_F(RecordingTest, recording_is_one_step)
{
    const QByteArray before = text();
    m_document.journal().clear();
    record(3);
    EXPECT_EQ(m_document.journal().step_count(), 1u);
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(text(), before);
}
