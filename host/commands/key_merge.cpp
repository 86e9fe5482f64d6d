#include "key_merge.h"

#include <limits>

namespace tarn {

namespace {

/// Goes through the keys of a track.
class Keys {
public:
    explicit Keys(const KeyTrack& track) : m_track(track) { read(); }
    float time() const { return m_key ? m_key->time : std::numeric_limits<float>::infinity(); }
    std::optional<Key> take_at(float time)
    {
        if (this->time() != time)
            return std::nullopt;
        const auto taken = m_key;
        ++m_next;
        read();
        return taken;
    }

private:
    void read() { m_key = m_next < m_track.size() ? std::optional(m_track.key(m_next)) : std::nullopt; }

    const KeyTrack& m_track;
    qsizetype m_next = 0;
    std::optional<Key> m_key;
};

/// The part `member` of three keys; false when both versions changed it to something else.
template <class Part>
bool merge_part(Part Key::*member, const KeyConflict& keys, MergeSide preferred, Key& merged)
{
    const bool ours_changed = !keys.base || (*keys.ours).*member != (*keys.base).*member;
    const bool theirs_changed = !keys.base || (*keys.theirs).*member != (*keys.base).*member;
    const bool differ = (*keys.ours).*member != (*keys.theirs).*member;
    const bool clash = ours_changed && theirs_changed && differ;
    if (theirs_changed && (!ours_changed || (clash && preferred == MergeSide::Theirs)))
        merged.*member = (*keys.theirs).*member;
    return !clash;
}

bool merge_key(const KeyConflict& keys, MergeSide preferred, std::optional<Key>& merged)
{
    merged = keys.ours;
    if (keys.ours == keys.theirs || keys.theirs == keys.base)
        return true;
    if (keys.ours == keys.base) {
        merged = keys.theirs;
        return true;
    }
    if (!keys.ours || !keys.theirs) {
        if (preferred == MergeSide::Theirs)
            merged = keys.theirs;
        return false;
    }
    const bool value = merge_part(&Key::value, keys, preferred, *merged);
    const bool ease = merge_part(&Key::ease, keys, preferred, *merged);
    const bool group = merge_part(&Key::group, keys, preferred, *merged);
    return value && ease && group;
}

} // namespace

KeyTrack merge_keys(const KeyTrack& base, const KeyTrack& ours, const KeyTrack& theirs,
                    const std::function<MergeSide(const KeyConflict&)>& choose)
{
    std::vector<Key> all;
    all.reserve(std::size_t(std::max(ours.size(), theirs.size())));
    Keys in_base(base);
    Keys in_ours(ours);
    Keys in_theirs(theirs);
    for (;;) {
        const float time = std::min({in_base.time(), in_ours.time(), in_theirs.time()});
        if (time == std::numeric_limits<float>::infinity())
            break;
        const KeyConflict keys{time, in_base.take_at(time), in_ours.take_at(time), in_theirs.take_at(time)};
        std::optional<Key> merged;
        if (!merge_key(keys, MergeSide::Ours, merged) && choose(keys) == MergeSide::Theirs)
            (void)merge_key(keys, MergeSide::Theirs, merged);
        if (merged)
            all.push_back(*merged);
    }
    KeyTrack track(ours.type());
    track.edit({}, all);
    return track;
}

QString json_of(const Key& key)
{
    return QStringLiteral("{\"value\":[%1],\"ease\":%2,\"group\":%3}")
        .arg(key.value.to_text())
        .arg(double(key.ease))
        .arg(key.group);
}

} // namespace tarn
