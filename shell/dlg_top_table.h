#pragma once

#include "page_base/gui_child_dlg.h"

class CDlgManagerAlign;
class CDlgToolMain;
class CPropBar;

namespace tarn {
enum class Edge;
}

/// The strip above the view in the interface mode: its tabs choose what the side panel and the property bar show, its
/// buttons arrange what is selected, its switches are those of the views.
class CDlgTopTable : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgTopTable(QWidget* parent = nullptr);

    void set_tool_main(CDlgToolMain* tool_main) { m_tool_main = tool_main; }
    void set_prop_bar(CPropBar* prop_bar) { m_prop_bar = prop_bar; }

    void on_set_active(bool active) override;
    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;

private:
    struct AidSwitch;
    static const AidSwitch needing_rulers[3];

    void init_tabs();
    void init_arranging();
    void init_switches();
    void on_tab(int index);
    void align_to_area(tarn::Edge edge);
    void show_arranged();
    void on_ruler();
    void on_selection_mode();
    /// Changes the flag whether or not the rulers are shown; without them its button stays up.
    void flip(const AidSwitch& aid);
    void show_switches();

    CDlgToolMain* m_tool_main = nullptr;
    CPropBar* m_prop_bar = nullptr;
    CDlgManagerAlign* m_align = nullptr; ///< never shown: its operations are the buttons'
};
