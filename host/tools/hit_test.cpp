#include "hit_test.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/gui_input.h"

namespace tarn {

bool is_editable(const CDXUTControl& control)
{
    return control.GetVisible() && !control.locked();
}

std::vector<Target> targets_at(const CGuiCore& core, QPointF place)
{
    std::vector<Target> targets;
    CDXUTDialog* dialog = GuiInput::dialog_at(core, place);
    if (!dialog)
        return targets;
    const QPointF inside = dialog->to_client(place);
    const auto& controls = dialog->controls();
    for (auto control = controls.crbegin(); control != controls.crend(); ++control)
        if (is_editable(**control) && (*control)->is_seen() && (*control)->contains(inside))
            targets.push_back({dialog, *control});
    if (!dialog->is_root() && dialog->outer_rect().contains(place))
        targets.push_back({dialog, nullptr});
    return targets;
}

bool is_caught(const QRectF& object, const QRectF& marquee, MarqueeMode mode)
{
    return mode == MarqueeMode::Enclosed ? marquee.contains(object) : marquee.intersects(object);
}

std::vector<CDXUTControl*> controls_in(const CGuiCore& core, const QRectF& marquee, MarqueeMode mode,
                                       const CDXUTDialog* home)
{
    std::vector<CDXUTControl*> caught;
    for (const CDXUTDialog* dialog : all_dialogs(core)) {
        if (!dialog->is_seen() || (home && dialog != home))
            continue;
        for (CDXUTControl* control : dialog->controls())
            if (is_editable(*control) && control->is_seen() && is_caught(control->screen_bounds(), marquee, mode))
                caught.push_back(control);
    }
    return caught;
}

std::vector<CDXUTDialog*> all_dialogs(const CGuiCore& core)
{
    std::vector<CDXUTDialog*> dialogs{core.GetRootDialog()};
    dialogs.insert(dialogs.end(), core.GetDialogs().begin(), core.GetDialogs().end());
    return dialogs;
}

} // namespace tarn
