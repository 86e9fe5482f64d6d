#pragma once

#include "frame/control_bar.h"

#include <utility>

class CDlgGroup;
class CGuiPlugScene;
class QLabel;
class QLineEdit;

/// The property bar: of its pages the one that fits the selection is shown. A line above them narrows it to the attributes
/// that are searched for.
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
    /// Shows the bar and gives the keyboard to the line of the search.
    void search();

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void make_search();
    void choose_page();
    bool can_search() const;
    void filter();
    bool key_in_search(int key);

    CGuiPlugScene* m_scene = nullptr; ///< null until the world exists, and without the scene's plug-in
    CDlgGroup* m_group = nullptr;
    QLineEdit* m_search = nullptr;
    QLabel* m_nothing_found = nullptr;
    std::pair<const void*, const void*> m_selected; ///< current dialog and control at the last code; only compared
};
