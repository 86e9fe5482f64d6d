#include "transitions.h"

#include "dxut_control.h"
#include "dxut_dialog.h"
#include "gui_core.h"
#include "open_menu.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr double duration = 0.15; ///< seconds at the usual speed

/// Slow at both ends.
double eased(double share)
{
    return share * share * (3 - 2 * share);
}

QRectF between(const QRectF& from, const QRectF& to, double share)
{
    return {from.topLeft() + (to.topLeft() - from.topLeft()) * share, from.size() + (to.size() - from.size()) * share};
}

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

double Transitions::share_of(const OpenMenu& menu, std::size_t list) const
{
    if (!m_runs)
        return 1;
    // What nobody has noticed yet is about to begin.
    return &menu == m_menu && list < m_lists.size() ? m_lists[list] : 0;
}

double Transitions::share_of_popup(const CDXUTControl& control) const
{
    if (!m_runs)
        return 1;
    return &control == m_popup ? m_popup_share : 0;
}

std::optional<QRectF> Transitions::frame_of(const CDXUTDialog& dialog) const
{
    const auto known = m_dialogs.constFind(&dialog);
    if (known == m_dialogs.constEnd())
        return {};
    if (known->minimized != dialog.minimized())
        return known->frame;
    if (known->share >= 1)
        return {};
    return between(known->from, dialog.outer_rect(), eased(known->share));
}

bool Transitions::advance(CGuiCore& core, double now, double speed)
{
    const double passed = std::max(0.0, now - std::exchange(m_last, now));
    if (speed <= 0) {
        clear();
        return false;
    }
    // What was there before the clock ran does not come up.
    const double step = std::exchange(m_runs, true) ? passed * speed / duration : 1;
    const bool controls = advance_controls(core.live(), step);
    const bool menu = advance_menu(core, step);
    const bool popup = advance_popup(core, step);
    return advance_dialogs(core, step) || controls || menu || popup;
}

bool Transitions::advance_controls(const LiveState& live, double step)
{
    for (CDXUTControl* control : {live.hovered, live.pressed, live.focused})
        note(control);
    bool changes = false;
    for (Known& known : m_known) {
        const VisualState state = known.control->visual_state();
        if (state != known.to) {
            known.from = std::exchange(known.to, state);
            known.share = 0;
        } else if (known.share < 1) {
            known.share = std::min(1.0, known.share + step);
        } else {
            continue;
        }
        changes = true;
        known.control->redraw();
    }
    std::erase_if(m_known, [](const Known& known) { return known.share >= 1 && known.to == VisualState::Normal; });
    return changes;
}

bool Transitions::advance_menu(CGuiCore& core, double step)
{
    const OpenMenu* menu = core.open_menu();
    if (std::exchange(m_menu, menu) != menu)
        m_lists.clear();
    if (!menu)
        return false;
    bool changes = false;
    for (double& share : m_lists) {
        changes = changes || share < 1;
        share = std::min(1.0, share + step);
    }
    const std::size_t count = menu->panels().size();
    changes = changes || m_lists.size() < count;
    m_lists.resize(count, step >= 1 ? 1 : 0);
    if (changes)
        core.add_damage(menu->bounds());
    return changes;
}

bool Transitions::advance_popup(CGuiCore& core, double step)
{
    const CDXUTControl* popup = core.live().popup;
    const bool opens = std::exchange(m_popup, popup) != popup;
    if (opens)
        m_popup_share = 0;
    if (!popup || (!opens && m_popup_share >= 1))
        return false;
    if (!opens || step >= 1)
        m_popup_share = std::min(1.0, m_popup_share + step);
    if (const CDXUTDialog* home = popup->dialog())
        core.add_damage(home->to_screen(popup->raised_area()));
    return true;
}

bool Transitions::advance_dialogs(CGuiCore& core, double step)
{
    bool changes = false;
    for (const CDXUTDialog* dialog : core.GetDialogs()) {
        if (!dialog->GetVisible()) {
            m_dialogs.remove(dialog);
            continue;
        }
        const bool is_new = !m_dialogs.contains(dialog);
        if (is_new && !dialog->dialog_state().minimize_button)
            continue;
        const QRectF frame = dialog->outer_rect();
        KnownDialog& known = m_dialogs[dialog];
        const bool turns = !is_new && known.minimized != dialog->minimized();
        if (turns) {
            known.from = known.frame;
            known.share = 0;
        }
        known.minimized = dialog->minimized();
        known.frame = frame;
        if (known.share >= 1)
            continue;
        if (!turns)
            known.share = std::min(1.0, known.share + step);
        core.add_damage(known.from.united(frame));
        changes = true;
    }
    return changes;
}

void Transitions::clear()
{
    m_known.clear();
    m_menu = nullptr;
    m_lists.clear();
    m_popup = nullptr;
    m_dialogs.clear();
    m_runs = false;
}

void Transitions::prune()
{
    std::erase_if(m_known, [](const Known& known) { return !known.control->is_attached(); });
    if (m_popup && !m_popup->is_attached())
        m_popup = nullptr;
    m_dialogs.removeIf([](const auto& known) { return !known.key()->is_attached(); });
}

} // namespace tarn
