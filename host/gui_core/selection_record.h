#pragma once

#include <QSet>

#include <vector>

class CDXUTControl;
class CDXUTDialog;

namespace tarn {

/// What the whole editor regards as selected. The lists are in selection order.
struct SelectionRecord {
    bool editing = true;            ///< the interface is edited; off while it runs
    bool controls_selected = false; ///< the selection is of controls, otherwise of dialogs
    bool menu_editing = false;      ///< the Menu tab is chosen
    CDXUTDialog* current_dialog = nullptr;
    CDXUTControl* current_control = nullptr;
    std::vector<CDXUTDialog*> dialogs; ///< changed through add() and clear_...() only
    std::vector<CDXUTControl*> controls;

    bool contains(const CDXUTDialog* dialog) const { return m_members.contains(dialog); }
    bool contains(const CDXUTControl* control) const { return m_members.contains(control); }
    /// Appends the object to its list; nothing happens when it is there already.
    void add(CDXUTDialog* dialog);
    void add(CDXUTControl* control);
    void clear_dialogs();
    void clear_controls();
    /// Drops what is no longer part of the scene.
    void prune();

private:
    QSet<const void*> m_members; ///< what is in the two lists
};

} // namespace tarn
