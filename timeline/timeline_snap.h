#pragma once

#include <Qt>

#include <vector>

namespace tarn {

struct TimelineView;

/// What times snap to while something of the timeline is moved about. Whole frames count while the timebar shows frames,
/// and where they do the begin, the end, marks and what is not selected attract from near. Alt turns that about.
class TimelineSnap {
public:
    explicit TimelineSnap(const TimelineView& view) : m_view(view) {}

    float operator()(float time, Qt::KeyboardModifiers modifiers);
    /// By how much what stands at `time` moves when it should by `offset`.
    float offset(float time, float offset, Qt::KeyboardModifiers modifiers);

private:
    void find_times();

    const TimelineView& m_view;
    std::vector<float> m_times; ///< as they were when they were asked for first
    bool m_found = false;
};

} // namespace tarn
