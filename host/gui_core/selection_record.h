#pragma once

#include <QtGlobal>

#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CDXUTMenu;
class CDXUTMenuItem;

namespace tarn {

/// What the whole editor regards as selected. The lists are in selection order.
struct SelectionRecord {
    bool editing = true;            ///< the interface is edited; off while it runs
    bool controls_selected = false; ///< the selection is of controls, otherwise of dialogs
    bool menu_editing = false;      ///< the Menu tab is chosen
    /// While controls are selected, the home of the current one, whatever is done to the selection of dialogs.
    CDXUTDialog* current_dialog = nullptr;
    CDXUTControl* current_control = nullptr;
    CDXUTMenu* current_menu = nullptr;
    CDXUTMenuItem* current_menu_item = nullptr; ///< one of the current menu's
    std::vector<CDXUTDialog*> dialogs;          ///< changed through add() and clear_...() only
    std::vector<CDXUTControl*> controls;

    /// False for null. Objects know by themselves in which round they were selected, so asking costs the same for any
    /// number.
    bool contains(const CDXUTDialog* dialog) const;
    bool contains(const CDXUTControl* control) const;
    /// Appends the object to its list; nothing happens when it is there already.
    void add(CDXUTDialog* dialog);
    void add(CDXUTControl* control);
    /// The menu becomes the current one, without a current item; null for none.
    void select(CDXUTMenu* menu);
    void clear_dialogs();
    void clear_controls();
    /// Drops what is no longer part of the scene, and follows the current control to its dialog.
    void prune();

private:
    CDXUTDialog* home() const;

    // Clearing a list begins another round of it, so that what was selected need not be visited.
    quint32 m_dialog_round = 1;
    quint32 m_control_round = 1;
};

} // namespace tarn
