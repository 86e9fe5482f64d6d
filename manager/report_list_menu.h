#pragma once

#include "widgets/report_list.h"

class CDXUTMenu;

/// The menus of the scene by their names.
class CReportListMenu : public CReportList {
    Q_OBJECT

public:
    explicit CReportListMenu(QWidget* parent = nullptr);

    CDXUTMenu* menu(int row) const; ///< null when there is no such row

    QString get_item_caption(void* item, int column) const override;

Q_SIGNALS:
    /// The keyboard moved the selection.
    void navigated();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
