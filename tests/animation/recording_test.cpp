#include "animation_fixture.h"
#include "support/attributes.h"

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
    /// Writes an attribute of the thing as the author does; answers whether what is shown changed.
    bool set(const char* name, const Value& value)
    {
        const FieldBase& field = *m_thing->fields().find(name);
        const Value before = m_thing->property(field);
        EXPECT_TRUE(m_thing->set_property(field, value));
        return !(m_thing->property(field) == before);
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
    m_thing->place(50, 60);
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

    ASSERT_TRUE(test::set(*m_bar->current_object(), "flags", qint64(bit(Channel::Position))));
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
    m_thing->place(1, 2);
    record(4);
    EXPECT_EQ(place->keys().key(1), (Key{4, KeyValue::vec(1, 2, 0), 33, 2}));
}

TEST_F(RecordingTest, a_pose_is_undone_and_redone_and_goes_with_the_cursor)
{
    record(0);
    const auto shown_x = [&] {
        m_document.changes().tell();
        return m_thing->shown().x;
    };
    m_thing->place(7, 0);
    m_thing->place(8, 0);
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

TEST_F(RecordingTest, what_is_written_to_driven_attributes_is_the_poses_and_all_else_the_authors)
{
    m_thing->place(10, 20);
    record(0);
    ASSERT_TRUE(test::set(*m_bar->current_object(), "flags", qint64(bit(Channel::Position) | bit(Channel::Color))));
    m_bar->set_current_time(2);
    m_document.changes().tell();
    const QByteArray before = text();
    m_document.journal().clear();
    {
        const UserAction action(m_document.journal(), u"both"_s);
        m_thing->write<ThingState>([](ThingState& s) {
            EXPECT_EQ(s.y, 20) << "a write begins from what is shown";
            s.y += 5;
            s.name = u"named"_s;
            s.transparency = 0.5f;
        });
        EXPECT_TRUE(set("x", 50.0));
        EXPECT_TRUE(set("visible", false));
    }
    const auto poses = [&] {
        m_document.changes().tell();
        return QStringList{QString::number(m_thing->shown().x), QString::number(m_thing->shown().y),
                           m_thing->shown().name, QString::number(m_scene.unrecorded().size())};
    };
    EXPECT_EQ(poses(), (QStringList{u"50"_s, u"25"_s, u"named"_s, u"1"_s}));
    EXPECT_EQ(m_scene.unrecorded().first().channels(), bit(Channel::Position));
    EXPECT_EQ(m_thing->authored().x, 10);
    EXPECT_EQ(m_thing->authored().y, 20);
    EXPECT_EQ(m_thing->authored().transparency, 0.5f);
    EXPECT_FALSE(m_thing->authored().visible) << "the channel does not take part";
    EXPECT_EQ(m_document.journal().step_count(), 1u);
    m_document.journal().undo();
    EXPECT_EQ(poses(), (QStringList{u"10"_s, u"20"_s, u"thing"_s, u"0"_s}));
    EXPECT_EQ(text(), before);
    m_document.journal().redo();
    EXPECT_EQ(poses(), (QStringList{u"50"_s, u"25"_s, u"named"_s, u"1"_s}));
    EXPECT_EQ(m_bar->record_selection({m_thing}), 1);

    m_scene.set_editing(false);
    EXPECT_TRUE(set("x", 60.0));
    EXPECT_EQ(m_thing->authored().x, 60);
}

TEST_F(RecordingTest, a_pose_that_is_typed_is_one_step_and_one_that_is_given_up_leaves_nothing)
{
    m_thing->place(10, 20);
    record(0);
    m_document.journal().clear();
    for (const double typed : {1.0, 12.0, 120.0}) {
        const UserAction action(m_document.journal(), u"X"_s, "x", Journal::Merging::Replaces);
        EXPECT_TRUE(set("x", typed));
        EXPECT_FALSE(set("x", typed)) << "nothing changed";
    }
    EXPECT_EQ(m_thing->shown().x, 120);
    EXPECT_EQ(undo_all(), 1);
    m_document.changes().tell();
    EXPECT_EQ(m_thing->shown().x, 10);
    {
        const UserAction action(m_document.journal(), u"drag"_s);
        EXPECT_TRUE(set("x", 70.0));
        m_document.journal().cancel();
    }
    m_document.changes().tell();
    EXPECT_EQ(m_thing->shown().x, 10);
    EXPECT_TRUE(m_scene.unrecorded().isEmpty());
}

TEST_F(RecordingTest, objects_that_are_recorded_together_keep_what_each_of_them_showed)
{
    const std::vector<ModelObject*> things{m_thing, thing(), thing()};
    m_bar->record_selection(things);
    m_bar->set_current_time(4);
    for (ModelObject* each : things)
        static_cast<Thing*>(each)->place(40, 0);
    m_bar->record_selection(things);
    m_bar->set_current_time(2);
    EXPECT_EQ(m_bar->record_selection(things), 12);
    for (const ModelObject* each : things)
        EXPECT_EQ(CObjKey(*m_bar->SearchItemUsage(*each), 2).value(Channel::Position), KeyValue::vec(20, 0, 0));
}

TEST_F(RecordingTest, auto_record_writes_keys_in_the_step_of_the_edit)
{
    record(0);
    m_bar->set_current_time(3);
    m_scene.set_auto_record(true);
    m_document.journal().clear();
    const QByteArray before = text();
    for (const double place : {5.0, 6.0, 7.0}) {
        const UserAction action(m_document.journal(), u"Move"_s, "move");
        EXPECT_TRUE(set("x", place));
    }
    EXPECT_EQ(keys(Channel::Position), (Times{0, 3}));
    EXPECT_EQ(keys(Channel::Color), (Times{0}));
    EXPECT_TRUE(m_scene.unrecorded().isEmpty());
    m_document.changes().tell();
    EXPECT_EQ(m_thing->shown().x, 7);
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(text(), before);
}
