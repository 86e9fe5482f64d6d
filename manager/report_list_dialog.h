#pragma once

#include "widgets/report_list.h"

class CDXUTDialog;

/// The dialogs of the scene: the name, and whether the dialog is shown.
class CReportListDialog : public CReportList {
    Q_OBJECT

public:
    explicit CReportListDialog(QWidget* parent = nullptr);

    CDXUTDialog* dialog(int row) const;

    QString get_item_caption(void* item, int column) const override;
    /// Clicks beside the name show and hide the dialog and leave the selection alone.
    bool selects_on_click(int column) const override { return column == 0; }

Q_SIGNALS:
    /// The keyboard moved the selection.
    void navigated();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
