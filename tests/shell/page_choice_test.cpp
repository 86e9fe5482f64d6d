#include "support/editor_fixture.h"

#include "frame/dlg_group.h"
#include "shell/dlg_tool_main.h"
#include "shell/prop_bar.h"

#include <QTabBar>

namespace tarn::test {

namespace {

class PageChoice : public Editor {
protected:
    CPropBar& bar() { return *dynamic_cast<CPropBar*>(m_ui.control_bars().front()); }
    CDXUTControl* add_control()
    {
        return core().create_control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), QRectF(0, 0, 50, 20));
    }
};

TEST_F(PageChoice, bars_and_modes_stand_in_their_fixed_order)
{
    start();
    ASSERT_EQ(m_ui.control_bars().size(), 4u);
    for (const QWidget* one : m_ui.control_bars())
        EXPECT_TRUE(one->isHidden());
    ASSERT_EQ(m_ui.mode_tabs().size(), 2u);
    EXPECT_EQ(m_ui.mode_tabs()[0]->title, u"高级界面"_s);
    EXPECT_EQ(m_ui.mode_tabs()[1]->top_window, nullptr);
    const QList<int> expected{6376, 6004, 6372, 6324, 6040, 6172};
    for (int i = 0; i < expected.size(); ++i)
        EXPECT_EQ(bar().group().widget(i), bar().group().find_wnd(expected[i])) << i;
}

TEST_F(PageChoice, follows_the_selection_on_the_four_codes_only)
{
    start();
    core().SelectControl(add_control(), false);
    for (const int other : {70001, 70003, 70005, 70006, 70007, 70008, 99}) {
        m_world.broadcast(other);
        EXPECT_EQ(bar().group().shown_id(), CPropBar::page_dialog) << other;
    }
    for (const int code : {1, 70000, 70002, 70004}) {
        bar().group().show_wnd_by_id(CPropBar::page_dialog);
        m_world.broadcast(code);
        EXPECT_EQ(bar().group().shown_id(), CPropBar::page_control) << code;
    }
    core().selection().current_control = nullptr; // A selection of controls without a current one.
    m_world.broadcast(70004);
    EXPECT_EQ(bar().group().shown_id(), CPropBar::page_dialog);
}

TEST_F(PageChoice, design_pages_stay_and_menu_editing_wins_over_them)
{
    start();
    core().SelectControl(add_control(), false);
    for (const int design : {CPropBar::page_element_editor, CPropBar::page_font_design}) {
        core().selection().menu_editing = false;
        bar().group().show_wnd_by_id(design);
        m_world.broadcast(70004);
        EXPECT_EQ(bar().group().shown_id(), design);
        core().selection().menu_editing = true;
        m_world.broadcast(70004);
        EXPECT_EQ(bar().group().shown_id(), CPropBar::page_menu);
    }
}

TEST_F(PageChoice, tabs_of_the_top_table_choose_both_pages)
{
    start();
    auto* tabs = m_top.findChild<QTabBar*>(u"id_6000"_s);
    auto* side = dynamic_cast<CDlgToolMain*>(m_ui.mode_tabs()[0]->side_window);
    ASSERT_TRUE(tabs && side);
    struct Case {
        int tab, side_page, property_page;
        bool menu_editing;
    };
    for (const Case& c : {Case{1, 6562, 6376, false}, Case{2, 6164, 6372, false}, Case{3, 6039, 6040, true},
                          Case{0, 6002, 6376, false}}) {
        tabs->setCurrentIndex(c.tab);
        EXPECT_EQ(side->group().shown_id(), c.side_page) << c.tab;
        EXPECT_EQ(bar().group().shown_id(), c.property_page) << c.tab;
        EXPECT_EQ(core().selection().menu_editing, c.menu_editing) << c.tab;
    }
}

TEST_F(PageChoice, without_a_scene_every_page_is_disabled_and_codes_do_nothing)
{
    start(false);
    for (const int code : {1, 70000, 70001, 70002, 70003, 70004, 70005, 99})
        m_world.broadcast(code);
    EXPECT_EQ(bar().group().shown_id(), CPropBar::page_dialog);
    const auto widgets = page(u"CDlgGuiManager"_s)->controls();
    ASSERT_GE(widgets.size(), 10);
    for (auto widget = widgets.begin(); widget != widgets.end(); ++widget)
        EXPECT_FALSE(widget.value()->isEnabled()) << widget.key();
}

} // namespace

} // namespace tarn::test
