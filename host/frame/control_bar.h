#pragma once

#include "widgets/sizing_control_bar.h"

class CBaseWorld;

/// A docked bar of a plug-in. It hears of the world and of the notification codes.
class CMyControlBar : public CSizingControlBar {
    Q_OBJECT

public:
    using CSizingControlBar::CSizingControlBar;

    virtual void on_world_created(CBaseWorld* world) = 0;
    virtual void update_ui(int code) = 0;

    /// Index of the page that the frame shows beside this bar; -1 for none.
    int linked_page_index = -1;
    /// The frame shows and hides it with the modes; otherwise only the author does.
    bool follows_modes = true;
};
