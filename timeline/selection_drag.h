#pragma once

#include "animation/key_drag.h"
#include "core/journal.h"
#include "timeline_selection.h"

#include <functional>
#include <optional>
#include <vector>

namespace tarn {

struct TimelineView;

/// What is selected on the timeline, moved about within one step of undo that ends with this. Each time all is moved from
/// where it stood at first. The selection follows.
class SelectionDrag {
public:
    enum class Items { Keys, Scripts, All };

    SelectionDrag(TimelineView& view, Items items);
    ~SelectionDrag();

    /// Later keys of the same variables move along.
    void set_ripple(bool on);
    /// By how much what is moved can be, next to `offset`: it keeps behind first keys, off the begin and before the end.
    float limited(float offset) const;
    void move(float offset);
    /// Keeps `anchor` in its place.
    void stretch(float anchor, float factor);
    void retime(const std::function<float(float)>& moved);
    /// Whether the last move came onto a script key that is not selected: script keys stayed where they were then.
    bool is_refused() const { return m_refused; }
    /// Whether first keys are selected, which stay where they are.
    bool holds_first_keys() const;
    bool has_moved() const { return m_action.has_value(); }
    /// As if nothing had been moved.
    void restore();
    /// Makes what was moved a step of undo, when it is another than before.
    void keep();

private:
    TimelineView& m_view;
    Journal* m_journal = nullptr;
    const TimelineSelection m_before;
    KeySelection m_moving; ///< the keys that move, where they stood at first
    bool m_ripple = false;
    bool m_takes_scripts;
    std::optional<UserAction> m_action; ///< from the first move on
    std::optional<KeyDrag> m_keys;
    std::vector<float> m_scripts; ///< where they stand now
    bool m_refused = false;
};

} // namespace tarn
