// Key tracks as JSON text and as plain lists of numbers.

#include "anim_time.h"
#include "core/language.h"
#include "ease.h"
#include "key_track.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

template <class T>
bool are_all(const std::vector<T>& numbers, T wanted)
{
    return std::all_of(numbers.begin(), numbers.end(), [wanted](T number) { return number == wanted; });
}

template <class Numbers, class Write>
void write_numbers(JsonWriter& writer, std::string_view name, const Numbers& numbers, Write write)
{
    writer.key(name);
    writer.begin_array();
    for (const auto number : numbers)
        write(number);
    writer.end_array();
}

/// At most `most` of them: a chunk that is too long is found out before it takes memory.
template <class T>
Status read_numbers(JsonCursor& cursor, std::size_t most, std::vector<T>& out)
{
    out.clear();
    return cursor.each_element([&](JsonCursor& element) {
        if (out.size() == most)
            return element.fail(
                lang(u"一段中的关键帧过多（最多 %1 个）", u"there are too many keys in a chunk (at most %1)")
                    .arg(KeyTrack::max_chunk));
        T number{};
        auto status = element.read(number);
        out.push_back(number);
        return status;
    });
}

bool is_time(float time)
{
    return time >= 0 && time <= max_time;
}
bool is_ease(float ease)
{
    return std::abs(ease) <= Ease::limit;
}
bool is_group(int group)
{
    return group >= Key::no_group && group <= Key::max_group;
}

bool has_whole_words(VarType type)
{
    return type == VarType::Int || type == VarType::Color;
}

} // namespace

// The type, then the chunks, one a line; eases and groups only where there are any.

void KeyTrack::write(JsonWriter& writer) const
{
    writer.begin_object();
    writer.key("type");
    writer.value(int(m_type));
    writer.key("chunks");
    writer.begin_array();
    for (const Entry& entry : m_chunks) {
        writer.new_line();
        write_chunk(*entry.keys, writer);
    }
    writer.end_array();
    writer.end_object();
}

void KeyTrack::write_chunk(const Chunk& chunk, JsonWriter& writer) const
{
    const auto plain = [&](auto number) { writer.value(number); };
    writer.begin_object();
    write_numbers(writer, "t", chunk.times, plain);
    write_numbers(writer, "v", chunk.words, [&](quint32 word) {
        if (m_type == VarType::Int)
            writer.value(int(word));
        else if (m_type == VarType::Color)
            writer.value(word);
        else
            writer.value(std::bit_cast<float>(word));
    });
    if (!are_all(chunk.eases, 0.f))
        write_numbers(writer, "e", chunk.eases, plain);
    if (!are_all(chunk.groups, Key::no_group))
        write_numbers(writer, "g", chunk.groups, plain);
    writer.end_object();
}

Status KeyTrack::read(JsonCursor& cursor)
{
    int type = 0;
    if (auto status = cursor.peek_int("type", type); !status)
        return status;
    if (type < 0 || type >= var_type_count)
        return cursor.fail(lang(u"未知的变量类型 %1", u"the type %1 of a variable is unknown").arg(type));
    *this = KeyTrack(VarType(type));
    bool is_read = false;
    return cursor.each_member([&](std::string_view name, JsonCursor& value) {
        if (name == "type")
            return value.read(type);
        if (name != "chunks" || std::exchange(is_read, true))
            return value.fail(lang(u"这里应为关键帧", u"keys are expected here"));
        return value.each_element([this](JsonCursor& element) { return read_chunk(element); });
    });
}

Status KeyTrack::read_chunk(JsonCursor& cursor)
{
    const ChunkPtr chunk(new Chunk);
    std::vector<quint32>& values = chunk->words;
    const std::size_t most_words = max_chunk * words();
    auto status = cursor.each_member([&](std::string_view name, JsonCursor& value) -> Status {
        if (name == "t")
            return read_numbers(value, max_chunk, chunk->times);
        if (name == "e")
            return read_numbers(value, max_chunk, chunk->eases);
        if (name == "g")
            return read_numbers(value, max_chunk, chunk->groups);
        if (name != "v")
            return value.fail(lang(u"这里应为关键帧", u"keys are expected here"));
        if (m_type == VarType::Color)
            return read_numbers(value, most_words, values);
        const auto take = [&](auto numbers) {
            auto read = read_numbers(value, most_words, numbers);
            values.resize(numbers.size());
            std::transform(numbers.begin(), numbers.end(), values.begin(),
                           [](auto number) { return std::bit_cast<quint32>(number); });
            return read;
        };
        return m_type == VarType::Int ? take(std::vector<int>()) : take(std::vector<float>());
    });
    if (!status)
        return status;
    if (chunk->eases.empty())
        chunk->eases.resize(chunk->times.size());
    if (chunk->groups.empty())
        chunk->groups.resize(chunk->times.size(), Key::no_group);
    status = check(*chunk, cursor);
    if (!status)
        return status;
    const float time = chunk->times.front();
    m_chunks.append({chunk, qint32(size()), time});
    return {};
}

/// As the next one of the track.
Status KeyTrack::check(const Chunk& chunk, const JsonCursor& place) const
{
    const std::size_t count = chunk.times.size();
    if (count == 0 || chunk.words.size() != count * words() || chunk.eases.size() != count
        || chunk.groups.size() != count)
        return place.fail(lang(u"关键帧的时间、值、松紧或组的个数不一致",
                               u"times, values, eases and groups of the keys differ in number"));
    if (!std::all_of(chunk.times.begin(), chunk.times.end(), is_time)
        || !std::is_sorted(chunk.times.begin(), chunk.times.end(), std::less_equal<>())
        || (!m_chunks.isEmpty() && m_chunks.last().keys->times.back() >= chunk.times.front()))
        return place.fail(
            lang(u"关键帧的时间不是递增的，或超出范围", u"the times of the keys do not ascend, or are out of range"));
    const auto is_sound = [](quint32 word) { return KeyValue::is_sound(std::bit_cast<float>(word)); };
    if (!has_whole_words(m_type) && !std::all_of(chunk.words.begin(), chunk.words.end(), is_sound))
        return place.fail(lang(u"关键帧的值超出范围", u"a value of the keys is out of range"));
    if (!std::all_of(chunk.eases.begin(), chunk.eases.end(), is_ease)
        || !std::all_of(chunk.groups.begin(), chunk.groups.end(), is_group))
        return place.fail(
            lang(u"关键帧的松紧值或组号超出范围", u"an ease or a group number of the keys is out of range"));
    if (size() > std::numeric_limits<qint32>::max() - max_chunk)
        return place.fail(lang(u"关键帧过多", u"there are too many keys"));
    return {};
}

Value FieldType<KeyTrack>::to_value(const KeyTrack& track)
{
    NumberList numbers{double(track.type())};
    for (qsizetype i = 0; i < track.size(); ++i) {
        const Key key = track.key(i);
        numbers << double(key.time) << double(key.ease) << key.group;
        for (const quint32 word : key.value.words())
            numbers << (track.type() == VarType::Int        ? double(int(word))
                            : has_whole_words(track.type()) ? double(word)
                                                            : double(std::bit_cast<float>(word)));
    }
    return numbers;
}

Status FieldType<KeyTrack>::from_value(const Value& value, const FieldRules&, KeyTrack& out)
{
    const auto refused = Status::error(
        lang(u"需要关键帧的数字列表：类型，然后是每个关键帧的时间、松紧、组号和值",
             u"a list of the keys' numbers is needed: the type, then time, ease, group and value of each key"));
    const auto* numbers = std::get_if<NumberList>(&value);
    if (!numbers || numbers->isEmpty() || !(numbers->first() >= 0 && numbers->first() < var_type_count))
        return refused;
    const auto type = VarType(int(numbers->first()));
    const qsizetype step = 3 + KeyValue::words_of(type);
    if ((numbers->size() - 1) % step != 0)
        return refused;
    std::vector<Key> keys;
    for (qsizetype i = 1; i < numbers->size(); i += step) {
        const auto number = [&](qsizetype place) { return numbers->at(i + place); };
        std::array<quint32, KeyValue::max_words> words{};
        for (qsizetype w = 0; w < step - 3; ++w) {
            const double part = number(3 + w);
            const bool fits = type == VarType::Int ? std::abs(part) <= std::numeric_limits<int>::max()
                : type == VarType::Color           ? part >= 0 && part <= std::numeric_limits<quint32>::max()
                                                   : KeyValue::is_sound(float(part));
            if (!fits)
                return refused;
            words[std::size_t(w)] = type == VarType::Int ? quint32(int(part))
                : type == VarType::Color                 ? quint32(part)
                                                         : std::bit_cast<quint32>(float(part));
        }
        const double group = number(2);
        if (!(group >= Key::no_group && group <= Key::max_group))
            return refused;
        const Key key{float(number(0)), KeyValue(type, words), float(number(1)), int(group)};
        if (!is_time(key.time) || !is_ease(key.ease) || (!keys.empty() && keys.back().time >= key.time))
            return refused;
        keys.push_back(key);
    }
    out = KeyTrack(type);
    out.edit({}, keys);
    return {};
}

} // namespace tarn
