#include "support/attributes.h"
// Long walks of random edits, compared with a plain model of lists, and undone byte for byte.

#include "animation/key_clipboard.h"
#include "animation_fixture.h"

#include <map>
#include <random>

using namespace tarn;
using namespace tarn::test;

namespace {

/// A variable as a list of times and values.
using PlainKeys = std::map<float, float>;

/// What time does to lists. Times are multiples of an eighth, so that none is rounded.
struct PlainBar {
    float length = 20;
    std::vector<PlainKeys> variables{3};
    std::map<float, QString> scripts;

    template <class Entries>
    static void shift(Entries& entries, float at, float offset)
    {
        Entries moved;
        for (const auto& [time, value] : entries)
            moved.insert_or_assign(time >= at ? time + offset : time, value);
        entries = moved;
    }
    void insert_time(float at, float more)
    {
        for (PlainKeys& keys : variables)
            shift(keys, at, more);
        shift(scripts, at, more);
        length += more;
    }
    void remove_region(float from, float to)
    {
        for (PlainKeys& keys : variables) {
            const PlainKeys before = keys;
            std::erase_if(keys, [=](const auto& key) { return key.first >= from && key.first < to; });
            shift(keys, to, from - to);
            if (!before.empty() && before.begin()->first >= from && before.begin()->first < to)
                keys.try_emplace(from, before.begin()->second);
        }
        std::erase_if(scripts, [=](const auto& key) { return key.first >= from && key.first < to; });
        shift(scripts, to, from - to);
    }
    bool move_script(float from, float to)
    {
        if (!scripts.contains(from) || scripts.contains(to))
            return false;
        scripts[to] = scripts[from];
        scripts.erase(from);
        return true;
    }
    bool move_keys(float from, float to)
    {
        bool moved = false;
        for (PlainKeys& keys : variables) {
            if (!keys.contains(from) || keys.begin()->first == from || to <= keys.begin()->first || from == to)
                continue;
            const float value = keys[from];
            keys.erase(from);
            keys[to] = value;
            moved = true;
        }
        return moved;
    }
    void insert(float at, const PlainBar& other)
    {
        insert_time(at, other.length);
        for (std::size_t v = 0; v < variables.size(); ++v)
            for (const auto& [time, value] : other.variables[v])
                if (time <= other.length)
                    variables[v].try_emplace(time + at, value);
        for (const auto& [time, name] : other.scripts)
            if (time <= other.length)
                scripts.try_emplace(time + at, name);
    }
};

class RandomTimebars : public AnimationTest, public testing::WithParamInterface<unsigned> {
protected:
    static constexpr Channel channels[] = {Channel::Position, Channel::Transparency, Channel::Color};

    int number(int below) { return int(m_random() % unsigned(below)); }
    float any_time() { return float(number(200)) / 8; }

    std::mt19937 m_random{GetParam()};
};

class TimeWalk : public RandomTimebars {
protected:
    TimeWalk()
    {
        for (CTimebar*& bar : m_bars) {
            bar = m_scene.create_bar(20);
            CTimerObject* object = timer(bar, m_thing);
            for (const Channel channel : channels)
                object->create_channel_var(channel);
        }
    }
    void edit(int which)
    {
        CTimebar* bar = m_bars[which];
        PlainBar& plain = m_plain[which];
        const float from = any_time();
        const float to = any_time();
        switch (number(9)) {
        case 0:
            if (bar->insert_time(from, to))
                plain.insert_time(from, to);
            break;
        case 1:
            EXPECT_EQ(bar->remove_region(from, to), from < to);
            if (from < to)
                plain.remove_region(from, to);
            break;
        case 2:
            if (bar->get_total_length() < 2000) {
                EXPECT_TRUE(bar->insert_timerbar(from, *m_bars[1 - which]));
                plain.insert(from, m_plain[1 - which]);
            }
            break;
        case 3: EXPECT_EQ(bar->change_key_time(KeyKind::Script, from, to), plain.move_script(from, to)); break;
        case 4:
        case 5: EXPECT_EQ(bar->change_key_time(KeyKind::Key, from, to), plain.move_keys(from, to)); break;
        case 6:
            bar->insert_script_key(from, u"f%1"_s.arg(to));
            plain.scripts.try_emplace(from, u"f%1"_s.arg(to));
            break;
        case 7:
            bar->set_total_length(std::max(from, 1.f));
            plain.length = std::max(from, 1.f);
            break;
        default: {
            const int v = number(3);
            const float value = float(number(200));
            CTVar* variable = bar->objects().front()->channel_variable(channels[v]);
            variable->set_key_value(from, AnimationTest::value(variable->type(), value));
            plain.variables[std::size_t(v)][from] = value;
        }
        }
    }
    void expect_same(int which)
    {
        const PlainBar& plain = m_plain[which];
        ASSERT_EQ(m_bars[which]->get_total_length(), plain.length);
        for (std::size_t v = 0; v < 3; ++v) {
            const CTVar* variable = m_bars[which]->objects().front()->channel_variable(channels[v]);
            ASSERT_EQ(variable->keys().size(), qsizetype(plain.variables[v].size()));
            qsizetype index = 0;
            for (const auto& [time, number] : plain.variables[v]) {
                ASSERT_EQ(variable->keys().time(index), time);
                ASSERT_EQ(variable->keys().value(index), AnimationTest::value(variable->type(), number));
                ++index;
            }
        }
        std::map<float, QString> scripts;
        for (const CScriptKey* key : m_bars[which]->script_keys())
            scripts[key->time()] = key->function();
        ASSERT_EQ(scripts, plain.scripts);
    }

    Thing* m_thing = thing();
    CTimebar* m_bars[2];
    PlainBar m_plain[2];
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Seeds, TimeWalk, testing::Range(1u, 9u));

TEST_P(TimeWalk, bars_change_as_plain_lists_do)
{
    for (int step = 0; step < 400; ++step) {
        edit(number(2));
        for (const int which : {0, 1}) {
            ASSERT_NO_FATAL_FAILURE(expect_same(which)) << "step " << step;
            if (m_bars[which]->get_total_length() > 1000) { // not ever longer
                m_bars[which]->remove_region(20, 30'000);
                m_bars[which]->set_total_length(20);
                m_plain[which].remove_region(20, 30'000);
                m_plain[which].length = 20;
            }
        }
    }
}

namespace {

/// Anything that can be done to an animation.
class EditWalk : public RandomTimebars {
protected:
    CTimebar* any_bar()
    {
        const auto& bars = m_scene.bars();
        return bars.empty() || number(10) == 0 ? m_scene.create_bar(float(number(20)))
                                               : bars[std::size_t(number(int(bars.size())))];
    }
    CTVar* any_variable(CTimebar* bar)
    {
        if (bar->objects().empty() || number(10) == 0)
            number(3) ? void(timer(bar, m_things_made[number(2)])) : void(bar->create_script_object());
        CTimerObject* object = bar->objects()[std::size_t(number(int(bar->objects().size())))];
        if (object->variables().empty() || number(8) == 0) {
            if (object->type() == TimerObjectType::Script)
                return object->create_var(VarType(number(5)));
            const Channel channel = channels[number(3)];
            return object->channel_variable(channel) ? object->channel_variable(channel)
                                                     : object->create_channel_var(channel);
        }
        return object->variables()[std::size_t(number(int(object->variables().size())))];
    }
    KeySelection some_keys(CTVar* variable)
    {
        KeySelection keys;
        for (const float time : times(variable))
            if (number(2))
                keys[variable].push_back(time);
        return keys;
    }
    /// As an author does on a page or in the view.
    void write(Thing& thing)
    {
        m_scene.set_auto_record(number(2));
        const bool is_driven = m_scene.driving(thing, key<&ThingState::x>).has_value();
        const float before = thing.authored().x;
        thing.write<ThingState>([x = any_time(), color = quint32(number(9))](ThingState& s) {
            s.x = x;
            s.color = color;
            s.transparency += 1;
        });
        ASSERT_TRUE(!is_driven || thing.authored().x == before);
    }
    void edit()
    {
        CTimebar* bar = any_bar();
        CTVar* variable = any_variable(bar);
        KeySelection keys = some_keys(variable);
        switch (number(25)) {
        case 0: m_scene.remove_bar(number(3) ? nullptr : bar); break;
        case 1: m_scene.clone_bar(m_scene.bars().size() < 6 ? bar : nullptr); break;
        case 2: number(2) ? m_scene.move_up(bar) : m_scene.move_end(bar); break;
        case 3: bar->remove_obj(number(3) ? nullptr : variable->object()); break;
        case 4: variable->object()->remove_var(number(3) ? nullptr : variable); break;
        case 5:
            bar->get_total_length() < 500 ? bar->insert_time(any_time(), any_time()) : bar->set_total_length(9);
            break;
        case 6: bar->remove_region(any_time(), any_time()); break;
        case 7: bar->get_total_length() < 500 && bar->insert_timerbar(any_time(), *any_bar()); break;
        case 8: bar->insert_script_key(any_time()); break;
        case 9: bar->remove_script_keys(bar->script_key_times()); break;
        case 10: bar->change_key_time(KeyKind(number(2)), any_time(), any_time()); break;
        case 11: bar->retime_keys(keys, [by = any_time()](float time) { return time * by - by; }); break;
        case 12: bar->remove_keys(keys); break;
        case 13: bar->set_keys_ease(keys, float(number(300) - 150)); break;
        case 14: bar->set_key_group(keys, number(5)); break;
        case 15: bar->create_mark(any_time(), any_time(), u"mark"_s); break;
        case 16: bar->record_selection({m_things_made[number(2)]}); break;
        case 18: number(2) ? m_scene.set_editing(number(2)) : m_scene.set_current_bar(bar); break;
        case 19: number(2) ? bar->set_current_time(any_time()) : bar->frame_move(any_time()); break;
        case 20: ASSERT_TRUE(set(*variable->object(), "flags", qint64(quint32(number(64))))); break;
        case 17:
        case 21: write(*m_things_made[number(2)]); break;
        case 22: ASSERT_TRUE(paste_keys(*any_bar(), copy_keys(keys), any_time())); break;
        case 23: duplicate_keys(*bar, keys, any_time() - any_time()); break;
        default: variable->set_key_value(any_time(), KeyValue(variable->type())); break;
        }
    }
    Thing* m_things_made[2] = {thing(u"a"_s), thing(u"b"_s)};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Seeds, EditWalk, testing::Values(1u, 2u));

TEST_P(EditWalk, thousands_of_edits_undone_to_the_start_give_equal_bytes_and_redone_too)
{
    Journal& journal = m_document.journal();
    m_document.forget_history();
    const QByteArray start = text();
    for (int step = 0; step < 10'000; ++step) {
        {
            const UserAction action(journal);
            edit();
        }
        if (step % 7 == 0)
            m_document.changes().tell();
        if (step % 1000 == 0) {
            const QByteArray now = text();
            const std::size_t back = std::min<std::size_t>(journal.position(), std::size_t(number(40)));
            journal.go_to(journal.position() - back);
            journal.go_to(journal.step_count());
            ASSERT_EQ(text(), now) << "step " << step;
        }
    }
    ASSERT_FALSE(journal.has_dropped());
    const QByteArray end = text();
    OtherScene read_back;
    ASSERT_TRUE(read_back.read(texts()).ok());
    EXPECT_EQ(read_back.text(), end);
    journal.go_to(0);
    EXPECT_EQ(text(), start);
    EXPECT_TRUE(m_scene.bars().empty());
    m_document.changes().tell();
    EXPECT_EQ(m_things_made[0]->shown().x, 0);
    journal.go_to(journal.step_count());
    EXPECT_EQ(text(), end);
}
