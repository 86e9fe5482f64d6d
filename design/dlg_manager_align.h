#pragma once

#include "align_math.h"
#include "page_base/gui_child_dlg.h"

/// Lines up, sizes and spaces what is selected, after the current control or the current dialog. The operations draw
/// the views again once when there was something to work on; nobody is notified.
class CDlgManagerAlign : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgManagerAlign(QWidget* parent = nullptr);

    // For the handlers of other pages too, each within their user action
    void align(tarn::Edge edge);
    void match(tarn::Dimension dimension);
    void distribute(Qt::Orientation direction);

protected:
    void OnInitDialog() override;
};
