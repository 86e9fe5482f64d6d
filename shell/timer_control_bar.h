#pragma once

#include "page_bar.h"

class CDlgTopTimer;
class QMainWindow;

/// The timeline bar: holds the timeline's tool page.
class CTimerControlBar : public CPageBar {
    Q_OBJECT

public:
    using CPageBar::CPageBar;

    void create_page();
    CDlgTopTimer& page() { return *m_page; }
    /// While locked the bar keeps its place and height.
    void set_locked(bool on);
    void set_owner_frame(QMainWindow* frame) { m_frame = frame; }
    QMainWindow* owner_frame() const { return m_frame; }

private:
    QMainWindow* m_frame = nullptr;
    CDlgTopTimer* m_page = nullptr;
};
