#pragma once

#include "widgets/report_list.h"

class CDXUTControl;

/// The controls of the scene: number, name, type, dialog and layer. A control that is shown has its type's icon.
class CReportListControl : public CReportList {
    Q_OBJECT

public:
    enum Column { Id, Name, Type, Dialog, Layer };

    explicit CReportListControl(QWidget* parent = nullptr);

    CDXUTControl* control(int row) const; ///< null when there is no such row
    /// The controls of the selected rows from top to bottom.
    std::vector<CDXUTControl*> selected_controls() const;

    QString get_item_caption(void* item, int column) const override;
    int get_item_icon(void* item) const override;
    /// Beside the layer: an eye, and a lock that is clicked by itself.
    std::vector<CellIcon> cell_icons(void* item, int column) const override;
    bool accepts_drop_at(void* item) const override;

Q_SIGNALS:
    /// The keyboard changed the selection.
    void navigated();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
