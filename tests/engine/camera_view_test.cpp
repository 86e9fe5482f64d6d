#include "engine/base_world.h"
#include "engine/camera_view.h"
#include "engine/view_projection.h"
#include "world/world_scene.h"

#include <gtest/gtest.h>

namespace tarn::test {

namespace {

class CameraViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_camera = m_world.objects().create(WorldType::Camera);
        m_camera->set_place({0, 2, 10});
        m_world.document().forget_history();
        m_world.camera_view().look_through(m_camera);
    }
    QPointF at(const QVector3D& point)
    {
        return ViewProjection(m_world.camera(), {800, 600}).place(point).value_or(QPointF(-1, -1));
    }
    void tell() { m_world.document().changes().tell(); }
    CBaseWorld m_world;
    WorldObject* m_camera = nullptr;
};

} // namespace

TEST_F(CameraViewTest, the_view_follows_the_camera_its_field_of_view_and_its_removal)
{
    EXPECT_LT((at({0, 2, 0}) - QPointF(400, 300)).manhattanLength(), 0.1);
    EXPECT_LT(at({0, 3, 0}).y(), 300);
    m_camera->set_turn({0, 180, 0});
    m_camera->set_size({3, 0.1f, 1});
    tell();
    EXPECT_LT((at({0, 2, 20}) - QPointF(400, 300)).manhattanLength(), 0.1);
    const double before = at({1, 2, 20}).x();
    ASSERT_TRUE(m_camera->set_property(*m_camera->fields().find("field_of_view"), 90.0));
    tell();
    EXPECT_GT(at({1, 2, 20}).x(), before) << "nearer to the middle, which is at the right of it";
    m_world.objects().remove({m_camera});
    tell();
    EXPECT_EQ(m_world.camera_view().camera(), nullptr);
    EXPECT_EQ(m_world.camera().looks_through(), 0u);
    EXPECT_GT(m_world.camera().eye().length(), 10);
}

TEST_F(CameraViewTest, who_turns_the_view_goes_on_from_where_the_camera_stands)
{
    const QVector3D eye = m_world.camera().eye();
    m_world.camera().orbit({});
    EXPECT_EQ(m_world.camera().looks_through(), 0u);
    EXPECT_LT((m_world.camera().eye() - eye).length(), 1e-3f);
    EXPECT_LT((at({0, 2, 0}) - QPointF(400, 300)).manhattanLength(), 0.1);
}

TEST_F(CameraViewTest, only_cameras_are_looked_through)
{
    m_world.camera_view().look_through(m_world.objects().create(WorldType::Panel));
    EXPECT_EQ(m_world.camera().looks_through(), 0u);
}

} // namespace tarn::test
