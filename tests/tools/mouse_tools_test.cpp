#include "mouse_fixture.h"

#include "gui_core/control_class.h"
#include "tools/selection_overlay.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

using namespace tarn;
using namespace tarn::test;

namespace {

struct Resize {
    Handle handle;
    QRectF frame; ///< what (0, 0, 100, 60) becomes when the handle is dragged by (10, 20)
};

} // namespace

TEST_F(MouseToolsTest, a_dialog_is_drawn_from_any_corner_as_one_step)
{
    for (const auto& [from, to] :
         {std::pair<QPointF, QPointF>{{200.6, 100.2}, {500.9, 300.9}}, {{500, 300}, {200, 100}}}) {
        m_scene.SetMTFunction(1, 0);
        EXPECT_EQ(m_scene.mouse_function(), 1);
        drag(from, to);
        ASSERT_EQ(core().GetDialogs().size(), 1);
        CDXUTDialog* made = core().GetDialogs().first();
        EXPECT_EQ(made->outer_rect(), QRectF(200, 100, 300, 200)) << "the frame that was drawn, caption included";
        EXPECT_EQ(core().selection().dialogs, std::vector{made});
        EXPECT_EQ(m_scene.mouse_function(), 0) << "back to selecting";
        EXPECT_EQ(undo_all(), 1);
    }
}

TEST_F(MouseToolsTest, a_click_makes_the_usual_size_and_a_sliver_the_smallest)
{
    CDXUTDialog* d = home();
    for (const ControlClass& row : control_classes()) {
        if (!row.create)
            continue;
        m_scene.SetMTFunction(2, row.type);
        click({150, 200});
        ASSERT_EQ(d->GetControlNum(), 1) << row.class_name;
        EXPECT_EQ(d->controls().first()->screen_rect(), QRectF(QPointF(150, 200), row.default_size)) << row.class_name;
        EXPECT_EQ(core().selection().current_control, d->controls().first());
        m_scene.journal().undo();
    }
    m_scene.SetMTFunction(2, DXUT_CONTROL_BUTTON);
    drag({150, 200}, {152, 280});
    EXPECT_EQ(d->controls().first()->rect().size(), QSizeF(8, 80));
    m_scene.SetMTFunction(1, 0);
    click({600, 400});
    EXPECT_EQ(core().GetDialogs().last()->outer_rect(), QRectF(600, 400, 260, 180));
}

TEST_F(MouseToolsTest, a_control_goes_into_the_dialog_below_it_or_the_root)
{
    CDXUTDialog* d = home();
    m_scene.SetMTFunction(2, DXUT_CONTROL_CHECKBOX);
    drag({150, 200}, {250, 240});
    EXPECT_EQ(d->controls().first()->rect(), QRectF(50, 200 - 124, 100, 40));
    m_scene.SetMTFunction(2, DXUT_CONTROL_CHECKBOX);
    drag({700, 200}, {800, 240});
    EXPECT_EQ(core().GetRootDialog()->controls().first()->rect(), QRectF(700, 200, 100, 40));
}

TEST_F(MouseToolsTest, types_that_cannot_be_made_make_nothing)
{
    home();
    for (const int type : {7, 14, -5, 1000}) {
        m_scene.SetMTFunction(2, type);
        click({150, 200});
        m_scene.SetMTFunction(0, 0);
    }
    EXPECT_TRUE(core().controls().empty());
    EXPECT_FALSE(m_scene.journal().can_undo());
}

TEST_F(MouseToolsTest, escape_first_drops_the_frame_and_then_the_tool)
{
    m_scene.SetMTFunction(1, 0);
    drag({100, 100}, {300, 300}, false);
    EXPECT_TRUE(escape());
    mouse(Kind::Release, {300, 300});
    EXPECT_TRUE(core().GetDialogs().isEmpty());
    EXPECT_EQ(m_scene.mouse_function(), 1);
    EXPECT_TRUE(escape());
    EXPECT_EQ(m_scene.mouse_function(), 0);
    EXPECT_FALSE(escape()) << "nothing is left to drop";
}

TEST_F(MouseToolsTest, a_drag_moves_what_is_selected_in_one_step)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = control(DXUT_CONTROL_BUTTON, d, {20, 20, 60, 20});
    CDXUTControl* b = control(DXUT_CONTROL_BUTTON, d, {20, 80, 60, 20});
    core().document().forget_history();
    click(a->screen_rect().center());
    click(b->screen_rect().center(), Qt::ControlModifier);
    EXPECT_EQ(core().selection().controls, (std::vector{a, b}));
    drag(a->screen_rect().center(), a->screen_rect().center() + QPointF(30.4, -10.4));
    EXPECT_EQ(a->rect(), QRectF(50, 10, 60, 20));
    EXPECT_EQ(b->rect(), QRectF(50, 70, 60, 20));
    EXPECT_EQ(undo_all(), 1);
    drag({200, 110}, {250, 150});
    EXPECT_EQ(d->rect(), QRect(150, 140, 400, 300));
    EXPECT_EQ(core().selection().dialogs, std::vector{d});
    EXPECT_TRUE(core().selection().controls.empty());
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(d->rect().topLeft(), QPoint(100, 100));
}

TEST_F(MouseToolsTest, a_drag_follows_the_mouse_in_a_dialog_that_scales)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = control(DXUT_CONTROL_BUTTON, d, {20, 20, 60, 20});
    d->set_align_type(9);
    core().set_screen_size({2560, 1440});
    const QPointF centre = a->screen_rect().center();
    drag(centre, centre + QPointF(40, 20));
    EXPECT_EQ(a->screen_rect().center(), centre + QPointF(40, 20));
    EXPECT_EQ(a->rect(), QRectF(40, 30, 60, 20));
}

TEST_F(MouseToolsTest, a_trembling_click_moves_nothing)
{
    CDXUTDialog* d = home();
    mouse(Kind::Press, {200, 110});
    mouse(Kind::Move, {202, 112});
    mouse(Kind::Release, {202, 112});
    EXPECT_EQ(d->rect().topLeft(), QPoint(100, 100));
    EXPECT_FALSE(m_scene.journal().can_undo());
}

TEST_F(MouseToolsTest, escape_and_another_tool_drop_a_drag_as_if_it_had_not_begun)
{
    CDXUTDialog* d = home();
    const QByteArray before = text();
    drag({200, 110}, {300, 300}, false);
    EXPECT_FALSE(same_text(text(), before));
    EXPECT_FALSE(m_scene.journal().undo()) << "not in the middle of a drag";
    EXPECT_TRUE(escape());
    EXPECT_TRUE(same_text(text(), before));
    mouse(Kind::Move, {400, 400});
    mouse(Kind::Release, {400, 400});
    EXPECT_TRUE(same_text(text(), before));
    EXPECT_FALSE(m_scene.journal().can_undo());
    drag({200, 110}, {300, 300}, false);
    m_scene.SetMTFunction(1, 0);
    EXPECT_TRUE(same_text(text(), before));
    EXPECT_FALSE(m_scene.journal().in_action());
    EXPECT_TRUE(m_scene.journal().is_saved());
    EXPECT_EQ(d->rect().topLeft(), QPoint(100, 100));
}

TEST_F(MouseToolsTest, what_is_removed_during_a_drag_is_let_go)
{
    CDXUTDialog* d = home();
    drag({200, 110}, {300, 300}, false);
    m_scene.RemoveDialog(d);
    m_scene.new_scene();
    mouse(Kind::Move, {400, 400});
    mouse(Kind::Release, {400, 400});
    EXPECT_FALSE(m_scene.journal().in_action());
    EXPECT_FALSE(m_scene.journal().can_undo());
    EXPECT_TRUE(core().selection().dialogs.empty());
}

TEST_F(MouseToolsTest, what_is_removed_between_press_and_drag_is_not_moved)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = button(d, {20, 20, 60, 20});
    const QPointF centre = a->screen_rect().center();
    mouse(Kind::Press, centre);
    EXPECT_TRUE(m_scene.editor().run(GuiSceneEditor::remove).ok());
    mouse(Kind::Move, centre + QPointF(50, 50));
    mouse(Kind::Release, centre + QPointF(50, 50));
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(a->rect(), QRectF(20, 20, 60, 20));
}

TEST_F(MouseToolsTest, locked_controls_are_left_alone)
{
    CDXUTDialog* d = home();
    CDXUTControl* locked = control(DXUT_CONTROL_BUTTON, d, {20, 20, 60, 20});
    CDXUTControl* free = control(DXUT_CONTROL_BUTTON, d, {20, 80, 60, 20});
    locked->set_locked(true);
    click(locked->screen_rect().center());
    EXPECT_TRUE(core().selection().controls.empty());
    core().SelectControl(locked, false);
    EXPECT_TRUE(resizable_frame(core()).isNull());
    core().SelectControl(free, true);
    drag(free->screen_rect().center(), free->screen_rect().center() + QPointF(15, 15));
    EXPECT_EQ(free->rect().topLeft(), QPointF(35, 95));
    EXPECT_EQ(locked->rect().topLeft(), QPointF(20, 20));
}

TEST_F(MouseToolsTest, each_handle_moves_its_sides_in_one_step)
{
    CDXUTDialog* d = home();
    CDXUTControl* c = control(DXUT_CONTROL_BUTTON, d, {50, 50, 100, 60});
    core().document().forget_history();
    const Resize cases[] = {
        {Handle::TopLeft, {60, 70, 90, 40}},      {Handle::Top, {50, 70, 100, 40}},
        {Handle::TopRight, {50, 70, 110, 40}},    {Handle::Right, {50, 50, 110, 60}},
        {Handle::BottomRight, {50, 50, 110, 80}}, {Handle::Bottom, {50, 50, 100, 80}},
        {Handle::BottomLeft, {60, 50, 90, 80}},   {Handle::Left, {60, 50, 90, 60}},
    };
    for (const Resize& wanted : cases) {
        core().SelectControl(c, false);
        QPointF grip = handle_rect(resizable_frame(core()), wanted.handle).center();
        drag(grip, grip + QPointF(10, 20));
        EXPECT_EQ(c->rect(), wanted.frame) << int(wanted.handle);
        EXPECT_EQ(undo_all(), 1);

        core().SelectDialog(d, false);
        grip = handle_rect(resizable_frame(core()), wanted.handle).center();
        drag(grip, grip + QPointF(10, 20));
        // The same change of the whole dialog, caption included.
        const QRectF change = QRectF(wanted.frame.x() - 50, wanted.frame.y() - 50, wanted.frame.width() - 100,
                                     wanted.frame.height() - 60);
        EXPECT_EQ(d->outer_rect(),
                  QRectF(100 + change.x(), 100 + change.y(), 400 + change.width(), 324 + change.height()))
            << int(wanted.handle);
        EXPECT_EQ(undo_all(), 1);
    }
    core().SelectControl(c, false);
    const QPointF grip = handle_rect(resizable_frame(core()), Handle::Left).center();
    drag(grip, grip + QPointF(500, 0));
    EXPECT_EQ(c->rect(), QRectF(146, 50, 4, 60)) << "no side passes the one across";
}

TEST(Handles, are_hit_where_they_are_drawn)
{
    for (const QRectF& frame : {QRectF(100, 100, 200, 100), QRectF(-30.5, 7.25, 36, 36), QRectF(0, 0, 1000, 25)}) {
        for (int i = 0; i < handle_count; ++i) {
            const QRectF square = handle_rect(frame, Handle(i));
            EXPECT_EQ(handle_at(frame, square.center()), i);
            EXPECT_EQ(handle_at(frame, square.topLeft()), i);
        }
        EXPECT_EQ(handle_at(frame, frame.center()), -1);
        EXPECT_EQ(handle_at(frame, frame.topLeft() - QPointF(20, 20)), -1);
    }
    EXPECT_EQ(handle_at({50, 50, 10, 10}, {60, 60}), int(Handle::BottomRight)) << "corners win where there is no room";
    EXPECT_EQ(handle_at({}, {0, 0}), -1);
}

TEST_F(MouseToolsTest, selecting_tells_the_other_windows_and_shows_in_the_view)
{
    CDXUTDialog* d = home();
    std::vector<int> codes;
    m_world.on_broadcast = [&](int code) { codes.push_back(code); };
    const auto painted = [&] {
        QImage image(1280, 720, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        m_world.mouse_tool()->paint(painter);
        return image;
    };
    const QImage before = painted();
    click({200, 110});
    EXPECT_EQ(codes, std::vector<int>{ui_scene_changed});
    EXPECT_NE(painted(), before);
    EXPECT_EQ(core().selection().current_dialog, d);
    drag({200, 110}, {220, 130});
    EXPECT_EQ(codes.back(), ui_dialog_properties);
    click({900, 600});
    EXPECT_EQ(core().selection().current_dialog, nullptr);
    EXPECT_EQ(painted(), before);
}

TEST(Handles, of_what_is_small_stand_outside_and_leave_all_of_it_free)
{
    for (const double pixel : {1.0, 0.125, 4.0})
        for (const QSizeF size : {QSizeF(4, 4), QSizeF(20, 27), QSizeF(10, 200), QSizeF(200, 10)}) {
            const QRectF frame(QPointF(100, 50), size * pixel);
            EXPECT_EQ(handle_at(frame, frame.center(), pixel), -1);
            const bool all_free = size.width() < 28 && size.height() < 28;
            for (int i = 0; i < handle_count && all_free; ++i)
                EXPECT_FALSE(handle_rect(frame, Handle(i), pixel).intersects(frame));
            for (int i = 0; i < handle_count; ++i)
                EXPECT_EQ(handle_at(frame, handle_rect(frame, Handle(i), pixel).center(), pixel), i);
        }
}

TEST_F(MouseToolsTest, enter_makes_the_usual_size_in_the_current_dialog_beside_what_is_there)
{
    CDXUTDialog* d = home();
    core().SelectDialog(d, false);
    for (int i = 0; i < 2; ++i) {
        m_scene.SetMTFunction(2, DXUT_CONTROL_BUTTON);
        EXPECT_TRUE(m_scene.editor().create_armed());
    }
    EXPECT_FALSE(m_scene.editor().create_armed()) << "nothing is armed any more";
    ASSERT_EQ(d->GetControlNum(), 2);
    const QRectF first = d->controls()[0]->rect();
    EXPECT_EQ(first.size(), QSizeF(control_class(DXUT_CONTROL_BUTTON)->default_size));
    EXPECT_LE((first.center() - QRectF(QPointF(), d->client_size()).center()).manhattanLength(), 2);
    EXPECT_EQ(d->controls()[1]->rect(), first.translated(10, 10));
    EXPECT_EQ(core().selection().current_control, d->controls()[1]);
    EXPECT_EQ(undo_all(), 2);
}

TEST_F(MouseToolsTest, a_dropped_picture_goes_into_what_shows_pictures_or_makes_a_control)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"card.png"_s);
    ASSERT_TRUE(QImage(30, 20, QImage::Format_RGB32).save(path));
    CDXUTDialog* d = home();
    CDXUTControl* image_button = control(DXUT_CONTROL_BUTTONST, d, {10, 10, 60, 40});
    core().document().forget_history();
    const auto value = [](const CDXUTControl& c, const char* field) {
        return std::get<QString>(c.property(*c.fields().find(field)));
    };
    SceneEditor& editor = m_scene.editor();
    ASSERT_TRUE(editor.drop_picture(path, image_button->screen_bounds().center()));
    EXPECT_EQ(value(*image_button, "image_normal"), u"card.png"_s);
    EXPECT_EQ(d->GetControlNum(), 1);
    const QPointF place = d->client_rect().center();
    ASSERT_TRUE(editor.drop_picture(path, place));
    ASSERT_EQ(d->GetControlNum(), 2);
    const CDXUTControl* made = d->controls()[1];
    EXPECT_EQ(made->GetType(), DXUT_CONTROL_PICTURE);
    EXPECT_EQ(made->rect().size(), QSizeF(30, 20));
    EXPECT_TRUE(made->screen_bounds().contains(place));
    EXPECT_EQ(value(*made, "image"), u"card.png"_s);
    ASSERT_TRUE(editor.drop_picture(path, made->screen_bounds().center()));
    EXPECT_EQ(d->GetControlNum(), 2) << "the picture itself shows pictures";
    EXPECT_FALSE(editor.drop_picture(folder.path(), place));
    EXPECT_EQ(undo_all(), 2) << "the third changed nothing";
    EXPECT_EQ(d->GetControlNum(), 1);
    EXPECT_TRUE(core().document().files().isEmpty());
}
