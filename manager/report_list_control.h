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

Q_SIGNALS:
    /// The selection was changed with the keyboard, or by dragging the mouse over several rows.
    void navigated();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    std::pair<int, int> cell_under_mouse() const;

    std::pair<int, int> m_pressed_cell{-1, -1};
};
