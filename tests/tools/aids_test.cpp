// Rulers, guide lines and snapping under the mouse.

#include "mouse_fixture.h"

#include "core/language.h"
#include "support/attributes.h"
#include "tools/aids_layer.h"
#include "tools/selection_overlay.h"

#include <QImage>
#include <QPainter>

using namespace tarn;
using namespace tarn::test;

namespace {

class AidsTest : public MouseToolsTest {
protected:
    AidsTest() { core().view_aids() = {.ruler = 1, .coordinate_display = 0, .guide_lines = 1, .snap = 1}; }

    using Guides = QList<quint32>;
    const Guides& vertical() { return core().guides(Qt::Vertical); }
    const Guides& horizontal() { return core().guides(Qt::Horizontal); }
    QImage painted()
    {
        QImage image(1280, 720, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        m_world.mouse_tool()->paint(painter);
        return image;
    }
};

} // namespace

TEST_F(AidsTest, a_guide_is_dragged_out_of_a_ruler_moved_and_dragged_back_each_in_one_step)
{
    drag({5, 300}, {400, 310});
    EXPECT_EQ(vertical(), Guides{400});
    drag({300, 5}, {310, 200});
    drag({300, 5}, {310, 100});
    EXPECT_EQ(horizontal(), (Guides{100, 200}));
    drag({402, 300}, {450, 300}); // grabbed a little beside it
    EXPECT_EQ(vertical(), Guides{450});
    drag({450, 300}, {8, 300});
    EXPECT_EQ(vertical(), Guides{});
    drag({300, 200}, {300, 900}); // out of the view
    drag({300, 5}, {310, 100});   // onto another one
    EXPECT_EQ(horizontal(), Guides{100});
    EXPECT_EQ(m_scene.journal().undo_name(), lang(u"删除辅助线", u"Remove Guide"));
    EXPECT_EQ(undo_all(), 6);
    EXPECT_EQ(horizontal(), Guides{});
}

TEST_F(AidsTest, nothing_becomes_of_a_drag_that_is_dropped_or_ends_where_it_began)
{
    core().move_guide(Qt::Vertical, {}, 400);
    core().document().forget_history();
    drag({400, 300}, {500, 300}, false);
    EXPECT_TRUE(escape());
    mouse(Kind::Release, {500, 300});
    drag({5, 300}, {500, 300}, false);
    m_scene.SetMTFunction(1, 0);
    m_scene.SetMTFunction(0, 0);
    drag({5, 300}, {9, 320});
    drag({5, 5}, {300, 300}); // the corner belongs to neither ruler
    click({5, 300});
    EXPECT_EQ(vertical(), Guides{400});
    EXPECT_FALSE(m_scene.journal().can_undo());
}

TEST_F(AidsTest, handles_and_what_is_selected_come_before_a_guide_and_a_guide_before_all_else)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = button(d, {100, 100, 100, 40});
    core().move_guide(Qt::Vertical, {}, 250);
    core().document().forget_history();
    core().view_aids().snap = 0;
    const QPointF on_both(250, a->screen_rect().center().y());
    drag(on_both, on_both + QPointF(50, 0));
    EXPECT_EQ(vertical(), Guides{300});
    EXPECT_TRUE(selected().empty());
    core().SelectControl(a, false);
    drag({300, on_both.y()}, {330, on_both.y()}); // the right edge's handle is there
    EXPECT_EQ(a->rect(), QRectF(100, 100, 130, 40));
    drag({300, on_both.y()}, {310, on_both.y()}); // inside the button
    EXPECT_EQ(a->rect(), QRectF(110, 100, 130, 40));
    EXPECT_EQ(vertical(), Guides{300});
}

TEST_F(AidsTest, rulers_and_guides_are_there_only_while_switched_on_and_never_in_the_preview)
{
    core().move_guide(Qt::Vertical, {}, 400);
    core().document().forget_history();
    const QColor guide = painted().pixelColor(400, 300);
    EXPECT_NE(guide, QColor(Qt::black));
    EXPECT_NE(painted().pixelColor(600, 2), QColor(Qt::black)) << "the ruler";
    core().view_aids() = {.ruler = 1, .coordinate_display = 0, .guide_lines = 0, .snap = 0};
    EXPECT_EQ(painted().pixelColor(400, 300), QColor(Qt::black));
    drag({400, 300}, {500, 300});
    drag({5, 300}, {500, 300});
    EXPECT_EQ(vertical(), Guides{400}) << "nor can they be moved or made";
    core().view_aids() = {.ruler = 0, .coordinate_display = 0, .guide_lines = 1, .snap = 1};
    EXPECT_EQ(painted().pixelColor(600, 2), QColor(Qt::black));
    EXPECT_EQ(painted().pixelColor(400, 300), QColor(Qt::black)) << "without rulers guides rest";
    CDXUTDialog* d = home();
    core().SelectDialog(d, false);
    drag({150, 110}, {447, 110});
    EXPECT_EQ(d->rect().x(), 397) << "and so does snapping";
    undo_all();
    core().view_aids().ruler = 1;
    EXPECT_EQ(painted().pixelColor(400, 300), guide);
    m_scene.play(true);
    EXPECT_EQ(painted().pixelColor(400, 300), QColor(Qt::black));
    EXPECT_EQ(painted().pixelColor(600, 2), QColor(Qt::black));
}

TEST_F(AidsTest, a_ruler_covers_what_lies_below_it)
{
    CDXUTDialog* d = core().create_dialog({0, 0, 200, 100});
    core().document().forget_history();
    core().view_aids().guide_lines = 0;
    click({100, 8});
    EXPECT_TRUE(core().selection().dialogs.empty());
    EXPECT_TRUE(m_scene.editor().context_commands({100, 8}).empty());
    core().view_aids().ruler = 0;
    click({100, 8});
    EXPECT_EQ(core().selection().dialogs, std::vector{d});
}

TEST_F(AidsTest, guides_are_saved_in_order_and_read_back_and_none_writes_nothing)
{
    const QByteArray without = text();
    EXPECT_FALSE(without.contains("guides"));
    for (const quint32 place : {500u, 0u, 32u})
        core().move_guide(Qt::Vertical, {}, place);
    EXPECT_TRUE(text().contains("\"vertical_guides\":[0,32,500]"));
    ASSERT_TRUE(save(path()).ok());
    const QByteArray before = text();
    m_scene.new_scene();
    EXPECT_TRUE(vertical().isEmpty());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), before));
    for (const quint32 place : {0u, 32u, 500u})
        core().move_guide(Qt::Vertical, place, {});
    EXPECT_TRUE(same_text(text(), without));
}

TEST_F(AidsTest, a_move_snaps_to_guides_siblings_the_dialog_and_the_grid_unless_ctrl_is_held)
{
    CDXUTDialog* d = home(); // its client area begins at (100, 124)
    control(DXUT_CONTROL_BUTTON, d, {200, 200, 60, 20});
    CDXUTControl* a = button(d, {20, 20, 60, 20});
    const auto moved_by = [&](QPointF way, Qt::KeyboardModifiers modifiers = {}) {
        const QPointF grip = a->screen_rect().center();
        mouse(Kind::Press, grip);
        mouse(Kind::Move, grip + way / 2);
        mouse(Kind::Move, grip + way, modifiers);
        mouse(Kind::Release, grip + way, modifiers);
        const QPointF corner = a->rect().topLeft();
        EXPECT_EQ(undo_all(), 1);
        return corner;
    };
    EXPECT_EQ(moved_by({177, 96}), QPointF(200, 120)) << "the left edges, and the grid";
    EXPECT_EQ(moved_by({119, 177}), QPointF(140, 200)) << "right to left edge, and the tops";
    EXPECT_EQ(moved_by({-17, 257}), QPointF(0, 280)) << "the dialog's sides";
    EXPECT_EQ(moved_by({177, 96}, Qt::ControlModifier), QPointF(197, 116));
    core().move_guide(Qt::Vertical, {}, 298);
    core().document().forget_history();
    EXPECT_EQ(moved_by({177, 96}), QPointF(198, 120)) << "the guide is nearer";
    core().view_aids().guide_lines = 0;
    EXPECT_EQ(moved_by({177, 96}), QPointF(200, 120)) << "a hidden one is none";
    core().view_aids().snap = 0;
    EXPECT_EQ(moved_by({177, 96}), QPointF(197, 116));
}

TEST_F(AidsTest, resizing_and_drawing_snap_the_sides_that_move)
{
    CDXUTDialog* d = home();
    control(DXUT_CONTROL_BUTTON, d, {203, 200, 60, 20});
    CDXUTControl* a = button(d, {17, 21, 60, 20});
    core().SelectControl(a, false);
    const QPointF grip = handle_rect(resizable_frame(core()), Handle::Right).center();
    drag(grip, grip + QPointF(125, 40));
    EXPECT_EQ(a->rect(), QRectF(17, 21, 186, 20)) << "to the sibling's left edge; the height is as it was";
    EXPECT_EQ(undo_all(), 1);
    m_scene.SetMTFunction(2, DXUT_CONTROL_CHECKBOX);
    drag({102, 126}, {304, 322});
    EXPECT_EQ(d->controls().last()->rect(), QRectF(0, 0, 203, 200));
    undo_all();
    m_scene.SetMTFunction(1, 0);
    drag({499, 122}, {700, 300});
    EXPECT_EQ(core().GetDialogs().last()->outer_rect(), QRectF(500, 120, 204, 184))
        << "the dialog's side, and the grid";
}

TEST_F(AidsTest, read_outs_count_from_the_screen_or_the_current_dialog)
{
    CDXUTDialog* d = home();
    core().SelectControl(button(d, {20, 20, 60, 20}), false);
    const AidsLayer aids(core());
    EXPECT_EQ(aids.place_text({120, 144}), u"X 120  Y 144"_s);
    core().view_aids().coordinate_display = 1;
    EXPECT_EQ(aids.place_text({120, 144}), u"X 20  Y 20"_s);
    d->set_align_type(9);
    core().set_screen_size({2560, 1440});
    EXPECT_EQ(aids.place_text(d->to_screen(QRectF(20, 20, 1, 1)).topLeft()), u"X 20  Y 20"_s) << "a dialog that scales";
    core().ClearCtrlSelection();
    core().ClearDialogSelection();
    EXPECT_EQ(aids.place_text({120, 144}), u"X 120  Y 144"_s) << "there is none";
}

TEST_F(AidsTest, handles_and_guides_are_reached_by_pixels_of_a_reduced_view)
{
    CDXUTDialog* d = home();
    core().move_guide(Qt::Vertical, {}, 600);
    core().SelectDialog(d, false);
    core().document().forget_history();
    core().view_aids().snap = 0;
    const auto press_and_move = [&](QPointF from, QPointF to) {
        m_world.mouse_tool()->mouse({Kind::Press, from, Qt::LeftButton, {}, 0.25});
        m_world.mouse_tool()->mouse({Kind::Move, to, Qt::NoButton, {}, 0.25});
        m_world.mouse_tool()->mouse({Kind::Release, to, Qt::LeftButton, {}, 0.25});
    };
    press_and_move({588, 600}, {700, 600});
    EXPECT_EQ(vertical(), Guides{700});
    press_and_move({520, 440}, {620, 540}); // beside the corner handle, but near it in the view
    EXPECT_EQ(d->outer_rect().size(), QSizeF(500, 424));
    press_and_move({60, 300}, {300, 300}); // on the ruler, which is wide now
    EXPECT_EQ(vertical(), (Guides{300, 700}));
}

TEST_F(AidsTest, tab_numbers_stand_on_the_controls_that_tab_reaches_in_the_current_dialog)
{
    CDXUTDialog* d = home();
    core().view_aids() = {};
    CDXUTControl* first = button(d, {20, 20, 60, 20});
    CDXUTControl* given = button(d, {20, 80, 60, 20});
    CDXUTControl* label = control(DXUT_CONTROL_STATIC, d, {20, 140, 60, 20});
    CDXUTControl* hidden = button(d, {20, 200, 60, 20});
    hidden->SetVisible(false);
    ASSERT_TRUE(set(*given, "tab_order", qint64(1)).ok());
    core().SelectDialog(d, false);
    const auto badge = [](const QImage& view, const CDXUTControl* c) {
        return view.pixelColor((c->screen_bounds().topLeft() + QPointF(3, 3)).toPoint());
    };
    const QImage without = painted();
    core().view_aids().tab_numbers = true;
    const QImage with = painted();
    EXPECT_NE(badge(with, first), badge(without, first));
    EXPECT_NE(badge(with, given), badge(with, first)) << "a number that was given stands out";
    for (const CDXUTControl* none : {label, hidden})
        EXPECT_EQ(badge(with, none), badge(without, none));
    core().ClearDialogSelection();
    EXPECT_EQ(badge(painted(), first), QColor(Qt::black));
}

TEST_F(AidsTest, rulers_stand_at_the_edges_of_a_view_that_shows_a_part_of_the_screen)
{
    const auto zoomed = [&](Kind kind, QPointF place) {
        m_world.mouse_tool()->mouse({.kind = kind,
                                     .place = place,
                                     .button = kind == Kind::Move ? Qt::NoButton : Qt::LeftButton,
                                     .modifiers = {},
                                     .scale = 8,
                                     .corner = {200, 100}});
    };
    for (const double x : {203.0, 201.0}) { // A ruler is a little over 2 pixels wide there.
        zoomed(Kind::Press, {x, 150});
        zoomed(Kind::Move, {230, 150});
        zoomed(Kind::Move, {250.4, 150});
        zoomed(Kind::Release, {250.4, 150});
        EXPECT_EQ(vertical(), x == 201 ? Guides{250} : Guides{});
    }
}

TEST_F(AidsTest, what_is_moved_snaps_to_the_grid_of_the_chosen_step)
{
    CDXUTControl* c = button(home(), {40, 40, 60, 60});
    SceneEditor& editor = m_scene.editor();
    editor.set_view_setting(u"grid_step"_s, 50);
    editor.set_view_setting(u"grid_step"_s, 7); // is none of the choices
    core().SelectControl(c, false);
    const QPointF from = c->screen_bounds().center();
    drag(from, from + QPointF(57, 14));
    EXPECT_EQ(c->rect().topLeft(), QPointF(100, 50));
    const QImage plain = painted();
    editor.set_view_setting(u"grid"_s, 1);
    EXPECT_NE(painted(), plain) << "the grid is shown";
}
