#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CGuiCore;

namespace tarn {

/// What the mouse points at in a view: a control, or the dialog where `control` is null. Both are null over nothing.
struct Target {
    CDXUTDialog* dialog = nullptr;
    CDXUTControl* control = nullptr;

    bool operator==(const Target&) const = default;
    explicit operator bool() const { return dialog != nullptr; }
};

/// Whether the view's mouse and keys work on the control: it is neither locked nor hidden.
bool is_editable(const CDXUTControl& control);

/// What lies at `place`, the topmost first: controls of one dialog, then the dialog itself unless it is the root.
std::vector<Target> targets_at(const CGuiCore& core, QPointF place);

enum class MarqueeMode { Touched, Enclosed };

bool is_caught(const QRectF& object, const QRectF& marquee, MarqueeMode mode);
/// The editable controls that `marquee`, pixels of the screen, catches, in layer order; `home` null looks at all
/// dialogs that are shown.
std::vector<CDXUTControl*> controls_in(const CGuiCore& core, const QRectF& marquee, MarqueeMode mode,
                                       const CDXUTDialog* home);

/// The dialogs in the order in which they are drawn, the root dialog first.
std::vector<CDXUTDialog*> all_dialogs(const CGuiCore& core);

} // namespace tarn
