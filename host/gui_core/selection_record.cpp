#include "selection_record.h"

#include "dxut_control.h"
#include "dxut_dialog.h"

#include <algorithm>

namespace tarn {

void SelectionRecord::add(CDXUTDialog* dialog)
{
    if (m_members.contains(dialog))
        return;
    m_members.insert(dialog);
    dialogs.push_back(dialog);
}

void SelectionRecord::add(CDXUTControl* control)
{
    if (m_members.contains(control))
        return;
    m_members.insert(control);
    controls.push_back(control);
}

void SelectionRecord::clear_dialogs()
{
    for (const CDXUTDialog* dialog : dialogs)
        m_members.remove(dialog);
    dialogs.clear();
    current_dialog = nullptr;
}

void SelectionRecord::clear_controls()
{
    if (dialogs.empty()) {
        m_members.clear();
    } else {
        for (const CDXUTControl* control : controls)
            m_members.remove(control);
    }
    controls.clear();
    current_control = nullptr;
}

void SelectionRecord::prune()
{
    const auto is_gone = [](const auto* object) { return !object->is_attached(); };
    const auto drop = [&](const auto* object) { return is_gone(object) && m_members.remove(object); };
    std::erase_if(dialogs, drop);
    std::erase_if(controls, drop);
    if (current_control && is_gone(current_control))
        current_control = controls.empty() ? nullptr : controls.back();
    if (current_dialog && is_gone(current_dialog))
        current_dialog = dialogs.empty() ? nullptr : dialogs.back();
}

} // namespace tarn
