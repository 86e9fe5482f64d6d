#include "animation_fixture.h"

#include "animation/key_drag.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class TimebarTest : public AnimationTest {
protected:
    using Times = std::vector<float>;

    CTimebar* m_bar = m_scene.create_bar(10);
    Thing* m_thing = thing();
    CTimerObject* m_timer = timer(m_bar, m_thing);
    CTVar* m_x = with_keys(m_timer, Channel::Position, {{0, 0}, {1, 1}, {2, 2}, {4, 4}});
    CTVar* m_alpha = with_keys(m_timer, Channel::Transparency, {{0, 0}, {2, 1}, {6, 0}});
};

} // namespace

TEST_F(TimebarTest, keys_move_together_but_first_ones_stay_and_what_stands_there_gives_way)
{
    EXPECT_TRUE(m_bar->change_key_time(KeyKind::Key, 2, 3));
    EXPECT_EQ(times(m_x), (Times{0, 1, 3, 4}));
    EXPECT_EQ(times(m_alpha), (Times{0, 3, 6}));
    EXPECT_TRUE(m_bar->change_key_time(KeyKind::Key, 3, 4));
    EXPECT_EQ(times(m_x), (Times{0, 1, 4}));
    EXPECT_EQ(m_x->value_at(4).part(0), 2) << "the moved one";
    EXPECT_FALSE(m_bar->change_key_time(KeyKind::Key, 0, 5));
    EXPECT_FALSE(m_bar->change_key_time(KeyKind::Key, 1, 0));
    EXPECT_FALSE(m_bar->change_key_time(KeyKind::Key, 1.5f, 2));
    EXPECT_FALSE(m_bar->change_key_time(KeyKind::Key, 1, -2));
    m_timer->set_current_variable(m_x);
    m_bar->set_current_object(m_timer);
    EXPECT_TRUE(m_bar->change_key_time(KeyKind::Key, 4, 5));
    EXPECT_EQ(times(m_alpha), (Times{0, 4, 6})) << "not of the current variable";
    EXPECT_FALSE(m_x->remove_key(0));
    EXPECT_TRUE(m_x->remove_key(1));
    EXPECT_FALSE(m_x->remove_key(1));
}

TEST_F(TimebarTest, script_keys_move_by_themselves_and_never_onto_another)
{
    m_bar->insert_script_key(1);
    m_bar->insert_script_key(2);
    EXPECT_FALSE(m_bar->change_key_time(KeyKind::Script, 1, 2));
    EXPECT_FALSE(m_bar->change_key_time(KeyKind::Script, 4, 5));
    const QString name = m_bar->get_script_name(1);
    EXPECT_TRUE(m_bar->change_key_time(KeyKind::Script, 1, 3));
    EXPECT_EQ(m_bar->get_script_name(3), name);
    EXPECT_EQ(m_bar->script_key_times(), (Times{2, 3}));
    EXPECT_EQ(times(m_x), (Times{0, 1, 2, 4}));
    EXPECT_EQ(m_bar->get_script_name(1), QString());
}

TEST_F(TimebarTest, a_drag_counts_from_where_it_began)
{
    KeySelection keys{{m_x, {0, 1, 2}}, {m_alpha, {2}}};
    const UserAction action(m_document.journal());
    KeyDrag drag(keys);
    EXPECT_TRUE(drag.move(3));
    EXPECT_EQ(times(m_x), (Times{0, 4, 5}));
    EXPECT_TRUE(drag.move(0.5f));
    EXPECT_EQ(times(m_x), (Times{0, 1.5f, 2.5f, 4})) << "what had given way is there again";
    EXPECT_EQ(drag.keys().at(m_x), (Times{0, 1.5f, 2.5f}));
    EXPECT_EQ(times(m_alpha), (Times{0, 2.5f, 6}));
    drag.stretch(2, -1);
    EXPECT_EQ(times(m_x), (Times{0, 2, 3, 4}));
    EXPECT_EQ(m_x->value_at(3).part(0), 1) << "mirrored";
    drag.stretch(1, 0);
    EXPECT_EQ(times(m_x).size(), 4u) << "none is lost where all come to one place";
    drag.move(-50);
    EXPECT_EQ(times(m_x).size(), 4u);
    EXPECT_EQ(times(m_x).front(), 0);
    EXPECT_EQ(m_x->value_at(0).part(0), 0) << "the first key stays the first";
    drag.move(0);
    EXPECT_EQ(times(m_x), (Times{0, 1, 2, 4}));
}

TEST_F(TimebarTest, time_is_inserted_and_removed_with_all_that_stands_there)
{
    m_bar->insert_script_key(2);
    m_bar->insert_script_key(6);
    CTimeMark* marker = m_bar->create_mark(5, 0, u"marker"_s);
    CTimeMark* section = m_bar->create_mark(1, 3, u"section"_s);
    EXPECT_TRUE(m_bar->insert_time(2, 1.5f));
    EXPECT_EQ(times(m_x), (Times{0, 1, 3.5f, 5.5f}));
    EXPECT_EQ(m_bar->script_key_times(), (Times{3.5f, 7.5f}));
    EXPECT_EQ(marker->time(), 6.5f);
    EXPECT_EQ(section->end(), 5.5f);
    EXPECT_EQ(m_bar->get_total_length(), 11.5f);
    EXPECT_FALSE(m_bar->insert_time(0, max_time));
    EXPECT_FALSE(m_bar->insert_time(0, 0));
    EXPECT_FALSE(m_bar->insert_time(0, -1));

    EXPECT_TRUE(m_bar->remove_region(1, 5.5f));
    EXPECT_EQ(times(m_x), (Times{0, 1}));
    EXPECT_EQ(m_x->value_at(1).part(0), 4) << "the key at the end of the section closes up";
    EXPECT_EQ(m_bar->script_key_times(), (Times{3}));
    EXPECT_EQ(marker->time(), 2);
    EXPECT_FALSE(section->is_attached());
    EXPECT_EQ(m_bar->get_total_length(), 11.5f);
    EXPECT_FALSE(m_bar->remove_region(3, 3));

    EXPECT_TRUE(m_bar->remove_region(0, 0.5f));
    EXPECT_EQ(times(m_x), (Times{0, 0.5f})) << "a first key stays";
    EXPECT_TRUE(m_bar->remove_region(0, 0.5f));
    EXPECT_EQ(times(m_x), (Times{0})) << "unless another takes its place";
    EXPECT_EQ(m_x->value_at(0).part(0), 4);
}

TEST_F(TimebarTest, another_bar_is_inserted_into_objects_and_variables_that_are_alike)
{
    CTimebar* other = m_scene.create_bar(2, u"other"_s);
    with_keys(timer(other, m_thing), Channel::Position, {{0, 50}, {2, 60}, {3, 70}});
    CTCommandScript* command = other->create_script_object();
    command->set_script(u"blink()"_s);
    command->create_var(VarType::Color, u"tint"_s)->set_key_value(1, KeyValue::color(5));
    other->insert_script_key(1, u"shared"_s);
    (void)m_functions.set_function(other->insert_script_key(2)->function(), u"return 1"_s);
    other->create_mark(1, 1, u"here"_s);
    EXPECT_FALSE(m_bar->insert_timerbar(1, *m_bar));
    ASSERT_TRUE(m_bar->insert_timerbar(1, *other));
    EXPECT_EQ(m_bar->get_total_length(), 12);
    EXPECT_EQ(times(m_x), (Times{0, 1, 3, 4, 6}));
    EXPECT_EQ(m_x->value_at(1).part(0), 50);
    EXPECT_EQ(m_x->value_at(3).part(0), 1) << "the bar's own key stays";
    ASSERT_EQ(m_bar->objects().size(), 2u);
    EXPECT_EQ(m_bar->objects()[1]->name(), u"blink()"_s);
    EXPECT_EQ(times(m_bar->objects()[1]->find_variable(u"tint"_s, VarType::Color)), (Times{2}));
    EXPECT_EQ(m_bar->get_script_name(2), u"shared"_s);
    EXPECT_NE(m_bar->get_script_name(3), other->get_script_name(2)) << "a function of its own";
    EXPECT_EQ(m_functions.find_function(m_bar->get_script_name(3))->text(), u"return 1"_s);
    EXPECT_EQ(m_bar->marks().front()->time(), 2);
    const QString copied = m_bar->get_script_name(3);
    m_document.journal().undo();
    EXPECT_FALSE(m_functions.find_function(copied)) << "it goes and comes with the step";
    m_document.journal().redo();
    EXPECT_EQ(m_functions.find_function(copied)->text(), u"return 1"_s);
}

TEST_F(TimebarTest, next_and_previous_keys_and_spans_are_those_of_all_variables)
{
    EXPECT_EQ(m_bar->get_next_action_key_frame(2), 4);
    EXPECT_EQ(m_bar->get_next_action_key_frame(6), std::nullopt);
    EXPECT_EQ(m_bar->get_pre_action_key_frame(4), 2);
    EXPECT_EQ(m_bar->get_pre_action_key_frame(0), std::nullopt);
    EXPECT_EQ(m_timer->get_time_belone(4), std::pair(4.f, 6.f));
    EXPECT_EQ(m_timer->get_time_belone(5), std::pair(4.f, 6.f));
    EXPECT_EQ(m_timer->get_time_belone(6), std::nullopt);
    EXPECT_TRUE(m_timer->set_key_ease(2, 200));
    EXPECT_EQ(m_alpha->get_ease(2), 100);
    EXPECT_EQ(m_timer->get_ease(2), 100);
    EXPECT_FALSE(m_timer->set_key_ease(3, 1));
    m_bar->set_current_object(m_timer);
    m_timer->set_current_variable(m_alpha);
    EXPECT_EQ(m_bar->get_next_action_key_frame(2), 6);
}

TEST_F(TimebarTest, keys_are_grouped_and_a_group_is_found_again)
{
    const KeySelection keys{{m_x, {1, 4}}, {m_alpha, {6}}};
    EXPECT_TRUE(m_bar->keys_of_group(3).empty());
    EXPECT_TRUE(m_bar->set_key_group(keys, 3));
    EXPECT_EQ(m_bar->keys_of_group(3), keys);
    EXPECT_EQ(m_bar->keys_of_group(-1), (KeySelection{{m_x, {0, 2}}, {m_alpha, {0, 2}}}));
    EXPECT_TRUE(m_bar->remove_keys({{m_x, {0, 1, 3, 4}}}));
    EXPECT_EQ(times(m_x), (Times{0, 2})) << "the first one stays, the others are removed all the same";
    EXPECT_TRUE(m_bar->set_keys_ease({{m_x, {2}}}, -20));
    EXPECT_EQ(m_x->get_ease(2), -20);
}

TEST_F(TimebarTest, a_script_key_has_a_function_of_its_own_that_goes_with_it)
{
    CScriptKey* key = m_bar->insert_script_key(1);
    EXPECT_EQ(m_bar->insert_script_key(1, u"other"_s), key) << "one at each time";
    EXPECT_EQ(m_bar->insert_script_key(-1), nullptr);
    const QString name = key->function();
    EXPECT_TRUE(name.endsWith(QString::number(key->id())));
    (void)m_functions.set_function(name, u"a"_s);
    (void)m_functions.set_function(u"mine"_s, u"b"_s);
    m_bar->insert_script_key(2, u"mine"_s);
    EXPECT_FALSE(m_bar->remove_script_key(5));
    EXPECT_TRUE(m_bar->remove_script_keys({1, 2}));
    EXPECT_FALSE(m_functions.find_function(name));
    EXPECT_TRUE(m_functions.find_function(u"mine"_s)) << "not made for the key";
    m_document.journal().undo();
    EXPECT_EQ(m_bar->get_script_name(1), name);
    EXPECT_EQ(m_functions.find_function(name)->text(), u"a"_s);
    (void)m_functions.set_function(name, u"edited"_s);
    m_document.journal().redo();
    EXPECT_FALSE(m_functions.find_function(name));
    m_document.journal().undo();
    EXPECT_EQ(m_functions.find_function(name)->text(), u"edited"_s) << "texts stand outside undo";
    m_bar->insert_script_key(7, name);
    m_bar->remove_script_key(1);
    EXPECT_TRUE(m_functions.find_function(name)) << "another script key calls it";
}

TEST_F(TimebarTest, attributes_keep_to_their_ranges_and_running_ones_are_read_only)
{
    const auto set = [&](const char* name, const Value& value) {
        return m_bar->set_property(*m_bar->fields().find(name), value).ok();
    };
    const auto get = [&](const char* name) { return Authored::property(*m_bar, *m_bar->fields().find(name)); };
    EXPECT_TRUE(set("play_mode", qint64(9)));
    EXPECT_EQ(get("play_mode"), Value(qint64(4)));
    EXPECT_TRUE(set("frame_rate", qint64(-3)));
    EXPECT_EQ(get("frame_rate"), Value(qint64(0)));
    EXPECT_TRUE(set("display_mode", qint64(0)));
    EXPECT_EQ(get("display_mode"), Value(qint64(1)));
    EXPECT_FALSE(m_bar->set_total_length(-1));
    EXPECT_FALSE(set("current_time", 2.0));
    EXPECT_FALSE(set("playing", true));
    m_bar->set_current_time(2.5f);
    m_bar->active_bar(1);
    EXPECT_EQ(get("current_time"), Value(2.5));
    EXPECT_EQ(get("playing"), Value(true));
    m_bar->set_total_length(1);
    EXPECT_EQ(m_bar->current_time(), 1) << "a time beyond the end is the end";
}
