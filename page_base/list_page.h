#pragma once

#include "core/field_key.h"
#include "gui_child_dlg.h"

class CReportList;
class QPoint;

namespace tarn {
class ModelObject;
} // namespace tarn

/// A page around a list of objects that have names: F2 edits the name of the selected row in place, and the list has a
/// menu with the commands that work on what is selected.
class CListPage : public CGuiChildDlg {
    Q_OBJECT

public:
    using CGuiChildDlg::CGuiChildDlg;

protected:
    struct Naming {
        int column = 0;
        tarn::FieldKey name;
        tarn::ModelObject* (*object_of)(void* row) = nullptr; ///< the object of what the list binds to its rows
        int changed_code = 0;                                 ///< tells that attributes of such objects changed
    };

    /// Once, when the page is made.
    void offer_renaming(CReportList& list, const Naming& naming);
    /// Opens the menu for what is selected at a place of the desktop.
    void pop_list_menu(const QPoint& place);
    /// Lets the user edit the name of the selected row; of several the one that the keyboard is on.
    void edit_name();

private:
    void rename(int row, const QString& name);

    CReportList* m_named_list = nullptr;
    Naming m_naming;
};
