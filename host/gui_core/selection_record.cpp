#include "selection_record.h"

#include "dxut_control.h"
#include "dxut_dialog.h"

#include <algorithm>

namespace tarn {

bool SelectionRecord::contains(const CDXUTDialog* dialog) const
{
    return std::find(dialogs.begin(), dialogs.end(), dialog) != dialogs.end();
}

bool SelectionRecord::contains(const CDXUTControl* control) const
{
    return std::find(controls.begin(), controls.end(), control) != controls.end();
}

void SelectionRecord::clear_dialogs()
{
    dialogs.clear();
    current_dialog = nullptr;
}

void SelectionRecord::clear_controls()
{
    controls.clear();
    current_control = nullptr;
}

void SelectionRecord::prune()
{
    const auto is_gone = [](const auto* object) { return !object->is_attached(); };
    std::erase_if(dialogs, is_gone);
    std::erase_if(controls, is_gone);
    if (current_control && is_gone(current_control))
        current_control = controls.empty() ? nullptr : controls.back();
    if (current_dialog && is_gone(current_dialog))
        current_dialog = dialogs.empty() ? nullptr : dialogs.back();
}

} // namespace tarn
