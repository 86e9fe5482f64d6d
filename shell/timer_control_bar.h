#pragma once

#include "frame/control_bar.h"

class CDlgTopTimer;
class QMainWindow;

/// The timeline bar: holds the timeline's tool page.
class CTimerControlBar : public CMyControlBar {
    Q_OBJECT

public:
    using CMyControlBar::CMyControlBar;

    void create_page();
    CDlgTopTimer& page() { return *m_page; }
    /// While locked the bar keeps its place and height.
    void set_locked(bool on);
    void set_owner_frame(QMainWindow* frame) { m_frame = frame; }
    QMainWindow* owner_frame() const { return m_frame; }

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

private:
    QMainWindow* m_frame = nullptr;
    CDlgTopTimer* m_page = nullptr;
};
