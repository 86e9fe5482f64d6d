#include "gui_scene/scene_in_world.h"
#include "support/attributes.h"
#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "engine/view_projection.h"
#include "engine/world_edit.h"
#include "engine/world_models.h"
#include "gui_core/dxut_media.h"
#include "gui_core/gui_input.h"
#include "gui_scene/tex_file_man.h"
#include "tools/play_tool.h"
#include "world/world_scene.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>

using namespace tarn;
using namespace tarn::test;

namespace {

/// A panel two metres high that stands upright in the origin and shows a dialog.
class SceneInWorldTest : public SceneTest {
protected:
    SceneInWorldTest()
    {
        core().set_screen_size({800, 600});
        core().set_texture(u"board.png"_s, png(Qt::gray));
        m_panel = m_world.objects().create(WorldType::Panel, u"board"_s);
        m_panel->write<PanelState>([](PanelState& s) {
            s.width = s.height = 4;
            s.picture = u"board.png"_s;
        });
        m_dialog = dialog({600, 400, 150, 150}, u"menu"_s);
        m_button = control(DXUT_CONTROL_BUTTON, m_dialog, {25, 25, 100, 100}, u"go"_s);
        m_scene.create_texture_dialog_bind(m_dialog, u"board.png"_s);
    }
    bool has_opengl() const { return m_world.renderer().works(); }
    QPointF seen(const QVector3D& point)
    {
        return ViewProjection(m_world.camera(), core().screen_size()).place(point).value();
    }
    void mouse(MouseEvent::Kind kind, QPointF place)
    {
        m_world.mouse_tool()->mouse({kind, place, kind == MouseEvent::Kind::Move ? Qt::NoButton : Qt::LeftButton, {}});
    }
    QImage image(const CDXUTControl& control, QSize size) { return m_scene.in_world().view(control, size); }

    WorldObject* m_panel = nullptr;
    CDXUTDialog* m_dialog = nullptr;
    CDXUTControl* m_button = nullptr;
};

} // namespace

TEST_F(SceneInWorldTest, ADialogOnATextureTakesTheMouseThroughTheWorldWhileTheInterfaceRuns)
{
    if (!has_opengl())
        GTEST_SKIP() << "no OpenGL";
    SceneInWorld& in_world = m_scene.in_world();
    EXPECT_FALSE(core().is_in_world(*m_dialog)) << "an author goes on editing it on the screen";
    m_scene.play(true);
    EXPECT_TRUE(core().is_in_world(*m_dialog));
    EXPECT_EQ(GuiInput::dialog_at(core(), {675, 475}), nullptr) << "it is not on the screen any more";
    const auto spot = in_world.spot_at(seen({0, 0, 0}));
    ASSERT_TRUE(spot);
    EXPECT_EQ(spot->dialog, m_dialog);
    EXPECT_LT((spot->place - m_dialog->outer_rect().center()).manhattanLength(), 1);
    EXPECT_FALSE(in_world.spot_at(seen({0, 2.2f, 0})));

    mouse(MouseEvent::Kind::Move, seen({0, 0, 0}));
    EXPECT_EQ(core().live().hovered, m_button);
    const auto before = in_world.live_pictures().front().image.cacheKey();
    EXPECT_EQ(in_world.live_pictures().front().image.cacheKey(), before) << "drawn only when it changed";
    mouse(MouseEvent::Kind::Press, seen({0, 0, 0}));
    EXPECT_EQ(core().live().pressed, m_button);
    in_world.damaged(core().take_damage());
    EXPECT_NE(in_world.live_pictures().front().image.cacheKey(), before);
    mouse(MouseEvent::Kind::Move, {5, 5});
    EXPECT_EQ(core().live().hovered, nullptr) << "what was pressed has the mouse, which is beside it";
    mouse(MouseEvent::Kind::Release, {5, 5});
    mouse(MouseEvent::Kind::Move, {5, 5});
    EXPECT_EQ(core().live().in_world, nullptr);

    m_panel->write<PanelState>([](PanelState& s) { s.picture.clear(); });
    m_scene.document().changes().tell();
    EXPECT_FALSE(core().is_in_world(*m_dialog)) << "nothing shows it there, so that the screen does";
    m_scene.play(false);
}

TEST_F(SceneInWorldTest, ACharacterThatTheCameraLeadsWalksWithItWhileTheInterfaceRuns)
{
    WorldObject* figure = m_world.objects().create(WorldType::Skeleton, u"hero"_s);
    figure->set_place({1, 0.5f, 2});
    CTimebar* bar = m_scene.animation().create_bar(10);
    CTimerObject* timer = bar->create_object(TimerObjectType::Skeleton, {figure->id()});
    timer->set_led_by_camera(true);
    m_world.camera().look_at({5, 3, -4});
    m_scene.play(true);
    m_scene.advance(0.02);
    EXPECT_EQ(figure->place(), QVector3D(5, 0.5f, -4)) << "at its own height";
    const QVector3D ahead = QQuaternion::fromEulerAngles(figure->turn()).rotatedVector({0, 0, 1});
    QVector3D away = m_world.camera().target() - m_world.camera().eye();
    away.setY(0);
    EXPECT_LT((ahead - away.normalized()).length(), 0.001f);
    m_scene.play(false);
    EXPECT_EQ(figure->place(), QVector3D(1, 0.5f, 2));
}

TEST_F(SceneInWorldTest, AnEditBoxOnAPanelIsTypedInto)
{
    if (!has_opengl())
        GTEST_SKIP() << "no OpenGL";
    EXPECT_TRUE(set(*m_button, "visible", false));
    auto* edit = control(DXUT_CONTROL_EDITBOX, m_dialog, {25, 25, 100, 100}, u"name"_s);
    m_scene.play(true);
    mouse(MouseEvent::Kind::Press, seen({0, 0, 0}));
    mouse(MouseEvent::Kind::Release, seen({0, 0, 0}));
    EXPECT_EQ(core().live().focused, edit);
    EXPECT_TRUE(m_world.mouse_tool()->text(u"Ada"_s, {}));
    EXPECT_EQ(edit->property(*edit->fields().find("text")), Value(u"nameAda"_s));
    m_scene.play(false);
}

TEST_F(SceneInWorldTest, ADialogOnAModelsMaterialIsUsedThere)
{
    if (!has_opengl())
        GTEST_SKIP() << "no OpenGL";
    m_world.objects().remove({m_panel});
    const QString crate = QStringLiteral(TARN_MODELS "/crate.glb");
    const auto model = add_world_model(m_world, crate, {0, -0.5f, 0}, {});
    ASSERT_TRUE(model);
    wait_for_models(m_world);
    // The picture that the file keeps within itself, as its author would have it beside.
    QFile file(crate);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const qsizetype begin = bytes.indexOf("\x89PNG");
    const qsizetype end = bytes.indexOf("IEND", begin) + 8;
    ASSERT_GE(begin, 0);
    QFile picture(path(u"planks.png"_s));
    ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
    picture.write(bytes.mid(begin, end - begin));
    picture.close();
    EXPECT_TRUE(CTexFileMan(core(), m_world).find_tex_file_from_absolute_filename(path(u"other.png"_s)).isEmpty());
    const QString texture = CTexFileMan(core(), m_world).find_tex_file_from_absolute_filename(path(u"planks.png"_s));
    ASSERT_FALSE(texture.isEmpty());
    m_scene.create_texture_dialog_bind(m_dialog, texture);
    m_scene.play(true);
    EXPECT_TRUE(core().is_in_world(*m_dialog));
    const auto spot = m_scene.in_world().spot_at(seen({0, 0, 0}));
    ASSERT_TRUE(spot);
    EXPECT_EQ(spot->dialog, m_dialog);
    EXPECT_TRUE(m_dialog->outer_rect().contains(spot->place));
    m_scene.play(false);
}

TEST_F(SceneInWorldTest, APictureInPictureShowsWhatItsCameraSeesAndChangesWithTheWorld)
{
    WorldObject* camera = m_world.objects().create(WorldType::Camera, u"eye"_s);
    camera->set_place({0, 0, 6});
    CDXUTControl* small = control(DXUT_CONTROL_PIP, m_dialog, {0, 0, 40, 40}, u"small"_s);
    EXPECT_TRUE(image(*small, {64, 64}).isNull()) << "it has no camera";
    ASSERT_TRUE(set(*small, "camera", ObjectRef{camera->id()}));
    if (!has_opengl())
        GTEST_SKIP() << "no OpenGL";
    const QImage before = image(*small, {64, 64});
    ASSERT_EQ(before.size(), QSize(64, 64));
    camera->set_place({0, 0, 60});
    EXPECT_NE(image(*small, {64, 64}), before);
    EXPECT_TRUE(image(*small, {0, 5}).isNull());

    m_scene.document().changes().tell();
    m_scene.in_world().update();
    (void)core().take_damage();
    m_scene.in_world().update();
    EXPECT_TRUE(core().take_damage().isEmpty()) << "nothing changed";
    m_panel->set_place({1, 0, 0});
    m_scene.document().changes().tell();
    m_scene.in_world().update();
    EXPECT_FALSE(core().take_damage().isEmpty());
    ASSERT_TRUE(set(*small, "camera", ObjectRef{m_panel->id()}));
    EXPECT_TRUE(image(*small, {64, 64}).isNull()) << "a panel is no camera";
}

TEST_F(SceneInWorldTest, AMapShowsSpotsTellsOfThemAndMovesTheEaglesEye)
{
    auto* map = static_cast<CDXUTMap*>(control(DXUT_CONTROL_MAP, m_dialog, {0, 0, 100, 100}, u"map"_s));
    WorldObject* well = m_world.objects().create(WorldType::Path, u"well"_s);
    well->set_place({50, 0, -20});
    ASSERT_TRUE(set(*well, "hot_spot", true));
    ASSERT_TRUE(set(*map, "lock_center", false));
    EXPECT_EQ(map->on_map({50, 20}, {100, 100}), QPointF(75, 40));
    ASSERT_EQ(map->shown_spots().size(), 1u);

    QList<GuiEventType> heard;
    core().on_event = [&](const GuiEvent& event) { heard << event.type; };
    map->follow_spots();
    EXPECT_EQ(heard, QList{EVENT_MAP_HOT_SPOT_SHOWN});
    EXPECT_EQ(map->last_spot(), u"well"_s);
    map->mouse_pressed({76, 41});
    EXPECT_EQ(heard.back(), EVENT_MAP_HINT_CLICKED);
    ASSERT_TRUE(set(*map, "default_scale", 3.0));
    map->follow_spots();
    EXPECT_EQ(heard.back(), EVENT_MAP_HOT_SPOT_HIDDEN);
    map->follow_spots();
    EXPECT_EQ(heard.size(), 3);
    ASSERT_TRUE(set(*map, "default_scale", 1.0));

    const QVector3D target = m_world.camera().target();
    map->mouse_pressed({20, 80});
    EXPECT_EQ(m_world.camera().target(), target) << "it has no eagle's eye";
    ASSERT_TRUE(set(*map, "eagle_eye", true));
    map->mouse_pressed({20, 80});
    EXPECT_EQ(m_world.camera().target(), QVector3D(-60, 0, 60));
    ASSERT_TRUE(set(*map, "lock_center", true));
    core().on_event = nullptr;
    EXPECT_EQ(map->on_map({-60, -60}, {100, 100}), QPointF(50, 50)) << "what one looks at is in the middle";
}
