#pragma once

#include "frame/control_bar.h"

#include <utility>

class CDlgGroup;
class CGuiPlugScene;

/// The property bar: of its pages the one that fits the selection is shown.
class CPropBar : public CMyControlBar {
    Q_OBJECT

public:
    using CMyControlBar::CMyControlBar;
    ~CPropBar() override;

    enum Page : int {
        page_dialog = 6376,
        page_control = 6004,
        page_element_editor = 6372,
        page_font_design = 6324,
        page_menu = 6040,
        page_timer = 6172,
    };

    /// Makes the pages; the first one is shown.
    void create_pages();
    CDlgGroup& group() { return *m_group; }

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

private:
    void choose_page();

    CGuiPlugScene* m_scene = nullptr; ///< null until the world exists, and without the scene's plug-in
    CDlgGroup* m_group = nullptr;
    std::pair<const void*, const void*> m_selected; ///< current dialog and control at the last code; only compared
};
