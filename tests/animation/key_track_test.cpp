#include "animation/key_track.h"
#include "core/language.h"

#include "animation/anim_time.h"
#include "core/json_reader.h"
#include "core/json_writer.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

using namespace tarn;
using namespace Qt::StringLiterals;

namespace {

KeyTrack long_track(int count)
{
    std::vector<Key> keys;
    for (int i = 0; i < count; ++i)
        keys.push_back({.time = float(i) / 16, .value = KeyValue::number(float(i % 100))});
    KeyTrack track;
    track.edit({}, keys);
    return track;
}

QByteArray text_of(const KeyTrack& track)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("keys");
    track.write(writer);
    writer.end_object();
    return QByteArray::fromStdString(writer.text());
}

Status read(const QByteArray& text, KeyTrack& track)
{
    JsonText json(text, u"keys"_s);
    return json.each_member([&](std::string_view, JsonCursor& value) { return track.read(value); });
}

/// The same keys as a plain map, and what has to hold of the track.
class KeyTrackWalk : public testing::TestWithParam<unsigned> {
protected:
    int number(int below) { return int(m_random() % unsigned(below)); }
    Key any_key()
    {
        return {float(number(4000)) / 8, KeyValue::number(float(number(50))), float(number(201) - 100), number(9) - 1};
    }
    void edit()
    {
        std::vector<qsizetype> removed;
        for (int i = number(3) ? 0 : number(200); i > 0 && !m_track.is_empty(); --i)
            removed.push_back(number(int(m_track.size())));
        std::sort(removed.begin(), removed.end());
        removed.erase(std::unique(removed.begin(), removed.end()), removed.end());
        std::map<float, Key> added;
        for (int i = number(4) ? number(5) : number(900); i > 0; --i) {
            const Key key = any_key();
            added.insert_or_assign(key.time, key);
        }
        for (auto index = removed.rbegin(); index != removed.rend(); ++index)
            m_plain.erase(std::next(m_plain.begin(), *index));
        std::vector<Key> keys;
        for (const auto& [time, key] : added) {
            m_plain.insert_or_assign(time, key);
            keys.push_back(key);
        }
        m_track.edit(removed, keys);
    }
    void change_one()
    {
        const qsizetype index = number(int(m_track.size()));
        Key& plain = std::next(m_plain.begin(), index)->second;
        plain.value = KeyValue::number(-1);
        plain.ease = 5;
        plain.group = 7;
        m_track.set_value(index, plain.value);
        m_track.set_ease(index, plain.ease);
        m_track.set_group(index, plain.group);
    }
    void expect_same()
    {
        ASSERT_EQ(m_track.size(), qsizetype(m_plain.size()));
        qsizetype index = 0;
        for (const auto& [time, key] : m_plain) {
            ASSERT_EQ(m_track.key(index), key);
            ASSERT_EQ(m_track.find(time), index);
            ASSERT_EQ(m_track.first_from(time + 0.01f), index + 1);
            ++index;
        }
        ASSERT_EQ(m_track.find(-1), -1);
    }

    std::mt19937 m_random{GetParam()};
    KeyTrack m_track;
    std::map<float, Key> m_plain;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Seeds, KeyTrackWalk, testing::Values(1u, 2u, 3u));

TEST_P(KeyTrackWalk, keys_are_those_of_a_plain_list_after_any_edits_and_read_back)
{
    for (int step = 0; step < 120; ++step) {
        const KeyTrack before = m_track;
        const auto plain_before = m_plain;
        edit();
        if (!m_track.is_empty())
            change_one();
        ASSERT_NO_FATAL_FAILURE(expect_same());
        KeyTrack read_back;
        ASSERT_TRUE(read(text_of(m_track), read_back).ok());
        ASSERT_TRUE(read_back == m_track);
        ASSERT_EQ(text_of(read_back), text_of(m_track)) << "chunks stay";
        KeyTrack from_numbers;
        ASSERT_TRUE(FieldType<KeyTrack>::from_value(FieldType<KeyTrack>::to_value(m_track), {}, from_numbers).ok());
        ASSERT_TRUE(from_numbers == m_track);
        if (step % 20 == 0) { // The copy from before has none of it.
            m_track = before;
            m_plain = plain_before;
            ASSERT_NO_FATAL_FAILURE(expect_same());
        }
    }
}

TEST(KeyTrack, an_edit_of_a_long_track_keeps_little)
{
    const KeyTrack before = long_track(1'000'000);
    const auto kept = [&](const std::function<void(KeyTrack&)>& edit) {
        KeyTrack after = before;
        edit(after);
        EXPECT_FALSE(after == before);
        return before.kept_bytes(after);
    };
    constexpr std::size_t most = 64 * 1024;
    EXPECT_LT(kept([](KeyTrack& track) { track.set_value(500'000, KeyValue::number(-1)); }), most);
    EXPECT_LT(kept([](KeyTrack& track) { track.set_key({.time = 1000.01f}); }), most);
    const qsizetype first = 0;
    EXPECT_LT(kept([&](KeyTrack& track) { track.edit({&first, 1}, {}); }), most);
    EXPECT_EQ(before.kept_bytes(KeyTrack(before)), 0u);
    EXPECT_GT(before.kept_bytes(KeyTrack()), std::size_t(16'000'000));
}

TEST(KeyTrack, keys_that_are_shifted_stay_apart_and_behind_those_before)
{
    KeyTrack track = long_track(2000);
    track.shift(1000, -100);
    EXPECT_EQ(track.size(), 2000);
    for (qsizetype i = 1; i < track.size(); ++i)
        ASSERT_LT(track.time(i - 1), track.time(i));
    track = long_track(2000);
    track.shift(0, max_time);
    EXPECT_EQ(track.time(1999), max_time);
    for (qsizetype i = 0; i < 2000; ++i)
        ASSERT_EQ(track.find(track.time(i)), i);
}

TEST(KeyTrack, a_damaged_one_is_refused_with_its_place)
{
    VLCMsgIniW::set_language(Language::English);
    const struct {
        const char* keys;
        const char* message;
    } cases[] = {
        {R"({"chunks":[]})", "\"type\""},
        {R"({"type":5,"chunks":[]})", "type 5"},
        {R"({"type":0,"chunks":[{"t":[],"v":[]}]})", "differ in number"},
        {R"({"type":0,"chunks":[{"t":[1,2],"v":[1]}]})", "differ in number"},
        {R"({"type":2,"chunks":[{"t":[1],"v":[1,2]}]})", "differ in number"},
        {R"({"type":0,"chunks":[{"t":[1,2],"v":[1,2],"e":[0]}]})", "differ in number"},
        {R"({"type":0,"chunks":[{"t":[1,1],"v":[1,2]}]})", "do not ascend"},
        {R"({"type":0,"chunks":[{"t":[2],"v":[1]},{"t":[1],"v":[1]}]})", "do not ascend"},
        {R"({"type":0,"chunks":[{"t":[-1],"v":[1]}]})", "out of range"},
        {R"({"type":0,"chunks":[{"t":[1e9],"v":[1]}]})", "out of range"},
        {R"({"type":0,"chunks":[{"t":[1],"v":[1e38]}]})", "out of range"},
        {R"({"type":0,"chunks":[{"t":[1],"v":[1e999]}]})", "line 1"},
        {R"({"type":1,"chunks":[{"t":[1],"v":[1.5]}]})", "whole number"},
        {R"({"type":3,"chunks":[{"t":[1],"v":[4294967296]}]})", "out of range"},
        {R"({"type":0,"chunks":[{"t":[1],"v":[1],"e":[101]}]})", "ease"},
        {R"({"type":0,"chunks":[{"t":[1],"v":[1],"g":[1000]}]})", "group"},
        {R"({"type":0,"chunks":[{"t":[1],"v":[1],"x":[]}]})", "keys are expected"},
        {R"({"type":0,"chunks":[],"chunks":[]})", "keys are expected"},
    };
    for (const auto& [keys, message] : cases) {
        KeyTrack track;
        const auto status = read(QByteArray("{\"keys\":") + keys + '}', track);
        EXPECT_FALSE(status.ok()) << keys;
        EXPECT_TRUE(status.message().contains(QLatin1String(message))) << keys << status.message().toStdString();
    }
    QByteArray times("0");
    for (int i = 1; i <= KeyTrack::max_chunk; ++i)
        times += ',' + QByteArray::number(i);
    KeyTrack track;
    EXPECT_FALSE(
        read("{\"keys\":{\"type\":0,\"chunks\":[{\"t\":[" + times + "],\"v\":[" + times + "]}]}}", track).ok());
}

TEST(KeyValue, texts_and_numbers_give_the_value_back)
{
    const struct {
        VarType type;
        const char16_t* text;
        const char16_t* shown; ///< null: the text is refused
    } cases[] = {
        {VarType::Float, u" 1.5 ", u"1.5"},
        {VarType::Float, u"1,5", nullptr},
        {VarType::Float, u"", nullptr},
        {VarType::Float, u"1e39", nullptr},
        {VarType::Int, u"-7", u"-7"},
        {VarType::Int, u"99999999999", nullptr},
        {VarType::Vec, u"1 2;3", u"1, 2, 3"},
        {VarType::Vec, u"1, 2", nullptr},
        {VarType::Color, u"#80FF0001", u"255, 0, 1, 128"},
        {VarType::Color, u"0x102030", u"16, 32, 48, 255"},
        {VarType::Color, u"1,2,3,4", u"1, 2, 3, 4"},
        {VarType::Color, u"1,2,3,256", nullptr},
        {VarType::Mat, u"1,0,0,0, 0,1,0,0, 0,0,1,0, 5,6,7,1", u"1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1"},
        {VarType::Mat, u"0,2,0,0, -2,0,0,0, 0,0,3,0, 0,0,0,1", u""},
        {VarType::Mat, u"-1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1", u""},
        {VarType::Mat, u"1,2,3", nullptr},
    };
    for (const auto& [type, text, shown] : cases) {
        KeyValue value(type);
        const QString given = QString::fromUtf16(text);
        EXPECT_EQ(KeyValue::from_text(type, given, value), shown != nullptr) << given.toStdString();
        if (!shown)
            continue;
        if (*shown) {
            EXPECT_EQ(value.to_text(), QString::fromUtf16(shown));
        }
        KeyValue again(type);
        ASSERT_TRUE(KeyValue::from_value(type, value.to_value(), again).ok());
        for (int i = 0; type == VarType::Mat && i < KeyValue::max_words; ++i)
            EXPECT_NEAR(again.part(i), value.part(i), 1e-5);
        if (type != VarType::Mat) {
            EXPECT_EQ(again, value);
        }
    }
    KeyValue turned(VarType::Mat);
    ASSERT_TRUE(KeyValue::from_text(VarType::Mat, u"0,2,0,0, -2,0,0,0, 0,0,3,0, 0,0,0,1"_s, turned));
    const NumberList half = std::get<NumberList>(mix(KeyValue(VarType::Mat), turned, 0.5f).to_value());
    EXPECT_NEAR(half[0], 1.5 * std::sqrt(0.5), 1e-5) << "an eighth of a turn, and half as much larger";
    EXPECT_NEAR(half[1], 1.5 * std::sqrt(0.5), 1e-5);
    EXPECT_NEAR(half[10], 2, 1e-5);
}

TEST(KeyTrack, values_go_from_key_to_key_by_the_later_ones_ease)
{
    KeyTrack track;
    EXPECT_EQ(track.value_at(3, false), KeyValue::number(0));
    track.set_key({.time = 1, .value = KeyValue::number(10)});
    track.set_key({.time = 3, .value = KeyValue::number(20), .ease = 50});
    EXPECT_EQ(track.value_at(0, false).part(0), 10);
    EXPECT_EQ(track.value_at(1, false).part(0), 10);
    EXPECT_NEAR(track.value_at(1 + 2 * 0.745f, false).part(0), 15, 1e-3);
    EXPECT_EQ(track.value_at(2.9f, true).part(0), 10) << "steps change at keys only";
    EXPECT_EQ(track.value_at(3, false).part(0), 20) << "the end is part of the way";
    EXPECT_EQ(track.value_at(99, false).part(0), 20);
    KeyTrack colors(VarType::Color);
    colors.set_key({.time = 0, .value = KeyValue::color(0xff000000)});
    colors.set_key({.time = 1, .value = KeyValue::color(0x00ff8001)});
    EXPECT_EQ(colors.value_at(0.5f, false).as_color(), 0x80804001u);
    KeyTrack whole(VarType::Int);
    whole.set_key({.time = 0, .value = KeyValue::whole(-2'000'000'000)});
    whole.set_key({.time = 1, .value = KeyValue::whole(2'000'000'000)});
    EXPECT_EQ(whole.value_at(0.75f, false).as_int(), 1'000'000'000);
}
