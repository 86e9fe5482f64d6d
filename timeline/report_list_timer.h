#pragma once

#include "widgets/report_list.h"

class CTimebar;

/// The timebars of the scene in the order in which they win: name, length, numbers of script keys and of timer objects.
class CReportListTimer : public CReportList {
    Q_OBJECT

public:
    explicit CReportListTimer(QWidget* parent = nullptr);

    CTimebar* bar(int row) const; ///< null when there is no such row

    QString get_item_caption(void* item, int column) const override;

Q_SIGNALS:
    /// The keyboard moved the selection.
    void navigated();
    /// F2 on a selected row.
    void rename_pressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
