#pragma once

#include "look.h"

#include <QHash>
#include <QRectF>

#include <optional>
#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CGuiCore;

namespace tarn {

class OpenMenu;
struct LiveState;

/// How a running interface goes over from one look to another: a control when the mouse comes or it is pressed, a menu or a
/// list that opens, a dialog that is minimised or restored. Without a clock, as while an author edits, all is at its end.
class Transitions {
public:
    struct Fade {
        VisualState from;
        double share = 1; ///< of the new look, 0 to 1
    };

    /// The control's way from its last look to `now`; nothing to fade once it is there.
    Fade fade_of(const CDXUTControl& control, VisualState now) const;
    /// How far a list of the open menu has come up, 0 to 1; the outermost one is list 0.
    double share_of(const OpenMenu& menu, std::size_t list) const;
    /// The same of what a control drops down.
    double share_of_popup(const CDXUTControl& control) const;
    /// Where the dialog is, pixels of the screen, on its way to or from its minimised form; none for one that stands still.
    std::optional<QRectF> frame_of(const CDXUTDialog& dialog) const;

    /// `now` are seconds of the interface's clock; `speed` 1 is usual, 2 is twice as fast, 0 is at once. True while
    /// something changes; it is marked to be drawn.
    bool advance(CGuiCore& core, double now, double speed);
    void clear();
    /// Controls and dialogs that are not part of the scene any more go.
    void prune();

private:
    struct Known {
        CDXUTControl* control;
        VisualState from = VisualState::Normal;
        VisualState to = VisualState::Normal;
        double share = 1;
    };
    struct KnownDialog {
        bool minimized = false;
        QRectF frame; ///< when it was seen last
        QRectF from;  ///< where it was before it was minimised or restored
        double share = 1;
    };
    void note(CDXUTControl* control);
    bool advance_controls(const LiveState& live, double step);
    bool advance_menu(CGuiCore& core, double step);
    bool advance_popup(CGuiCore& core, double step);
    bool advance_dialogs(CGuiCore& core, double step);

    std::vector<Known> m_known; ///< controls that are not in their usual look, or were not just now
    const OpenMenu* m_menu = nullptr;
    std::vector<double> m_lists; ///< shares of the open menu's
    const CDXUTControl* m_popup = nullptr;
    double m_popup_share = 1;
    QHash<const CDXUTDialog*, KnownDialog> m_dialogs;
    bool m_runs = false; ///< the clock does
    double m_last = 0;
};

} // namespace tarn
