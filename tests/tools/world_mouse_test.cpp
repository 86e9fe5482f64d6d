#include "mouse_fixture.h"

#include "engine/scene_selection.h"
#include "engine/view_projection.h"
#include "engine/world_edit.h"
#include "tools/world_gestures.h"
#include "world/world_scene.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace tarn::test {
namespace {

class WorldMouseTest : public MouseToolsTest {
protected:
    WorldMouseTest()
    {
        core().set_screen_size({1000, 700});
        m_world.objects_layer()->set_screen_size({1000, 700});
        (void)m_world.objects_layer()->take_damage();
    }
    WorldObject* make(WorldType type, const QVector3D& place)
    {
        WorldObject* object = m_world.objects().create(type);
        object->set_place(place);
        if (type == WorldType::Path)
            object->set_points({{-2, 0, 0}, {0, 0, 0}, {2, 0, 0}});
        core().document().forget_history();
        return object;
    }
    ViewProjection view() const
    {
        return {const_cast<CBaseWorld&>(m_world).camera(), const_cast<WorldMouseTest*>(this)->core().screen_size()};
    }
    QPointF at(const QVector3D& point) const { return view().place(point).value(); }
    /// Where a handle of the gizmo is seen, as many pixels of the view from the pivot.
    QPointF handle(const QVector3D& pivot, const QVector3D& pixels) const
    {
        return at(pivot + pixels * float(view().metres_per_pixel(pivot)));
    }
    std::vector<WorldObject*> chosen() { return m_world.selection().objects(); }
    QImage picture()
    {
        QImage image(1000, 700, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        m_world.objects_layer()->paint(painter, QRectF(0, 0, 1000, 700), 1);
        return image;
    }
};

void expect_near(const QVector3D& a, const QVector3D& b, float reach = 0.02f)
{
    EXPECT_LT((a - b).length(), reach) << a.x() << " " << a.y() << " " << a.z();
}

TEST_F(WorldMouseTest, AClickSelectsCtrlAddsAndTakesAwayAndAnEmptyOneClears)
{
    WorldObject* left = make(WorldType::Panel, {-3, 1, 0});
    WorldObject* right = make(WorldType::Panel, {3, 1, 0});
    click(at({-3, 1, 0}));
    EXPECT_EQ(chosen(), std::vector{left});
    click(at({3, 1, 0}), Qt::ControlModifier);
    EXPECT_EQ(chosen(), (std::vector{left, right}));
    click(at({-3.3f, 1.3f, 0}), Qt::ControlModifier);
    EXPECT_EQ(chosen(), std::vector{right});
    click({5, 5});
    EXPECT_TRUE(chosen().empty());
    EXPECT_EQ(undo_all(), 0);
}

TEST_F(WorldMouseTest, OfTwoInOnePlaceTheNearerOneIsHitAndNoneThatIsHiddenOrLocked)
{
    const QVector3D eye = m_world.camera().eye();
    const QVector3D middle = m_world.camera().target();
    WorldObject* far_one = make(WorldType::Panel, middle);
    WorldObject* near_one = make(WorldType::Panel, middle + (eye - middle) * 0.3f);
    const auto hit = [&]() -> WorldObject* {
        click({5, 5});
        click(at(middle));
        return chosen().empty() ? nullptr : chosen().front();
    };
    EXPECT_EQ(hit(), near_one);
    ASSERT_TRUE(near_one->set_property(*near_one->fields().find("visible"), false));
    EXPECT_EQ(hit(), far_one);
    ASSERT_TRUE(far_one->set_property(*far_one->fields().find("locked"), true));
    EXPECT_EQ(hit(), nullptr);
}

TEST_F(WorldMouseTest, AnInterfaceInFrontIsHitFirstAndTheTwoAreNeverSelectedAtOnce)
{
    WorldObject* panel = make(WorldType::Panel, {-3, 1, 0});
    const QPointF seen = at({-3, 1, 0});
    CDXUTDialog* front = dialog(QRect(seen.toPoint() - QPoint(60, 60), QSize(120, 120)));
    click(seen);
    EXPECT_TRUE(chosen().empty());
    EXPECT_EQ(core().selection().dialogs, std::vector{front});
    select_world_objects(m_world, {panel});
    EXPECT_TRUE(core().selection().dialogs.empty());
    // The gizmo lies above all, as it is seen; beside it the dialog is hit.
    click(seen + QPointF(-50, 50));
    EXPECT_EQ(core().selection().dialogs, std::vector{front});
    EXPECT_TRUE(chosen().empty());
}

TEST_F(WorldMouseTest, AnArrowMovesAlongItsAxisInOneStepAndEscapeDropsADrag)
{
    WorldObject* panel = make(WorldType::Panel, {0, 1, 0});
    WorldObject* other = make(WorldType::Camera, {4, 2, 1});
    select_world_objects(m_world, {other, panel});
    const QPointF grip = handle({0, 1, 0}, {50, 0, 0});
    const float unit = float(view().metres_per_pixel({0, 1, 0}));
    drag(grip, at({0.777f + 50 * unit, 1, 0}));
    expect_near(panel->place(), {0.777f, 1, 0});
    expect_near(other->place(), {4.777f, 2, 1});
    EXPECT_EQ(undo_all(), 1);
    expect_near(panel->place(), {0, 1, 0});
    drag(grip, at({1 + 50 * unit, 1, 0}), false);
    EXPECT_NE(panel->place(), QVector3D(0, 1, 0));
    EXPECT_TRUE(escape());
    expect_near(panel->place(), {0, 1, 0}, 1e-6f);
    EXPECT_FALSE(m_scene.journal().can_undo());
}

TEST_F(WorldMouseTest, CtrlMovesInTenthsOfAMetreAndTurnsInFifteenDegrees)
{
    WorldObject* panel = make(WorldType::Panel, {0.033f, 1, 0});
    select_world_objects(m_world, {panel});
    drag(handle(panel->place(), {28, 0, 28}), handle(panel->place(), {128, 0, 58}), true, Qt::ControlModifier);
    for (const float part : {panel->place().x(), panel->place().z()}) {
        EXPECT_NEAR(part * 10, std::round(part * 10), 1e-3);
        EXPECT_GT(std::abs(part), 0.2f);
    }
    EXPECT_FLOAT_EQ(panel->place().y(), 1);
    const float arc = 62 * float(M_SQRT1_2);
    const QVector3D place = panel->place();
    drag(handle(place, {arc, 0, arc}), handle(place, {arc, 0, -arc}), true, Qt::ControlModifier);
    EXPECT_NEAR(std::abs(panel->turn().y()), 90, 31);
    EXPECT_NEAR(std::remainder(panel->turn().y(), 15.f), 0, 1e-2);
    expect_near(panel->place(), place, 1e-4f);
}

TEST_F(WorldMouseTest, ACubeScalesAlongTheObjectsOwnAxisAndTheMiddleOneAllThree)
{
    WorldObject* panel = make(WorldType::Panel, {0, 1, 0});
    panel->set_turn({0, 90, 0});
    select_world_objects(m_world, {panel});
    core().document().forget_history();
    // Its own x axis points along -z.
    drag(handle({0, 1, 0}, {0, 0, -104}), handle({0, 1, 0}, {0, 0, -208}));
    EXPECT_NEAR(panel->size().x(), 2, 0.02);
    EXPECT_FLOAT_EQ(panel->size().y(), 1);
    EXPECT_EQ(undo_all(), 1);
    drag(at({0, 1, 0}), at({0, 1, 0}) + QPointF(50, 0));
    expect_near(panel->size(), {1.5f, 1.5f, 1.5f});
    drag(at({0, 1, 0}), at({0, 1, 0}) + QPointF(-900, 0));
    EXPECT_GT(panel->size().x(), 0);
}

TEST_F(WorldMouseTest, PointsOfAPathAreDraggedAddedAndRemoved)
{
    WorldObject* path = make(WorldType::Path, {0, 0.5f, 1});
    path->set_turn({0, 90, 0});
    select_world_objects(m_world, {path});
    core().document().forget_history();
    const auto point = [&](int index) { return path->transform().map(points_of(*path)[index]); };
    const QVector3D to = point(2) + QVector3D(1, 0, 0.5f);
    drag(at(point(2)), at(to));
    expect_near(point(2), to);
    const QVector3D up = to + QVector3D(0, 1, 0);
    drag(at(to), at(up), true, Qt::ShiftModifier);
    expect_near(point(2), up);
    EXPECT_EQ(undo_all(), 2);
    const QVector3D between = path->transform().map(path->shape().place(0.25f));
    mouse(Kind::DoubleClick, at(between));
    ASSERT_EQ(points_of(*path).size(), 4);
    expect_near(point(1), between, 0.2f);
    mouse(Kind::DoubleClick, at(point(1)));
    mouse(Kind::DoubleClick, at(point(2)));
    EXPECT_EQ(points_of(*path).size(), 2);
    mouse(Kind::DoubleClick, at(point(0)));
    EXPECT_EQ(points_of(*path).size(), 2); // A way needs two.
}

TEST_F(WorldMouseTest, CommandsWorkOnTheWorldWhileSomethingOfItIsSelected)
{
    m_scene.editor().context_commands({500, 600});
    ASSERT_TRUE(run(GuiSceneEditor::add_panel));
    ASSERT_EQ(chosen().size(), 1u);
    EXPECT_LT(
        (at({chosen().front()->place().x(), 0, chosen().front()->place().z()}) - QPointF(500, 600)).manhattanLength(),
        1);
    ASSERT_TRUE(run(GuiSceneEditor::duplicate));
    EXPECT_EQ(m_world.objects().objects().size(), 2u);
    EXPECT_EQ(chosen(), std::vector{m_world.objects().objects().back()});
    ASSERT_TRUE(run(GuiSceneEditor::remove));
    EXPECT_EQ(m_world.objects().objects().size(), 1u);
    EXPECT_TRUE(chosen().empty());
    EXPECT_EQ(undo_all(), 3);
    EXPECT_TRUE(m_world.objects().objects().empty());
    // Towards the sky there is no ground.
    m_scene.editor().context_commands({500, 1});
    ASSERT_TRUE(run(GuiSceneEditor::add_camera));
    EXPECT_LT(chosen().front()->place().length(), 20);
}

TEST_F(WorldMouseTest, FLooksAtWhatIsSelectedFromTheSameSide)
{
    EXPECT_FALSE(key(Qt::Key_F));
    WorldObject* panel = make(WorldType::Panel, {30, 5, -40});
    select_world_objects(m_world, {panel});
    const QVector3D before = (m_world.camera().eye() - m_world.camera().target()).normalized();
    EXPECT_TRUE(key(Qt::Key_F));
    expect_near(m_world.camera().target(), panel->place());
    expect_near((m_world.camera().eye() - m_world.camera().target()).normalized(), before);
    for (const float side : {-0.5f, 0.5f})
        EXPECT_TRUE(QRectF(0, 0, 1000, 700).contains(at(panel->place() + QVector3D(side, side, 0))));
}

TEST_F(WorldMouseTest, WhatIsHiddenIsNotDrawnAndAnEmptyWorldIsNotDrawnAnew)
{
    Overlay& layer = *m_world.objects_layer();
    const QImage empty = picture();
    m_world.camera().orbit({30, 10});
    EXPECT_TRUE(layer.take_damage().isEmpty());
    WorldObject* camera = make(WorldType::Camera, {0, 1, 0});
    core().document().changes().tell();
    EXPECT_FALSE(layer.take_damage().isEmpty());
    const QImage plain = picture();
    EXPECT_NE(plain, empty);
    EXPECT_TRUE(layer.take_damage().isEmpty());
    m_world.camera().orbit({30, 10});
    EXPECT_FALSE(layer.take_damage().isEmpty());
    select_world_objects(m_world, {camera});
    EXPECT_FALSE(layer.take_damage().isEmpty());
    ASSERT_TRUE(camera->set_property(*camera->fields().find("visible"), false));
    core().document().changes().tell();
    EXPECT_FALSE(layer.take_damage().isEmpty());
    EXPECT_EQ(picture(), empty);
}

TEST_F(WorldMouseTest, WhatLiesAcrossOrBehindTheEyeIsDrawnWithoutHarm)
{
    const QVector3D eye = m_world.camera().eye();
    for (const float scale : {1.f, 1000.f, 0.f, -3.f})
        for (const WorldType type : {WorldType::Camera, WorldType::Path, WorldType::Panel, WorldType::Model}) {
            WorldObject* object = make(type, eye + QVector3D(0.05f, 0, 0));
            object->set_size({scale, scale, scale});
            select_world_objects(m_world, {object});
            (void)picture();
            for (const QPointF place : {QPointF(0, 0), QPointF(500, 350), QPointF(999, 699)})
                drag(place, place + QPointF(20, 30));
        }
}

} // namespace
} // namespace tarn::test
