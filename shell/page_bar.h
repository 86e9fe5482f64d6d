#pragma once

#include "frame/control_bar.h"

class CChildDlg;

/// A bar that holds one page.
class CPageBar : public CMyControlBar {
    Q_OBJECT

public:
    using CMyControlBar::CMyControlBar;

    /// Makes the page from its template and takes it over.
    void hold(CChildDlg* page, int template_id);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

private:
    CChildDlg* m_page = nullptr;
};
