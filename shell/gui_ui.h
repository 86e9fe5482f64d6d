#pragma once

#include "frame/base_plug_ui.h"

class CDlgGuiManagerTimer;
class CDlgToolMain;
class CDlgTopTable;
class CPropBar;
class CTimerControlBar;
class CPageBar;

/// The main object of the interface editor: makes everything that the user sees of it.
class CGuiUI : public CBasePlugUi {
public:
    ~CGuiUI() override;

    void create_tab_windows(QWidget* top_parent, QWidget* side_parent) override;
    void create_control_bars(QMainWindow* frame) override;
    void destroy_windows() override;
    QString get_plug_group() override;
    QString get_plug_name() override;

private:
    void create_world_bar(QMainWindow* frame);
    void create_translation_bar(QMainWindow* frame);
    void connect_styles();
    void connect_timeline();
    void add_commands();

    CDlgToolMain* m_tool_main = nullptr;
    CDlgTopTable* m_top_table = nullptr;
    CPropBar* m_prop_bar = nullptr;
    CTimerControlBar* m_timer_bar = nullptr;
    CPageBar* m_world_bar = nullptr;
    CPageBar* m_translation_bar = nullptr;
    CDlgGuiManagerTimer* m_timebar_list = nullptr;
};
