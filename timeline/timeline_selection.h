#pragma once

#include "animation/timebar.h"

#include <vector>

namespace tarn {

/// What of the current timebar is selected on the timeline: keys by variable and time, script keys by time. Times are held
/// and no objects, so that the selection outlives changes of the keys; what is gone is left out by refresh().
class TimelineSelection {
public:
    const KeySelection& keys() const { return m_keys; }
    const std::vector<float>& scripts() const { return m_scripts; } ///< ascending
    bool is_empty() const { return m_keys.empty() && m_scripts.empty(); }
    std::size_t key_count() const;

    void clear();
    void set_keys(KeySelection keys);
    void set_scripts(std::vector<float> times);
    bool has_key(const CTVar* variable, float time) const;
    /// Whether a key of any variable is selected there.
    bool has_key_at(float time) const;
    bool has_script(float time) const;
    void add_key(CTVar* variable, float time);
    void remove_key(CTVar* variable, float time);
    void add_script(float time);
    void remove_script(float time);
    /// Forgets what the timebar does not have (any more); null has nothing.
    void refresh(const CTimebar* bar);

    // The earliest and the latest time of what is selected; 99999 and 0 when nothing is.
    float section_start() const { return m_start; }
    float section_end() const { return m_end; }

private:
    void measure();

    KeySelection m_keys; ///< without empty lists
    std::vector<float> m_scripts;
    float m_start = 99999;
    float m_end = 0;
};

} // namespace tarn
