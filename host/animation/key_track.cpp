#include "key_track.h"

#include "anim_time.h"
#include "ease.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarn {

namespace {

constexpr qsizetype small_chunk = 64; ///< a chunk of fewer keys is joined with its neighbour where there is room

std::size_t at(qsizetype index)
{
    return std::size_t(index);
}

} // namespace

// Looking ------------------------------------------------------------------------------------------------------------

qsizetype KeyTrack::size() const
{
    return m_chunks.isEmpty() ? 0 : m_chunks.last().first + m_chunks.last().keys->size();
}

qsizetype KeyTrack::chunk_of(qsizetype index) const
{
    const auto after = std::upper_bound(m_chunks.begin(), m_chunks.end(), index,
                                        [](qsizetype i, const Entry& entry) { return i < entry.first; });
    return after - m_chunks.begin() - 1;
}

/// The last chunk that begins at or before `time`; -1 for a time before all.
qsizetype KeyTrack::chunk_at(float time) const
{
    const auto after = std::upper_bound(m_chunks.begin(), m_chunks.end(), time,
                                        [](float t, const Entry& entry) { return t < entry.time; });
    return after - m_chunks.begin() - 1;
}

float KeyTrack::time(qsizetype index) const
{
    const Entry& entry = m_chunks[chunk_of(index)];
    return entry.keys->times[at(index - entry.first)];
}

float KeyTrack::ease(qsizetype index) const
{
    const Entry& entry = m_chunks[chunk_of(index)];
    return entry.keys->eases[at(index - entry.first)];
}

int KeyTrack::group(qsizetype index) const
{
    const Entry& entry = m_chunks[chunk_of(index)];
    return entry.keys->groups[at(index - entry.first)];
}

KeyValue KeyTrack::value(qsizetype index) const
{
    const Entry& entry = m_chunks[chunk_of(index)];
    return KeyValue(m_type, std::span(entry.keys->words).subspan(at(index - entry.first) * words(), words()));
}

Key KeyTrack::key(qsizetype index) const
{
    const Entry& entry = m_chunks[chunk_of(index)];
    const std::size_t place = at(index - entry.first);
    const Chunk& keys = *entry.keys;
    return {keys.times[place], KeyValue(m_type, std::span(keys.words).subspan(place * words(), words())),
            keys.eases[place], keys.groups[place]};
}

qsizetype KeyTrack::first_from(float time) const
{
    const qsizetype c = chunk_at(time);
    if (c < 0)
        return 0;
    const auto& times = m_chunks[c].keys->times;
    return m_chunks[c].first + (std::lower_bound(times.begin(), times.end(), time) - times.begin());
}

qsizetype KeyTrack::find(float time) const
{
    const qsizetype index = first_from(time);
    return index < size() && this->time(index) == time ? index : -1;
}

KeySpan KeyTrack::span_at(float time) const
{
    constexpr float forever = std::numeric_limits<float>::max();
    const qsizetype c = chunk_at(time);
    if (c < 0)
        return {-forever, is_empty() ? forever : first_time(), 0, -1, false};
    const Entry& entry = m_chunks[c];
    const auto& times = entry.keys->times;
    const auto after = std::upper_bound(times.begin(), times.end(), time) - times.begin();
    const float begin = times[at(after - 1)];
    const qsizetype key = entry.first + after - 1;
    if (after < entry.keys->size())
        return {begin, times[at(after)], Ease::bend(entry.keys->eases[at(after)]), key, true};
    if (c + 1 == m_chunks.size())
        return {begin, forever, 0, key, false};
    const Chunk& next = *m_chunks[c + 1].keys;
    return {begin, next.times.front(), Ease::bend(next.eases.front()), key, true};
}

KeyValue KeyTrack::value_at(float time, bool steps) const
{
    if (is_empty())
        return KeyValue(m_type);
    const KeySpan span = span_at(time);
    const KeyValue from = value(std::max<qsizetype>(span.key, 0));
    if (steps || !span.moves || span.begin == time)
        return from;
    return mix(from, value(span.key + 1), Ease::way(span.share(time), span.bend));
}

// Editing ------------------------------------------------------------------------------------------------------------

/// Puts a new chunk together from runs of present keys and single new ones.
class KeyTrack::Builder {
public:
    Builder(std::size_t words, std::size_t count) : m_words(words)
    {
        keys.times.reserve(count);
        keys.eases.reserve(count);
        keys.groups.reserve(count);
        keys.words.reserve(count * words);
    }

    void add(const Chunk& from, std::size_t begin, std::size_t end)
    {
        const auto copy = [](auto& to, const auto& source, std::size_t first, std::size_t last) {
            to.insert(to.end(), source.begin() + std::ptrdiff_t(first), source.begin() + std::ptrdiff_t(last));
        };
        copy(keys.times, from.times, begin, end);
        copy(keys.eases, from.eases, begin, end);
        copy(keys.groups, from.groups, begin, end);
        copy(keys.words, from.words, begin * m_words, end * m_words);
    }
    void add(const Key& key)
    {
        keys.times.push_back(key.time);
        keys.eases.push_back(key.ease);
        keys.groups.push_back(key.group);
        keys.words.insert(keys.words.end(), key.value.words().begin(), key.value.words().end());
    }
    /// What was put together, in even chunks of at most max_chunk keys.
    void finish(KeyTrack& track)
    {
        const std::size_t count = keys.times.size();
        const std::size_t pieces = (count + max_chunk - 1) / max_chunk;
        if (pieces == 1) {
            track.append(ChunkPtr(new Chunk(std::move(keys))));
            return;
        }
        for (std::size_t piece = 0; piece < pieces; ++piece) {
            const std::size_t begin = count * piece / pieces;
            const std::size_t end = count * (piece + 1) / pieces;
            Builder part(m_words, end - begin);
            part.add(keys, begin, end);
            track.append(ChunkPtr(new Chunk(std::move(part.keys))));
        }
    }

    Chunk keys;

private:
    std::size_t m_words;
};

/// Behind all others; joined with the last one when one of them is small.
void KeyTrack::append(ChunkPtr chunk)
{
    const qsizetype begin = size();
    if (!m_chunks.isEmpty()) {
        Entry& last = m_chunks.last();
        const qsizetype both = last.keys->size() + chunk->size();
        if (std::min(last.keys->size(), chunk->size()) < small_chunk && both <= max_chunk) {
            Builder joined(words(), std::size_t(both));
            joined.add(*last.keys, 0, last.keys->times.size());
            joined.add(*chunk, 0, chunk->times.size());
            last.keys = ChunkPtr(new Chunk(std::move(joined.keys)));
            return;
        }
    }
    const float time = chunk->times.front();
    m_chunks.append({std::move(chunk), qint32(begin), time});
}

void KeyTrack::edit(std::span<const qsizetype> removed, std::span<const Key> added)
{
    KeyTrack result(m_type);
    result.m_chunks.reserve(m_chunks.size() + 1);
    std::size_t r = 0;
    std::size_t a = 0;
    const qsizetype count = m_chunks.size();
    for (qsizetype c = 0; c < std::max<qsizetype>(count, 1); ++c) {
        const float end_time = c + 1 < count ? m_chunks[c + 1].time : std::numeric_limits<float>::infinity();
        const qsizetype first = c < count ? m_chunks[c].first : 0;
        const qsizetype end = c < count ? first + m_chunks[c].keys->size() : 0;
        if ((r == removed.size() || removed[r] >= end) && (a == added.size() || added[a].time >= end_time)) {
            if (c < count)
                result.append(m_chunks[c].keys);
            continue;
        }
        static const Chunk none;
        const Chunk& keys = c < count ? *m_chunks[c].keys : none;
        const auto first_later = std::partition_point(added.begin() + std::ptrdiff_t(a), added.end(),
                                                      [=](const Key& key) { return key.time < end_time; });
        Builder builder(words(), keys.times.size() + std::size_t(first_later - added.begin()) - a);
        std::size_t done = 0;
        const std::size_t size = keys.times.size();
        while (true) {
            const std::size_t next_removed = r < removed.size() ? std::min(at(removed[r] - first), size) : size;
            const bool adds = a < added.size() && added[a].time < end_time;
            const auto place = adds
                ? std::lower_bound(keys.times.begin() + std::ptrdiff_t(done), keys.times.end(), added[a].time)
                : keys.times.end();
            const std::size_t next_added = std::size_t(place - keys.times.begin());
            const std::size_t next = std::min(next_removed, next_added);
            builder.add(keys, done, next);
            done = next;
            if (adds && next_added == next) {
                const bool takes_place = done < size && keys.times[done] == added[a].time;
                builder.add(added[a++]);
                if (takes_place) {
                    r += next_removed == done ? 1 : 0;
                    ++done;
                }
            } else if (next_removed == next && next < size) {
                ++done;
                ++r;
            } else {
                break;
            }
        }
        builder.finish(result);
    }
    *this = std::move(result);
}

KeyTrack::Chunk& KeyTrack::chunk_for_writing(qsizetype index)
{
    ChunkPtr& keys = m_chunks[index].keys;
    keys.detach();
    return *keys;
}

void KeyTrack::set_value(qsizetype index, const KeyValue& value)
{
    const qsizetype c = chunk_of(index);
    const auto place = std::ptrdiff_t(at(index - m_chunks[c].first) * words());
    std::copy(value.words().begin(), value.words().end(), chunk_for_writing(c).words.begin() + place);
}

void KeyTrack::set_ease(qsizetype index, float ease)
{
    const qsizetype c = chunk_of(index);
    chunk_for_writing(c).eases[at(index - m_chunks[c].first)] = ease;
}

void KeyTrack::set_group(qsizetype index, int group)
{
    const qsizetype c = chunk_of(index);
    chunk_for_writing(c).groups[at(index - m_chunks[c].first)] = group;
}

void KeyTrack::shift(qsizetype first, float offset, float lowest)
{
    std::vector<float> times;
    if (first > 0)
        times.push_back(time(first - 1));
    const std::size_t before = times.size();
    for (qsizetype c = first < size() ? chunk_of(first) : m_chunks.size(); c < m_chunks.size(); ++c)
        for (qsizetype i = std::max<qsizetype>(first, m_chunks[c].first);
             i < m_chunks[c].first + m_chunks[c].keys->size(); ++i)
            times.push_back(std::clamp(m_chunks[c].keys->times[at(i - m_chunks[c].first)] + offset, lowest, max_time));
    keep_apart(times);
    std::size_t next = before;
    for (qsizetype c = first < size() ? chunk_of(first) : m_chunks.size(); c < m_chunks.size(); ++c) {
        auto& moved = chunk_for_writing(c).times;
        for (std::size_t i = at(std::max<qsizetype>(first - m_chunks[c].first, 0)); i < moved.size(); ++i)
            moved[i] = times[next++];
        m_chunks[c].time = moved.front();
    }
}

// As a value ---------------------------------------------------------------------------------------------------------

bool KeyTrack::operator==(const KeyTrack& other) const
{
    if (m_type != other.m_type || size() != other.size())
        return false;
    if (m_chunks.isSharedWith(other.m_chunks))
        return true;
    const auto same_columns = [](const Chunk& a, const Chunk& b) {
        return a.times == b.times && a.eases == b.eases && a.groups == b.groups && a.words == b.words;
    };
    for (qsizetype c = 0; c < m_chunks.size(); ++c) {
        const Entry& entry = m_chunks[c];
        const Entry* there = c < other.m_chunks.size() ? &other.m_chunks[c] : nullptr;
        if (there && there->first == entry.first && there->keys->size() == entry.keys->size()) {
            if (there->keys != entry.keys && !same_columns(*there->keys, *entry.keys))
                return false;
            continue;
        }
        for (qsizetype i = entry.first; i < entry.first + entry.keys->size(); ++i)
            if (!(key(i) == other.key(i)))
                return false;
    }
    return true;
}

std::size_t KeyTrack::kept_bytes(const KeyTrack& other) const
{
    if (m_chunks.isSharedWith(other.m_chunks) || m_chunks.isEmpty())
        return 0;
    QSet<const Chunk*> shared;
    shared.reserve(other.m_chunks.size());
    for (const Entry& entry : other.m_chunks)
        shared.insert(entry.keys.constData());
    std::size_t bytes = detail::heap_header + std::size_t(m_chunks.capacity()) * sizeof(Entry);
    for (const Entry& entry : m_chunks)
        if (!shared.contains(entry.keys.constData()))
            bytes += sizeof(Chunk) + 4 * detail::heap_header
                + entry.keys->times.size() * (2 * sizeof(float) + sizeof(int) + words() * sizeof(quint32));
    return bytes;
}

} // namespace tarn
