#pragma once

#include "look.h"

#include <vector>

class CDXUTControl;

namespace tarn {

struct LiveState;

/// How the controls of a running interface go over from one look to another, when the mouse comes or a button is pressed.
class Transitions {
public:
    struct Fade {
        VisualState from;
        double share = 1; ///< of the new look, 0 to 1
    };

    /// The control's way from its last look to `now`; nothing to fade once it is there.
    Fade fade_of(const CDXUTControl& control, VisualState now) const;

    /// `now` are seconds of the interface's clock; `speed` 1 is usual, 2 is twice as fast, 0 is at once. True while
    /// something changes; it is marked to be drawn.
    bool advance(const LiveState& live, double now, double speed);
    void clear() { m_known.clear(); }
    /// Controls that are not part of the scene any more go.
    void prune();

private:
    struct Known {
        CDXUTControl* control;
        VisualState from = VisualState::Normal;
        VisualState to = VisualState::Normal;
        double share = 1;
    };
    void note(CDXUTControl* control);

    std::vector<Known> m_known; ///< controls that are not in their usual look, or were not just now
    double m_last = 0;
};

} // namespace tarn
