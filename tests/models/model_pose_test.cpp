#include "models/model_pick.h"

#include "sample_model.h"

#include <gtest/gtest.h>

#include <limits>

using namespace tarn;
using namespace tarn::test;

namespace {

ModelPtr made(ModelData data)
{
    return Model::make(std::move(data)).value();
}

void expect_near(const QVector3D& a, const QVector3D& b)
{
    EXPECT_NEAR((a - b).length(), 0, 1e-4) << a.x() << ' ' << a.y() << ' ' << a.z();
}

QVector3D end_at(const ModelPose& pose)
{
    return pose.nodes()[2].map(QVector3D());
}

TEST(ModelPose, BendsNodesAndSkinAtAnyTime)
{
    ModelPose pose(made(arm()));
    expect_near(end_at(pose), {0, 2, 0});
    pose.set_action(0, 1, ActionEnd::Hold);
    expect_near(end_at(pose), {-1, 1, 0});
    std::vector<QVector3D> places;
    pose.places({0, 3}, places); // Where the skinned mesh's node is does not matter.
    expect_near(places[0], {-0.1f, 0, 0});
    expect_near(places[2], {-1, 1.1f, 0});
    pose.set_action(0, 0.5, ActionEnd::Hold);
    expect_near(end_at(pose), {-std::sqrt(0.5f), 1 + std::sqrt(0.5f), 0});
}

TEST(ModelPose, RepeatsHoldsAndTakesAnyNumber)
{
    ModelPose pose(made(arm()));
    pose.set_action(0, 0.25);
    const QVector3D quarter = end_at(pose);
    for (const double same : {3.25, -0.75, 1e6 + 0.25}) {
        pose.set_action(0, same);
        expect_near(end_at(pose), quarter);
    }
    pose.set_action(0, 7, ActionEnd::Hold);
    expect_near(end_at(pose), {-1, 1, 0});
    for (const double odd : {-7.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        pose.set_action(0, odd, ActionEnd::Hold);
        EXPECT_FALSE(std::isnan(end_at(pose).x()));
    }
    for (const int nothing : {-1, 1, 1000}) {
        pose.set_action(nothing, 0.5);
        expect_near(end_at(pose), {0, 2, 0});
    }
}

TEST(ModelPose, TellsByItsRevisionWhetherItChanged)
{
    ModelPose pose(made(arm()));
    const quint64 at_rest = pose.revision();
    EXPECT_NE(ModelPose(pose.model()).revision(), at_rest);
    pose.set_action(0, 0.5);
    const quint64 bent = pose.revision();
    EXPECT_NE(bent, at_rest);
    pose.set_action(0, 1.5);
    EXPECT_EQ(pose.revision(), bent) << "the same pose again";
}

TEST(ModelPose, BoxesEncloseEveryVertexOfEveryPose)
{
    ModelData data = arm();
    data.meshes[0].bone_numbers[2] = {0, 1, 0, 0};
    data.meshes[0].bone_weights[2] = {0.5f, 0.5f, 0, 0};
    ModelPose pose(made(std::move(data)));
    for (int i = 0; i < 10; ++i) {
        pose.set_action(0, i / 10.0);
        for (const ModelPart& part : pose.model()->parts()) {
            ModelBox box = pose.box(part);
            box.low -= QVector3D(1, 1, 1) * 1e-4f;
            box.high += QVector3D(1, 1, 1) * 1e-4f;
            std::vector<QVector3D> places;
            pose.places(part, places);
            for (const QVector3D& place : places)
                for (int axis = 0; axis < 3; ++axis)
                    EXPECT_TRUE(place[axis] >= box.low[axis] && place[axis] <= box.high[axis]);
        }
    }
}

TEST(ModelKind, TellsStaticAnimatedAndSkinnedApart)
{
    EXPECT_EQ(made(arm())->kind(), ModelKind::Skinned);
    ModelData nodes = arm();
    nodes.nodes[3].meshes.clear();
    EXPECT_EQ(made(nodes)->kind(), ModelKind::Animated) << "nobody shows the skin";
    nodes.actions[0].tracks.clear();
    EXPECT_EQ(made(nodes)->kind(), ModelKind::Static);
    EXPECT_EQ(made(ModelData())->kind(), ModelKind::Static);
}

TEST(ModelPick, MeetsThePosedTrianglesNearestFirst)
{
    const ModelPtr model = made(arm());
    ModelPose pose(model);
    const Ray ray{{0.05f, 1.75f, 5}, {0, 0, -2}};
    const auto square = pick(pose, {}, ray);
    ASSERT_TRUE(square);
    EXPECT_EQ(square->mesh, 1u);
    EXPECT_FLOAT_EQ(square->distance, 2);
    expect_near(square->point, {0.05f, 1.75f, 1});

    const auto strip = pick(pose, {}, {{0.05f, 0.5f, -5}, {0, 0, 1}}); // From behind.
    ASSERT_TRUE(strip && strip->mesh == 0);
    EXPECT_NEAR(strip->uv.x(), 0.75, 1e-4);
    EXPECT_NEAR(strip->uv.y(), 0.75, 1e-4);

    const Ray at_side{{-0.9f, 0.9f, -5}, {0, 0, 1}};
    const auto before = pick(pose, {}, at_side);
    EXPECT_TRUE(before && before->mesh == 1) << "the strip is elsewhere at rest";
    pose.set_action(0, 1, ActionEnd::Hold);
    const auto bent = pick(pose, {}, at_side);
    EXPECT_TRUE(bent && bent->mesh == 0);
}

TEST(ModelPick, GoesThroughAnyMatrix)
{
    const ModelPose pose(made(arm()));
    QMatrix4x4 matrix;
    matrix.translate(10, 0, 0);
    matrix.rotate(90, 0, 1, 0);
    matrix.scale(2, 1, -3); // Mirrored, and uneven.
    const auto hit = pick(pose, matrix, {{20, 1, 0}, {-1, 0, 0}});
    ASSERT_TRUE(hit);
    EXPECT_NEAR(hit->distance, 10, 1e-3);
    expect_near(hit->point, {10, 1, 0});
    QMatrix4x4 flat;
    flat.scale(1, 0, 1);
    EXPECT_FALSE(pick(pose, flat, {{0, 1, 5}, {0, 0, -1}})) << "nothing to turn back";
}

} // namespace
