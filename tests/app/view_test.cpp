#include "app/view/overlay_buffer.h"
#include "app/view/tool_layer.h"
#include "app/view/view3d.h"
#include "core/painted_rect.h"
#include "engine/base_world.h"
#include "screen_size_menu.h"

#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

using tarn::MouseEvent;
using tarn::OverlayBuffer;

namespace {

constexpr QColor card_color(250, 20, 20);
constexpr QColor tool_color(20, 250, 20);

/// A card that can be moved, over an edge that is smoothed wherever the clip cuts it.
struct Card : tarn::Overlay {
    QSize screen;
    QRectF card{10, 10, 40, 30};
    QRectF damage;

    void set_screen_size(QSize size) override { screen = size; }
    void paint(QPainter& painter, const QRectF&, double) override
    {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QColor(255, 255, 255, 90));
        painter.drawEllipse(QRectF(3.3, 4.7, 111.1, 70.9));
        painter.fillRect(card, card_color);
    }
    QRectF take_damage() override { return std::exchange(damage, QRectF()); }
    void move(QPointF to)
    {
        damage |= card;
        card.moveTo(to);
        damage |= card;
    }
};

struct Pen : tarn::MouseTool {
    std::vector<MouseEvent> heard;
    QRectF spot{100, 60, 8, 8};

    bool mouse(const MouseEvent& event) override
    {
        heard.push_back(event);
        return true;
    }
    bool key(int key, Qt::KeyboardModifiers) override { return key == Qt::Key_Delete; }
    void paint(QPainter& painter) override { painter.fillRect(spot, tool_color); }
    void cancel() override {}
    Qt::CursorShape cursor() const override { return Qt::CrossCursor; }
    bool takes_all_keys() const override { return all_keys; }
    bool covers(QPointF place) const override { return cover.contains(place); }

    bool all_keys = false;
    QRectF cover;
};

struct ViewTest : testing::Test {
    Card card;
    Pen pen;
    CBaseWorld world;

    ViewTest()
    {
        world.set_overlay(&card);
        world.set_default_mouse_tool(&pen);
    }
};

/// Whether the view's picture is, but for rounding, the one that is made without a window.
bool shows_the_world(CView3D& view, CBaseWorld& world)
{
    const QImage shown = view.grab_view();
    const QImage wanted = CView3D::render(world, view.surface_size(), view.devicePixelRatioF());
    return shown.size() == wanted.size()
        && std::equal(shown.constBits(), shown.constBits() + shown.sizeInBytes(), wanted.constBits(),
                      [](int a, int b) { return std::abs(a - b) <= 2; });
}

} // namespace

TEST_F(ViewTest, repaints_only_the_damage_and_gets_what_a_full_repaint_gets)
{
    for (const double dpr : {1.0, 1.25, 2.0}) {
        OverlayBuffer buffer;
        const QSize pixels = tarn::device_size({120, 80}, dpr);
        EXPECT_EQ(buffer.update(&card, {120, 80}, dpr), QRect(QPoint(), pixels));
        EXPECT_TRUE(buffer.update(&card, {120, 80}, dpr).isEmpty());
        const QRectF before = card.card;
        card.move(before.topLeft() + QPointF(7.4, 3.3));
        EXPECT_TRUE(buffer.has_damage(&card)); // asking does not lose it
        const QRectF damage = before | card.card;
        EXPECT_EQ(buffer.update(&card, {120, 80}, dpr),
                  QRectF(damage.topLeft() * dpr, damage.size() * dpr).toAlignedRect());
        OverlayBuffer whole;
        whole.paint_all(&card, {120, 80}, dpr);
        EXPECT_EQ(buffer.image(), whole.image()) << dpr;
    }
}

TEST_F(ViewTest, damage_beyond_the_screen_is_cut_and_a_removed_overlay_leaves_nothing)
{
    OverlayBuffer buffer;
    buffer.update(&card, {120, 80}, 1);
    card.damage = QRectF(100, 50, 1e12, 1e12);
    EXPECT_EQ(buffer.update(&card, {120, 80}, 1), QRect(100, 50, 20, 30));
    EXPECT_EQ(buffer.update(nullptr, {120, 80}, 1), QRect(0, 0, 120, 80));
    EXPECT_TRUE(tarn::painted_rect(buffer.image()).isEmpty());
    EXPECT_TRUE(buffer.update(&card, {}, 1).isEmpty());
}

TEST_F(ViewTest, a_tool_that_moves_leaves_no_trace)
{
    tarn::ToolLayer layer;
    layer.update(&pen, {120, 80}, 2);
    pen.spot.moveTo(0, 79); // cut by the edge of the view
    EXPECT_EQ(layer.update(&pen, {120, 80}, 2), QRect(0, 120, 216, 40));
    EXPECT_EQ(tarn::painted_rect(layer.image()), QRect(0, 158, 16, 2));
    EXPECT_EQ(layer.update(nullptr, {120, 80}, 2), QRect(0, 158, 16, 2));
}

TEST_F(ViewTest, renders_a_picture_without_a_window_and_leaves_the_damage_to_the_views)
{
    card.damage = {1, 2, 3, 4};
    const QImage picture = CView3D::render(world, {300, 200}, 2);
    EXPECT_EQ(picture.size(), QSize(600, 400));
    EXPECT_EQ(card.screen, QSize(300, 200));
    EXPECT_EQ(card.damage, QRectF(1, 2, 3, 4));
    EXPECT_EQ(picture.pixelColor(20, 20), card_color);
    EXPECT_NE(picture.pixelColor(19, 20), card_color);
    EXPECT_EQ(picture.pixelColor(215, 135), tool_color);
    EXPECT_TRUE(CView3D::render(world, {}, 2).isNull());
}

TEST_F(ViewTest, a_surface_of_fixed_size_is_centred_and_starts_at_the_corner_when_it_has_no_room)
{
    CView3D view(world);
    view.resize(500, 300);
    view.set_fixed_view_size({300, 200});
    view.show();
    EXPECT_EQ(view.surface_rect(), QRect(100, 50, 300, 200));
    const QImage window = view.grab().toImage();
    const auto at = [&](double x, double y) {
        return window.pixelColor((QPointF(x, y) * view.devicePixelRatioF()).toPoint());
    };
    EXPECT_EQ(at(110, 60), card_color);
    EXPECT_EQ(at(205, 115), tool_color);
    EXPECT_EQ(at(99, 60), at(450, 290)); // plain
    EXPECT_TRUE(shows_the_world(view, world));
    view.set_fixed_view_size({800, 200});
    EXPECT_EQ(view.surface_rect(), QRect(0, 50, 800, 200));
    EXPECT_EQ(view.grab_view().width(), 800 * view.devicePixelRatioF());
    view.set_fixed_view_size({});
    EXPECT_EQ(view.surface_size(), view.size());
    EXPECT_EQ(card.screen, view.size());
}

TEST_F(ViewTest, the_tool_hears_the_left_button_in_pixels_of_the_surface)
{
    CView3D view(world);
    view.resize(500, 300);
    view.set_fixed_view_size({300, 200});
    view.show();
    QTest::mousePress(&view, Qt::LeftButton, {}, {20, 20}); // beside the surface
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {20, 20});
    QTest::mousePress(&view, Qt::RightButton, {}, {150, 90});
    QTest::mouseDClick(&view, Qt::MiddleButton, {}, {150, 90}); // while another button is held
    EXPECT_TRUE(pen.heard.empty());
    QTest::mouseRelease(&view, Qt::RightButton, {}, {150, 90});
    pen.heard.clear();

    QTest::mousePress(&view, Qt::LeftButton, Qt::ShiftModifier, {150, 90});
    EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {10, 10}); // a drag may end outside
    ASSERT_EQ(pen.heard.size(), 2u);
    EXPECT_EQ(pen.heard[0].kind, MouseEvent::Kind::Press);
    EXPECT_EQ(pen.heard[0].place, QPointF(50, 40));
    EXPECT_EQ(pen.heard[0].modifiers, Qt::ShiftModifier);
    EXPECT_EQ(pen.heard[1].kind, MouseEvent::Kind::Release);
    EXPECT_EQ(pen.heard[1].place, QPointF(-90, -40));
    EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ViewTest, a_larger_screen_is_shown_reduced_and_places_are_mapped_back)
{
    CView3D view(world);
    view.resize(500, 300);
    view.show();
    view.set_screen_size({1000, 500});
    EXPECT_EQ(card.screen, QSize(1000, 500));
    EXPECT_EQ(view.surface_rect(), QRect(0, 25, 500, 250));
    const QImage window = view.grab().toImage();
    const auto at = [&](double x, double y) {
        return window.pixelColor((QPointF(x, y) * view.devicePixelRatioF()).toPoint());
    };
    EXPECT_EQ(at(20, 25 + 15), card_color);
    EXPECT_NE(at(40, 25 + 15), card_color);
    EXPECT_EQ(at(52, 25 + 32), tool_color);
    QTest::mousePress(&view, Qt::LeftButton, {}, {5, 10}); // above the surface
    EXPECT_TRUE(pen.heard.empty());
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {5, 10});
    QTest::mousePress(&view, Qt::LeftButton, {}, {250, 150});
    EXPECT_EQ(pen.heard.back().place, QPointF(500, 250));
    EXPECT_EQ(pen.heard.back().scale, 0.5);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {250, 150});

    card.move({900, 400}); // only what changed is painted, in the reduced picture too
    EXPECT_EQ(view.grab_view().pixelColor(QPoint(455, 205) * view.devicePixelRatioF()), card_color);
    view.resize(700, 300);
    EXPECT_EQ(view.surface_rect(), QRect(50, 0, 600, 300));
    view.set_fixed_view_size({200, 200});
    EXPECT_EQ(view.surface_rect(), QRect(250, 100, 200, 100)) << "within the room that is fixed";
    view.set_fixed_view_size({});
    view.set_screen_size({100, 80});
    EXPECT_EQ(view.surface_rect(), QRect(300, 110, 100, 80)) << "a small screen is not blown up";
    view.set_screen_size({});
    EXPECT_EQ(card.screen, view.size());
}

TEST(ScreenSizes, are_read_as_people_write_them)
{
    const QString good = QStringLiteral("800x600| 800 X 600 |800×600|800*600|800 600|800，600");
    for (const QString& text : good.split(QLatin1Char('|')))
        EXPECT_EQ(ScreenSizeMenu::parsed(text), QSize(800, 600)) << text.toStdString();
    const QString bad = QStringLiteral("|800|800x|0x600|-800x600|800x16385|8.5x6|800x600x3");
    for (const QString& text : bad.split(QLatin1Char('|')))
        EXPECT_FALSE(ScreenSizeMenu::parsed(text)) << text.toStdString();
}

TEST_F(ViewTest, a_release_that_another_window_kept_is_made_up_for)
{
    CView3D view(world);
    view.resize(300, 200);
    const auto event = [&](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent mouse(type, QPointF(30, 40), QPointF(30, 40), button, held, Qt::NoModifier);
        QApplication::sendEvent(&view, &mouse);
    };
    event(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
    event(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    ASSERT_EQ(pen.heard.size(), 3u);
    EXPECT_EQ(pen.heard[0].kind, MouseEvent::Kind::DoubleClick);
    EXPECT_EQ(pen.heard[1].kind, MouseEvent::Kind::Release);
    EXPECT_EQ(pen.heard[2].kind, MouseEvent::Kind::Move);
}

TEST_F(ViewTest, the_camera_follows_its_buttons_and_the_wheel_and_the_picture_follows_the_camera)
{
    CView3D view(world);
    view.resize(300, 200);
    view.show();
    QImage before = view.grab_view();
    const auto changed = [&] { return std::exchange(before, view.grab_view()) != before; };
    EXPECT_FALSE(changed());
    view.camera_drag(Qt::RightButton, {0, 0}, {30, 10});
    EXPECT_TRUE(changed());
    view.camera_drag(Qt::MiddleButton, {0, 0}, {30, 10});
    EXPECT_TRUE(changed());
    view.camera_drag(Qt::LeftButton, {0, 0}, {30, 10});
    EXPECT_FALSE(changed());
    view.send_wheel({10, 10}, -2);
    EXPECT_TRUE(changed());
}

TEST_F(ViewTest, what_covers_the_world_keeps_the_camera_from_following_the_mouse)
{
    CView3D view(world);
    view.resize(300, 200);
    view.show();
    pen.cover = {0, 0, 150, 200};
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        for (const auto& [from, moves] : {std::pair(QPoint(100, 100), false), std::pair(QPoint(200, 100), true)}) {
            const QImage before = view.grab_view();
            QTest::mousePress(&view, button, {}, from);
            QMouseEvent move(QEvent::MouseMove, from + QPointF(30, 10), view.mapToGlobal(from + QPointF(30, 10)),
                             Qt::NoButton, button, {});
            QApplication::sendEvent(&view, &move);
            QTest::mouseRelease(&view, button, {}, from + QPoint(30, 10));
            EXPECT_EQ(view.grab_view() != before, moves) << button << " from " << from.x();
        }
    }
}

TEST_F(ViewTest, a_key_that_the_tool_does_not_take_goes_on_to_the_parent)
{
    struct Parent : QWidget {
        int keys = 0;
        void keyPressEvent(QKeyEvent*) override { ++keys; }
    } parent;
    auto* view = new CView3D(world, &parent);
    QTest::keyClick(view, Qt::Key_Delete);
    EXPECT_EQ(parent.keys, 0);
    QTest::keyClick(view, Qt::Key_A);
    EXPECT_EQ(parent.keys, 1);
}

TEST_F(ViewTest, a_running_interface_keeps_the_programs_shortcuts_for_itself_but_the_one_that_ends_it)
{
    CView3D view(world);
    const auto keeps = [&](int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
        event.ignore();
        QApplication::sendEvent(&view, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(keeps(Qt::Key_Z, Qt::ControlModifier));
    pen.all_keys = true;
    EXPECT_TRUE(keeps(Qt::Key_Z, Qt::ControlModifier));
    EXPECT_TRUE(keeps(Qt::Key_Delete, {}));
    QAction ends;
    ends.setShortcut(Qt::Key_F4); // The author gave it another key.
    view.set_program_actions({&ends});
    EXPECT_FALSE(keeps(Qt::Key_F4, {}));
    EXPECT_TRUE(keeps(Qt::Key_F5, {}));
}

TEST_F(ViewTest, says_once_that_there_is_no_opengl)
{
    CView3D view(world);
    if (view.uses_gl())
        GTEST_SKIP() << "there is";
    QSignalSpy spy(&view, &CView3D::gl_unavailable);
    for (int i = 0; i < 2; ++i) {
        view.show();
        QCoreApplication::processEvents();
        view.hide();
    }
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(ViewTest, opengl_shows_what_is_shown_without_it)
{
    CView3D view(world);
    if (!view.uses_gl())
        GTEST_SKIP() << "needs a display with OpenGL";
    const auto compare = [&](const char* after) {
        EXPECT_TRUE(QTest::qWaitForWindowExposed(view.window()));
        EXPECT_TRUE(shows_the_world(view, world)) << after;
    };
    view.resize(400, 300);
    view.show();
    compare("being shown");
    card.move({90, 50});
    pen.spot.moveTo(30, 200);
    compare("a change of the interface and the tool");
    view.camera_drag(Qt::RightButton, {0, 0}, {50, -60});
    compare("a turn of the camera");
    view.set_fixed_view_size({333, 222});
    compare("another size");
    QWidget other;
    view.setParent(&other);
    other.show();
    view.show();
    card.move({9, 5});
    compare("a move into another window");
    view.setParent(nullptr);
}

TEST_F(ViewTest, zooms_about_a_place_within_its_limits_and_goes_back_to_all_of_it)
{
    CView3D view(world);
    view.resize(400, 300);
    view.show();
    const QPointF place(100, 75);
    view.zoom_to(2, place);
    EXPECT_EQ(view.zoom(), 2);
    EXPECT_EQ(view.to_screen(place), place) << "what was under the mouse stays there";
    EXPECT_EQ(view.surface_size(), QSize(400, 300));
    view.zoom_to(100, place);
    EXPECT_EQ(view.zoom(), 8);
    EXPECT_EQ(view.screen_size(), QSize(400, 300));
    view.camera_drag(Qt::MiddleButton, {0, 0}, {1e5, 1e5});
    EXPECT_EQ(view.to_screen({0, 0}), QPointF(0, 0)) << "no empty edges";
    view.camera_drag(Qt::MiddleButton, {0, 0}, {-80, -40});
    EXPECT_EQ(view.to_screen({0, 0}), QPointF(10, 5));
    view.zoom_to(0.01, place);
    EXPECT_EQ(view.surface_size(), QSize(100, 75));
    EXPECT_LE((view.surface_rect().center() - QPoint(200, 150)).manhattanLength(), 2) << "in the middle";
    view.zoom_to(1.01, place);
    EXPECT_FALSE(view.is_zoomed()) << "nearly whole is whole";
    view.zoom_to_area({200, 100, 40, 30});
    EXPECT_LE((view.to_screen({200, 150}) - QPointF(220, 115)).manhattanLength(), 1);
    EXPECT_EQ(view.zoom(), 8);
    view.set_preview(true);
    EXPECT_EQ(view.zoom(), 1);
    view.zoom_to(2, place);
    EXPECT_FALSE(view.is_zoomed()) << "a preview shows all of it";
    view.set_preview(false);
    EXPECT_EQ(view.zoom(), 8);
    view.zoom_to_fit();
    EXPECT_EQ(view.zoom(), 1);
}

TEST_F(ViewTest, what_is_drawn_and_what_the_mouse_reaches_agree_in_every_zoom)
{
    CView3D view(world);
    view.resize(400, 300);
    view.show();
    card.card = {100, 80, 12, 16};
    pen.spot = {116, 80, 8, 8};
    for (const double zoom : {0.25, 1.0, 3.0, 8.0}) {
        view.zoom_to(zoom, {100, 80});
        const QImage shown = view.grab_view();
        const auto at = [&](QPointF on_screen) {
            const QPointF in_view = (on_screen - view.to_screen(view.surface_rect().topLeft())) * view.zoom();
            return shown.pixelColor(in_view.toPoint());
        };
        EXPECT_EQ(at({106, 88}), card_color) << zoom;
        EXPECT_EQ(at({120, 84}), tool_color) << zoom;
        EXPECT_NE(at({114, 92}), card_color) << zoom;
        const QPointF place = view.surface_rect().topLeft() + QPointF(7, 9);
        QTest::mouseMove(&view, place.toPoint());
        view.send_mouse({MouseEvent::Kind::Move, view.to_screen(place), Qt::NoButton, {}});
        EXPECT_EQ(pen.heard.back().scale, view.zoom());
        EXPECT_EQ(pen.heard.back().corner, view.to_screen(view.surface_rect().topLeft()));
        card.move({100, 80});
        EXPECT_EQ(view.grab_view(), shown) << "damage is drawn where it stands";
    }
    view.zoom_to_fit();
    EXPECT_TRUE(shows_the_world(view, world));
}

TEST_F(ViewTest, ctrl_and_the_wheel_zoom_about_the_mouse_and_the_wheel_alone_moves_the_camera)
{
    CView3D view(world);
    view.resize(400, 300);
    view.show();
    const QVector3D eye = world.camera().eye();
    const auto turn = [&](Qt::KeyboardModifiers modifiers) {
        QWheelEvent event({50, 60}, view.mapToGlobal(QPointF(50, 60)), {}, {0, 4 * 120}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view, &event);
    };
    turn(Qt::ControlModifier);
    EXPECT_EQ(view.zoom(), 2);
    EXPECT_EQ(view.to_screen({50, 60}), QPointF(50, 60));
    EXPECT_EQ(world.camera().eye(), eye);
    turn({});
    EXPECT_EQ(view.zoom(), 2);
    EXPECT_NE(world.camera().eye(), eye);
}
