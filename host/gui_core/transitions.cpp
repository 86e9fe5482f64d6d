#include "transitions.h"

#include "dxut_control.h"
#include "gui_core.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr double duration = 0.15; ///< seconds at the usual speed

} // namespace

Transitions::Fade Transitions::fade_of(const CDXUTControl& control, VisualState now) const
{
    for (const Known& known : m_known)
        if (known.control == &control)
            // A look that nobody has noticed yet begins with the one before it.
            return known.to == now ? Fade{known.from, known.share} : Fade{known.to, 0};
    return {now, 1};
}

void Transitions::note(CDXUTControl* control)
{
    const auto is_it = [control](const Known& known) { return known.control == control; };
    if (control && std::none_of(m_known.begin(), m_known.end(), is_it))
        m_known.push_back({control});
}

bool Transitions::advance(const LiveState& live, double now, double speed)
{
    const double passed = std::max(0.0, now - std::exchange(m_last, now));
    if (speed <= 0) {
        clear();
        return false;
    }
    for (CDXUTControl* control : {live.hovered, live.pressed, live.focused})
        note(control);
    bool changes = false;
    for (Known& known : m_known) {
        const VisualState state = known.control->visual_state();
        if (state != known.to) {
            known.from = std::exchange(known.to, state);
            known.share = 0;
        } else if (known.share < 1) {
            known.share = std::min(1.0, known.share + passed * speed / duration);
        } else {
            continue;
        }
        changes = true;
        known.control->redraw();
    }
    std::erase_if(m_known, [](const Known& known) { return known.share >= 1 && known.to == VisualState::Normal; });
    return changes;
}

void Transitions::prune()
{
    std::erase_if(m_known, [](const Known& known) { return !known.control->is_attached(); });
}

} // namespace tarn
