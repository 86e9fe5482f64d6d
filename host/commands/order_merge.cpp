#include "order_merge.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace tarn {

namespace {

/// The elements of the longest ascending part of `places`, by their indexes.
std::vector<std::size_t> longest_ascending(const std::vector<qsizetype>& places)
{
    std::vector<std::size_t> ends; // of the best part of each length
    std::vector<qsizetype> before(places.size(), -1);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto at = std::lower_bound(ends.begin(), ends.end(), places[i],
                                         [&](std::size_t end, qsizetype place) { return places[end] < place; });
        if (at != ends.begin())
            before[i] = qsizetype(*(at - 1));
        if (at == ends.end())
            ends.push_back(i);
        else
            *at = i;
    }
    std::vector<std::size_t> part(ends.size());
    qsizetype last = ends.empty() ? -1 : qsizetype(ends.back());
    for (auto slot = part.rbegin(); slot != part.rend(); ++slot) {
        *slot = std::size_t(last);
        last = before[std::size_t(last)];
    }
    return part;
}

/// What one version did to the order of the base.
struct Placement {
    QSet<quint32> placed; ///< moved or added
    QHash<quint32, quint32> anchors;
};

QSet<quint32> placed_by(const IdList& version, const QHash<quint32, qsizetype>& base)
{
    std::vector<qsizetype> places;
    std::vector<quint32> common;
    QSet<quint32> placed;
    for (const ObjectRef child : version) {
        const auto found = base.constFind(child.id);
        if (found == base.constEnd()) {
            placed.insert(child.id);
            continue;
        }
        places.push_back(*found);
        common.push_back(child.id);
    }
    const auto stable = longest_ascending(places);
    auto next = stable.begin();
    for (std::size_t i = 0; i < common.size(); ++i) {
        if (next != stable.end() && *next == i)
            ++next;
        else
            placed.insert(common[i]);
    }
    return placed;
}

class Merger {
public:
    Merger(const OrderVersions& versions, MergeSide preferred) : m_versions(versions), m_preferred(preferred)
    {
        for (qsizetype i = 0; i < versions.base.size(); ++i)
            m_base.insert(versions.base[i].id, i);
        m_ours.placed = placed_by(versions.ours, m_base);
        m_theirs.placed = placed_by(versions.theirs, m_base);
        m_members = QSet<quint32>(versions.members.begin(), versions.members.end());
        find_anchors(versions.ours, m_ours);
        find_anchors(versions.theirs, m_theirs);
        fill_gaps();
    }

    MergedOrder merged(const std::function<bool(const std::vector<quint32>&, const std::vector<quint32>&)>& before)
    {
        emit_gap(0, before);
        for (const ObjectRef child : m_versions.base)
            if (is_stable(child.id)) {
                emit_one(child.id);
                emit_gap(child.id, before);
            }
        for (const quint32 member : m_versions.members)
            if (!m_emitted.contains(member))
                emit_one(member);
        return std::move(m_result);
    }

private:
    struct Gap {
        std::vector<quint32> both;
        std::vector<quint32> ours;
        std::vector<quint32> theirs;
    };

    bool is_stable(quint32 id) const
    {
        return m_members.contains(id) && m_base.contains(id) && !m_ours.placed.contains(id)
            && !m_theirs.placed.contains(id);
    }
    /// Each placed member hangs on the one before it that stays; 0 is the front.
    void find_anchors(const IdList& version, Placement& placement) const
    {
        quint32 anchor = 0;
        for (const ObjectRef child : version) {
            if (is_stable(child.id))
                anchor = child.id;
            else if (m_members.contains(child.id) && placement.placed.contains(child.id))
                placement.anchors.insert(child.id, anchor);
        }
    }
    void fill_gaps()
    {
        const bool ours_first = m_preferred == MergeSide::Ours;
        const Placement& chosen = ours_first ? m_ours : m_theirs;
        for (const ObjectRef child : m_versions.ours)
            if (m_ours.anchors.contains(child.id) && !m_theirs.anchors.contains(child.id))
                m_gaps[m_ours.anchors.value(child.id)].ours.push_back(child.id);
        for (const ObjectRef child : m_versions.theirs)
            if (m_theirs.anchors.contains(child.id) && !m_ours.anchors.contains(child.id))
                m_gaps[m_theirs.anchors.value(child.id)].theirs.push_back(child.id);
        for (const ObjectRef child : ours_first ? m_versions.ours : m_versions.theirs)
            if (m_ours.anchors.contains(child.id) && m_theirs.anchors.contains(child.id))
                m_gaps[chosen.anchors.value(child.id)].both.push_back(child.id);
        m_result.has_conflict = in_both(m_versions.ours, m_ours) != in_both(m_versions.theirs, m_theirs);
    }
    /// Those that both versions placed, with whom they follow, as one of them has it.
    std::vector<std::pair<quint32, quint32>> in_both(const IdList& version, const Placement& placement) const
    {
        std::vector<std::pair<quint32, quint32>> all;
        for (const ObjectRef child : version)
            if (m_ours.anchors.contains(child.id) && m_theirs.anchors.contains(child.id))
                all.emplace_back(child.id, placement.anchors.value(child.id));
        return all;
    }
    void emit_one(quint32 id)
    {
        m_result.ids.append(ObjectRef{id});
        m_emitted.insert(id);
    }
    void emit_gap(quint32 anchor,
                  const std::function<bool(const std::vector<quint32>&, const std::vector<quint32>&)>& before)
    {
        const auto found = m_gaps.constFind(anchor);
        if (found == m_gaps.constEnd())
            return;
        const Gap& gap = *found;
        const bool ours_first = gap.theirs.empty() || gap.ours.empty() || !before(gap.theirs, gap.ours);
        for (const auto* run : {&gap.both, ours_first ? &gap.ours : &gap.theirs, ours_first ? &gap.theirs : &gap.ours})
            for (const quint32 id : *run)
                emit_one(id);
    }

    const OrderVersions& m_versions;
    MergeSide m_preferred;
    QHash<quint32, qsizetype> m_base;
    QSet<quint32> m_members;
    Placement m_ours;
    Placement m_theirs;
    QHash<quint32, Gap> m_gaps; ///< by what they follow
    QSet<quint32> m_emitted;
    MergedOrder m_result;
};

} // namespace

MergedOrder
merge_order(const OrderVersions& versions, MergeSide preferred,
            const std::function<bool(const std::vector<quint32>& run, const std::vector<quint32>& other)>& comes_before)
{
    return Merger(versions, preferred).merged(comes_before);
}

} // namespace tarn
