#include "selection_record.h"

#include "dxut_control.h"
#include "dxut_dialog.h"

#include <utility>

namespace tarn {

bool SelectionRecord::contains(const CDXUTDialog* dialog) const
{
    return dialog && dialog->m_selected;
}

bool SelectionRecord::contains(const CDXUTControl* control) const
{
    return control && control->m_selected;
}

void SelectionRecord::add(CDXUTDialog* dialog)
{
    if (!std::exchange(dialog->m_selected, true))
        dialogs.push_back(dialog);
}

void SelectionRecord::add(CDXUTControl* control)
{
    if (!std::exchange(control->m_selected, true))
        controls.push_back(control);
}

void SelectionRecord::clear_dialogs()
{
    for (CDXUTDialog* dialog : dialogs)
        dialog->m_selected = false;
    dialogs.clear();
    current_dialog = nullptr;
}

void SelectionRecord::clear_controls()
{
    walk_objects(controls, [](CDXUTControl* control) { control->m_selected = false; });
    controls.clear();
    current_control = nullptr;
}

void SelectionRecord::prune()
{
    const auto is_gone = [](const auto* object) { return !object->is_attached(); };
    const auto drop = [&](auto* object) { return is_gone(object) && std::exchange(object->m_selected, false); };
    std::erase_if(dialogs, drop);
    std::erase_if(controls, drop);
    if (current_control && is_gone(current_control))
        current_control = controls.empty() ? nullptr : controls.back();
    if (current_dialog && is_gone(current_dialog))
        current_dialog = dialogs.empty() ? nullptr : dialogs.back();
}

} // namespace tarn
