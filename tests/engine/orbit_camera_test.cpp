#include "engine/orbit_camera.h"

#include <gtest/gtest.h>

#include <cmath>

using tarn::OrbitCamera;

namespace {

bool is_finite(const QMatrix4x4& matrix)
{
    for (int i = 0; i < 16; ++i)
        if (!std::isfinite(matrix.constData()[i]))
            return false;
    return true;
}

/// Where the point looked at comes out in the view: the centre.
void expect_target_in_the_middle(const OrbitCamera& camera, QVector3D target)
{
    const QVector3D seen = (camera.projection_matrix({800, 600}) * camera.view_matrix()).map(target);
    EXPECT_NEAR(seen.x(), 0, 1e-3);
    EXPECT_NEAR(seen.y(), 0, 1e-3);
}

} // namespace

TEST(OrbitCamera, never_turns_over_the_top_nor_under_the_ground)
{
    const QVector3D target(0, 0.5f, 0);
    for (const double way : {1e6, -1e6}) {
        OrbitCamera camera;
        camera.orbit({123, way});
        const QVector3D direction = (camera.eye() - target).normalized();
        EXPECT_LT(std::abs(direction.y()), 1.f);
        EXPECT_NEAR(std::abs(direction.y()), std::sin(89 * M_PI / 180), 1e-4);
        EXPECT_TRUE(is_finite(camera.view_matrix()));
        EXPECT_GT(std::abs(camera.view_matrix().determinant()), 0.9) << "still a proper turn";
        expect_target_in_the_middle(camera, target);
    }
}

TEST(OrbitCamera, distance_stays_between_its_limits_and_zoom_undoes_itself)
{
    const QVector3D target(0, 0.5f, 0);
    OrbitCamera camera;
    const float start = camera.eye().distanceToPoint(target);
    camera.zoom(5);
    EXPECT_LT(camera.eye().distanceToPoint(target), start);
    camera.zoom(-5);
    EXPECT_NEAR(camera.eye().distanceToPoint(target), start, 1e-3);
    camera.zoom(1e4);
    EXPECT_NEAR(camera.eye().distanceToPoint(target), 0.5, 1e-3);
    camera.zoom(-1e4);
    EXPECT_NEAR(camera.eye().distanceToPoint(target), 400, 1e-2);
}

TEST(OrbitCamera, panning_moves_the_scene_with_the_mouse)
{
    OrbitCamera camera;
    const QVector3D point(0, 0.5f, 0);
    const auto pixel_of = [&] {
        const QVector3D seen = (camera.projection_matrix({800, 600}) * camera.view_matrix()).map(point);
        return QPointF(seen.x() * 400, -seen.y() * 300);
    };
    camera.orbit({70, -30});
    camera.pan({50, -20}, 600);
    EXPECT_NEAR(pixel_of().x(), 50, 0.5);
    EXPECT_NEAR(pixel_of().y(), -20, 0.5);
    camera.pan({1, 1}, 0);
    EXPECT_TRUE(is_finite(camera.view_matrix())) << "a view without height";
    EXPECT_TRUE(is_finite(camera.projection_matrix({800, 0})));
    EXPECT_TRUE(is_finite(camera.projection_matrix({1, 4000})));
}
