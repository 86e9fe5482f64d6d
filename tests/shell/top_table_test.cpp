#include "support/editor_fixture.h"

#include "widgets/button_st.h"
#include "widgets/super_edit.h"

#include <QCoreApplication>
#include <QTranslator>

namespace tarn::test {

namespace {

enum Id : int {
    id_align_left = 6150,
    id_screen_left = 6552,
    id_ruler = 6159,
    id_snap = 6555,
    id_coordinates = 6161,
    id_guide_lines = 6163,
    id_selection_mode = 6162,
};

class TopTable : public Editor {
protected:
    CChildDlg* table() { return m_top.findChild<CChildDlg*>(u"CDlgTopTable"_s); }
    CChildDlg* align_page() { return table()->findChild<CChildDlg*>(u"CDlgManagerAlign"_s); }
    CButtonST& button(int id) { return *dynamic_cast<CButtonST*>(table()->control(id)); }
    ViewAids& aids() { return core().view_aids(); }
    QString last_step() { return m_scene->journal().undo_name(); }

    /// Three controls of a dialog with a caption bar, of which the last is the one that the others follow.
    void select_controls()
    {
        CDXUTDialog* home = core().create_dialog(QRect(0, 0, 400, 300));
        for (const QRectF& rect : {QRectF(10.5, 20, 30, 10), QRectF(100, 60, 41, 20), QRectF(200, 150, 50, 40)})
            core().SelectControl(core().create_control(DXUT_CONTROL_BUTTON, home, rect), true);
        m_scene->journal().clear();
    }
};

TEST_F(TopTable, each_button_is_one_step_of_its_name_and_tells_nobody)
{
    const struct {
        int id, page_id;
        QString chinese, english;
        QRectF second_control;
    } cases[] = {
        {6150, 6470, u"左对齐"_s, u"Align Left Edges"_s, {200, 60, 41, 20}},
        {6151, 6475, u"中垂线"_s, u"Align Horizontal Centers"_s, {204, 60, 41, 20}},
        {6152, 6482, u"右对齐"_s, u"Align Right Edges"_s, {209, 60, 41, 20}},
        {6153, 6484, u"顶对齐"_s, u"Align Top Edges"_s, {100, 150, 41, 20}},
        {6084, 6487, u"水平中线"_s, u"Align Vertical Centers"_s, {100, 160, 41, 20}},
        {6154, 6492, u"底对齐"_s, u"Align Bottom Edges"_s, {100, 170, 41, 20}},
        {6155, 6495, u"等宽"_s, u"Same Width"_s, {100, 60, 50, 20}},
        {6505, 6498, u"等高"_s, u"Same Height"_s, {100, 60, 41, 40}},
        {6088, 6503, u"等尺寸"_s, u"Same Size"_s, {100, 60, 50, 40}},
        {6089, 6514, u"水平均布"_s, u"Distribute Horizontally"_s, {99.5, 60, 41, 20}},
        {6090, 6517, u"垂直均布"_s, u"Distribute Vertically"_s, {100, 80, 41, 20}},
        {6552, 0, u"屏幕左侧对齐"_s, u"Align to the Screen's Left Side"_s, {90, 60, 41, 20}},
        {6554, 0, u"屏幕右侧对齐"_s, u"Align to the Screen's Right Side"_s, {250, 60, 41, 20}},
        {6518, 0, u"屏幕上侧对齐"_s, u"Align to the Screen's Top Side"_s, {100, 40, 41, 20}},
        {6521, 0, u"屏幕下侧对齐"_s, u"Align to the Screen's Bottom Side"_s, {100, 194, 41, 20}},
        {6549, 0, u"屏幕水平居中对齐"_s, u"Center Horizontally on the Screen"_s, {170, 60, 41, 20}},
        {6516, 0, u"屏幕垂直居中对齐"_s, u"Center Vertically on the Screen"_s, {100, 117, 41, 20}},
    };
    start();
    QTranslator english;
    ASSERT_TRUE(english.load(u":/gui_ui/i18n/tarn_en.qm"_s));
    for (const Language language : {Language::Chinese, Language::English}) {
        VLCMsgIniW::set_language(language);
        if (language == Language::English)
            QCoreApplication::installTranslator(&english);
        m_ui.destroy_windows();
        m_ui.create_control_bars(&m_frame);
        m_ui.create_tab_windows(&m_top, &m_side);
        m_ui.on_world_created(&m_world);
        select_controls();
        const CDXUTControl* second = core().selection().controls[1];
        int redraws = 0;
        m_world.on_redraw = [&redraws] { ++redraws; };
        for (const auto& c : cases) {
            redraws = 0;
            button(c.id).click();
            EXPECT_EQ(second->rect(), c.second_control) << c.id;
            EXPECT_EQ(last_step(), language == Language::Chinese ? c.chinese : c.english);
            EXPECT_EQ(redraws, 1) << c.id;
            EXPECT_TRUE(m_scene->journal().undo());
            EXPECT_FALSE(m_scene->journal().can_undo()) << c.id;
            if (c.page_id == 0)
                continue;
            dynamic_cast<CButtonST&>(*align_page()->control(c.page_id)).click();
            EXPECT_EQ(second->rect(), c.second_control) << c.page_id;
            EXPECT_TRUE(m_scene->journal().undo());
        }
        EXPECT_EQ(second->rect(), QRectF(100, 60, 41, 20));
        core().ClearCtrlSelection();
        redraws = 0;
        for (const auto& c : cases)
            button(c.id).click();
        EXPECT_EQ(redraws, 0) << "nothing is selected";
        m_world.on_redraw = nullptr;
    }
    EXPECT_TRUE(m_codes.empty());
}

TEST_F(TopTable, the_property_page_shows_what_was_arranged)
{
    constexpr int id_x = 6337;
    start();
    const auto shown_x = [this](const QString& page_name) {
        return dynamic_cast<CSuperEdit&>(*page(page_name)->control(id_x)).value();
    };
    select_controls();
    core().SelectControl(core().selection().controls[1], false);
    m_world.broadcast(ui_selection_changed);
    button(id_screen_left).click();
    EXPECT_EQ(shown_x(u"CChildCtrlDimension"_s), core().selection().current_control->rect().x());

    core().SelectDialog(core().create_dialog(QRect(300, 100, 50, 50)), false);
    m_world.broadcast(ui_selection_changed);
    button(id_screen_left).click();
    EXPECT_EQ(core().selection().current_dialog->rect().x(), 0);
    EXPECT_EQ(shown_x(u"CDlgPropDialog"_s), 0);
}

TEST_F(TopTable, the_rulers_take_snapping_with_them)
{
    start();
    for (const int id : {id_snap, id_coordinates, id_guide_lines})
        EXPECT_TRUE(button(id).isEnabled()) << id;
    button(id_ruler).click();
    EXPECT_TRUE(aids().ruler && aids().snap && button(id_snap).isChecked());
    button(id_snap).click();
    EXPECT_FALSE(aids().snap || button(id_snap).isChecked());
    button(id_guide_lines).click();
    EXPECT_TRUE(aids().guide_lines && button(id_guide_lines).isChecked());

    button(id_snap).click();
    button(id_ruler).click();
    EXPECT_FALSE(aids().ruler || aids().snap || button(id_ruler).isChecked() || button(id_snap).isChecked());
    EXPECT_TRUE(aids().guide_lines);
    m_world.broadcast(ui_scene_changed);
    EXPECT_TRUE(button(id_guide_lines).isChecked()) << "it agrees with its flag";
    for (const int id : {id_snap, id_coordinates, id_guide_lines})
        EXPECT_FALSE(button(id).isEnabled()) << id;
    button(id_ruler).click();
    EXPECT_TRUE(aids().snap && button(id_snap).isChecked());
    EXPECT_TRUE(button(id_guide_lines).isChecked());
    for (const int id : {id_snap, id_coordinates, id_guide_lines})
        EXPECT_TRUE(button(id).isEnabled()) << id;
    EXPECT_FALSE(m_scene->journal().can_undo());
}

TEST_F(TopTable, without_rulers_a_flag_changes_though_its_button_stays_up)
{
    start();
    const struct {
        int id;
        quint32 ViewAids::*flag;
    } cases[] = {{id_snap, &ViewAids::snap},
                 {id_coordinates, &ViewAids::coordinate_display},
                 {id_guide_lines, &ViewAids::guide_lines}};
    for (const auto& c : cases)
        for (const quint32 expected : {1u, 0u, 1u}) {
            button(c.id).click();
            EXPECT_EQ(aids().*c.flag, expected) << c.id;
            EXPECT_FALSE(button(c.id).isChecked()) << c.id;
            m_world.broadcast(ui_scene_changed);
            EXPECT_FALSE(button(c.id).isChecked()) << c.id;
        }
    button(id_ruler).click();
    for (const auto& c : cases)
        EXPECT_TRUE(button(c.id).isChecked()) << "with rulers the flag shows " << c.id;
}

TEST_F(TopTable, the_switches_follow_flags_that_others_change)
{
    start();
    button(id_ruler).click();
    button(id_ruler).click();
    aids() = {.ruler = 1, .coordinate_display = 1, .guide_lines = 0, .snap = 1};
    m_world.broadcast(ui_full_refresh);
    for (const int id : {id_ruler, id_snap, id_coordinates})
        EXPECT_TRUE(button(id).isChecked() && button(id).isEnabled()) << id;
    EXPECT_FALSE(button(id_guide_lines).isChecked());
    EXPECT_TRUE(button(id_guide_lines).isEnabled());
}

TEST_F(TopTable, the_selection_modes_button_shows_the_mode_from_before_the_click)
{
    start();
    const auto& mode = m_scene->selection_mode();
    for (const bool touched_before : {true, false, true}) {
        EXPECT_EQ(mode.touched, quint32(touched_before));
        button(id_selection_mode).click();
        EXPECT_EQ(button(id_selection_mode).isChecked(), touched_before);
        EXPECT_EQ(mode.touched, quint32(!touched_before));
        EXPECT_EQ(mode.enclosed, quint32(touched_before));
        m_world.broadcast(ui_full_refresh);
        EXPECT_EQ(button(id_selection_mode).isChecked(), touched_before);
    }
}

TEST_F(TopTable, nothing_is_arranged_while_the_interface_runs)
{
    start();
    m_scene->play(true);
    m_world.broadcast(ui_scene_changed);
    EXPECT_FALSE(button(id_align_left).isEnabled() || button(id_screen_left).isEnabled());
    EXPECT_TRUE(button(id_ruler).isEnabled());
    m_scene->play(false);
    m_world.broadcast(ui_scene_changed);
    EXPECT_TRUE(button(id_align_left).isEnabled() && button(id_screen_left).isEnabled());
}

TEST_F(TopTable, is_disabled_without_a_scene)
{
    start(false);
    m_world.broadcast(ui_full_refresh);
    for (CChildDlg* page : {table(), align_page()})
        for (auto control = page->controls().begin(); control != page->controls().end(); ++control)
            EXPECT_FALSE(control.value()->isEnabled()) << control.key();
}

TEST_F(TopTable, stands_in_one_row_of_a_usual_view_and_in_more_of_a_narrow_one)
{
    for (const Language language : {Language::Chinese, Language::English}) {
        VLCMsgIniW::set_language(language);
        m_ui.create_control_bars(&m_frame);
        m_ui.create_tab_windows(&m_top, &m_side);
        const int row = table()->sizeHint().height();
        EXPECT_EQ(table()->heightForWidth(900), row);
        EXPECT_GT(table()->heightForWidth(500), row);
        EXPECT_LT(table()->minimumSizeHint().width(), 350);
        for (QWidget* control : table()->controls())
            if (auto* button = qobject_cast<CButtonST*>(control)) {
                EXPECT_FALSE(button->toolTip().isEmpty());
                EXPECT_FALSE(button->icon().isNull());
            }
        m_ui.destroy_windows();
    }
}

} // namespace

} // namespace tarn::test
