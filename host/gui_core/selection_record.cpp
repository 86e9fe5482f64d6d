#include "selection_record.h"

#include "dxut_control.h"
#include "dxut_dialog.h"
#include "dxut_menu.h"
#include "dxut_menu_item.h"

#include <utility>

namespace tarn {

bool SelectionRecord::contains(const CDXUTDialog* dialog) const
{
    return dialog && dialog->m_selected_in == m_dialog_round;
}

bool SelectionRecord::contains(const CDXUTControl* control) const
{
    return control && control->m_selected_in == m_control_round;
}

void SelectionRecord::add(CDXUTDialog* dialog)
{
    if (std::exchange(dialog->m_selected_in, m_dialog_round) != m_dialog_round)
        dialogs.push_back(dialog);
}

void SelectionRecord::add(CDXUTControl* control)
{
    if (std::exchange(control->m_selected_in, m_control_round) != m_control_round)
        controls.push_back(control);
}

void SelectionRecord::select(CDXUTMenu* menu)
{
    if (std::exchange(current_menu, menu) != menu)
        current_menu_item = nullptr;
}

void SelectionRecord::clear_dialogs()
{
    ++m_dialog_round;
    dialogs.clear();
    current_dialog = home();
}

/// Of what is created, pasted, aligned or snapped while controls are selected; null while none is.
CDXUTDialog* SelectionRecord::home() const
{
    return controls_selected && current_control ? current_control->dialog() : nullptr;
}

void SelectionRecord::clear_controls()
{
    ++m_control_round;
    controls.clear();
    current_control = nullptr;
}

void SelectionRecord::prune()
{
    const auto is_gone = [](const auto* object) { return !object->is_attached(); };
    const auto drop = [&](auto* object) {
        if (!is_gone(object))
            return false;
        object->m_selected_in = 0;
        return true;
    };
    std::erase_if(dialogs, drop);
    std::erase_if(controls, drop);
    if (current_control && is_gone(current_control))
        current_control = controls.empty() ? nullptr : controls.back();
    if (current_dialog && is_gone(current_dialog))
        current_dialog = dialogs.empty() ? nullptr : dialogs.back();
    if (CDXUTDialog* dialog = home())
        current_dialog = dialog;
    if (current_menu && is_gone(current_menu))
        select(nullptr);
    if (current_menu_item && is_gone(current_menu_item))
        current_menu_item = nullptr;
}

} // namespace tarn
