#pragma once

#include "page_base/gui_child_dlg.h"

class CDlgToolMain;
class CPropBar;

/// The strip above the view in the interface mode: its tabs choose what the side panel and the property bar show.
class CDlgTopTable : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgTopTable(QWidget* parent = nullptr);

    void set_tool_main(CDlgToolMain* tool_main) { m_tool_main = tool_main; }
    void set_prop_bar(CPropBar* prop_bar) { m_prop_bar = prop_bar; }

protected:
    void OnInitDialog() override;

private:
    void on_tab(int index);

    CDlgToolMain* m_tool_main = nullptr;
    CPropBar* m_prop_bar = nullptr;
};
