#pragma once

#include "core/field_type.h"
#include "key_value.h"

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QSharedData>

#include <algorithm>
#include <span>
#include <vector>

namespace tarn {

struct Key {
    static constexpr int no_group = -1;
    static constexpr int max_group = 999;

    float time = 0;
    KeyValue value{};
    float ease = 0; ///< of the span that ends with the key; see Ease
    int group = no_group;

    bool operator==(const Key&) const = default;
};

/// What a track does around a time: the way from one key to the next. Before the first key and from the last one on it
/// stands still, as between keys that hold their values.
struct KeySpan {
    float begin;
    float end;
    float bend;    ///< Ease::bend() of the later key
    qsizetype key; ///< the earlier one, -1 before the first
    bool moves;    ///< there is a later key, and an earlier one

    float scale() const { return 1 / std::max(end - begin, 1e-20f); }
    /// Of its time.
    float share(float time) const { return (time - begin) * scale(); }
};

/// Keys that follow each other and share a place, such as a column of pixels.
struct KeyRun {
    qsizetype index; ///< of the last of them
    float first;     ///< times
    float last;
    float ease;       ///< of the only one; 0 for several
    float ease_after; ///< of the key after an only one; 0 when there is none
};

/// The keys of a variable by their times, which ascend strictly. They lie in chunks of some hundred that copies of a track
/// share until one of them is written, so an edit of a long track copies little, and undo keeps little.
class KeyTrack {
public:
    static constexpr int max_chunk = 512;

    struct Chunk : QSharedData {
        std::vector<float> times;
        std::vector<float> eases;
        std::vector<int> groups;
        std::vector<quint32> words; ///< of the values, all of one key beside each other

        qsizetype size() const { return qsizetype(times.size()); }
    };
    using ChunkPtr = QExplicitlySharedDataPointer<Chunk>;

    explicit KeyTrack(VarType type = VarType::Float) : m_type(type) {}

    VarType type() const { return m_type; }
    qsizetype size() const;
    bool is_empty() const { return m_chunks.isEmpty(); }
    Key key(qsizetype index) const;
    float time(qsizetype index) const;
    float ease(qsizetype index) const;
    int group(qsizetype index) const;
    KeyValue value(qsizetype index) const;
    float first_time() const { return m_chunks.first().time; } ///< of a track with keys
    /// The key at exactly that time; -1 when there is none.
    qsizetype find(float time) const;
    /// The first key at or after `time`; size() when there is none.
    qsizetype first_from(float time) const;
    /// Calls `visit(index, key time)` for the keys from `from` to `to`, both included.
    template <class Visit>
    void each_time(float from, float to, Visit&& visit) const
    {
        qsizetype index = first_from(from);
        for (qsizetype c = index < size() ? chunk_of(index) : m_chunks.size(); c < m_chunks.size(); ++c) {
            const Entry& entry = m_chunks[c];
            for (; index < entry.first + entry.keys->size(); ++index) {
                const float time = entry.keys->times[std::size_t(index - entry.first)];
                if (time > to)
                    return;
                visit(index, time);
            }
        }
    }

    /// Calls `visit(place, KeyRun)` for the keys from `from` to `to`, those of equal `place(time)` together; it must not
    /// decrease with time, and `border(place)` is about the time at which the next one begins. Costs what there are places,
    /// not keys. Keys of one place can come in more than one run.
    template <class Place, class Border, class Visit>
    void each_run(float from, float to, Place&& place, Border&& border, Visit&& visit) const;

    KeySpan span_at(float time) const;
    /// What the variable has at a time. `steps`: it changes at its keys only.
    KeyValue value_at(float time, bool steps) const;

    /// Takes out the keys with the indexes `removed`, ascending, and puts in `added`, of strictly ascending times: a key
    /// that stands where one of them comes gives up its place.
    void edit(std::span<const qsizetype> removed, std::span<const Key> added);
    void set_key(const Key& key) { edit({}, {&key, 1}); }
    void set_value(qsizetype index, const KeyValue& value);
    void set_ease(qsizetype index, float ease);
    void set_group(qsizetype index, int group);
    /// Moves the key `first` and all after it, not before `lowest`; they stay behind those before it and apart from each
    /// other.
    void shift(qsizetype first, float offset, float lowest = 0);

    bool operator==(const KeyTrack& other) const;
    /// About the bytes on the heap that are not shared with `other`.
    std::size_t kept_bytes(const KeyTrack& other) const;
    void write(JsonWriter& writer) const;
    Status read(JsonCursor& cursor);

private:
    struct Entry {
        ChunkPtr keys;
        qint32 first; ///< index of its first key
        float time;   ///< of that key
    };
    class Builder;

    template <class Place>
    static std::size_t end_of_place(const std::vector<float>& times, std::size_t begin, float border, Place&& place);
    qsizetype chunk_of(qsizetype index) const;
    qsizetype chunk_at(float time) const;
    Chunk& chunk_for_writing(qsizetype index);
    void append(ChunkPtr chunk);
    Status read_chunk(JsonCursor& cursor);
    Status check(const Chunk& chunk, const JsonCursor& place) const;
    void write_chunk(const Chunk& chunk, JsonWriter& writer) const;
    std::size_t words() const { return std::size_t(KeyValue::words_of(m_type)); }

    VarType m_type;
    QList<Entry> m_chunks; ///< none is empty
};

/// The first index behind `begin` whose time is not in the place of that one. Comparing times is cheaper than asking for their
/// places, so `border` leads near it.
template <class Place>
std::size_t KeyTrack::end_of_place(const std::vector<float>& times, std::size_t begin, float border, Place&& place)
{
    constexpr std::size_t singly = 16;
    const std::size_t near = std::min(times.size(), begin + singly);
    std::size_t end = begin + 1;
    while (end < near && times[end] < border)
        ++end;
    if (end == near)
        end = std::size_t(std::lower_bound(times.begin() + qptrdiff(end), times.end(), border) - times.begin());
    const auto here = place(times[begin]);
    while (end > begin + 1 && place(times[end - 1]) != here)
        --end;
    while (end < times.size() && place(times[end]) == here)
        ++end;
    return end;
}

template <class Place, class Border, class Visit>
void KeyTrack::each_run(float from, float to, Place&& place, Border&& border, Visit&& visit) const
{
    const qsizetype begin = first_from(from);
    if (begin == size())
        return;
    for (qsizetype c = chunk_of(begin); c < m_chunks.size(); ++c) {
        const Chunk& keys = *m_chunks[c].keys;
        const std::size_t count = keys.times.size();
        auto i = std::size_t(std::max<qsizetype>(begin - m_chunks[c].first, 0));
        while (i < count) {
            const float first = keys.times[i];
            if (first > to)
                return;
            const auto here = place(first);
            const std::size_t after = end_of_place(keys.times, i, border(here), place);
            const std::size_t last = after - 1;
            KeyRun run{m_chunks[c].first + qsizetype(last), first, keys.times[last], 0, 0};
            if (last == i) { // Of several nobody asks, and they lie elsewhere in memory.
                run.ease = keys.eases[last];
                run.ease_after = after < count ? keys.eases[after]
                    : c + 1 < m_chunks.size()  ? m_chunks[c + 1].keys->eases.front()
                                               : 0;
            }
            visit(here, run);
            i = after;
        }
    }
}

template <>
struct FieldType<KeyTrack> : detail::SingleType<KeyTrack> {
    /// A flat list: the type, then for each key time, ease, group and the words of its value as numbers.
    static Value to_value(const KeyTrack& track);
    static Status from_value(const Value& value, const FieldRules& rules, KeyTrack& out);
    static void write(const KeyTrack& track, JsonWriter& writer) { track.write(writer); }
    static Status read(JsonCursor& cursor, KeyTrack& out) { return out.read(cursor); }
    static std::size_t kept_bytes(const KeyTrack& kept, const KeyTrack& other) { return kept.kept_bytes(other); }
};

} // namespace tarn
