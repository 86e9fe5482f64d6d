#include "world/path_shape.h"

#include <gtest/gtest.h>

using tarn::PathShape;

namespace {

const QList<QVector3D> square{{0, 0, 0}, {4, 0, 0}, {4, 0, 4}, {0, 0, 4}};

void expect_near(const QVector3D& a, const QVector3D& b, float reach = 1e-3f)
{
    EXPECT_LT((a - b).length(), reach) << a.x() << " " << a.y() << " " << a.z();
}

} // namespace

TEST(PathShape, NoPointOneAndTwoInOnePlaceLeadNowhereAndFailNothing)
{
    for (const QList<QVector3D>& points :
         {QList<QVector3D>{}, QList<QVector3D>{{1, 2, 3}}, QList<QVector3D>{{1, 2, 3}, {1, 2, 3}}})
        for (const bool closed : {false, true})
            for (const bool smooth : {false, true})
                for (const float share : {-1.f, 0.f, 0.5f, 1.f, 7.f}) {
                    const PathShape path(points, closed, smooth);
                    EXPECT_EQ(path.length(), 0);
                    EXPECT_EQ(path.place(share), points.isEmpty() ? QVector3D() : points.front());
                    EXPECT_EQ(path.direction(share), QVector3D(0, 0, 1));
                }
}

TEST(PathShape, AShareIsOfTheLengthAndNotOfTheNumberOfPoints)
{
    const PathShape path({{0, 0, 0}, {1, 0, 0}, {10, 0, 0}}, false, false);
    EXPECT_FLOAT_EQ(path.length(), 10);
    expect_near(path.place(0.5f), {5, 0, 0});
    expect_near(path.direction(0.05f), {1, 0, 0});
}

TEST(PathShape, AnOpenPathStaysAtItsEndsAndAClosedOneGoesRound)
{
    const PathShape open(square, false, false);
    expect_near(open.place(-3), square.front());
    expect_near(open.place(1.5f), square.back());
    const PathShape closed(square, true, false);
    EXPECT_FLOAT_EQ(closed.length(), 16);
    expect_near(closed.place(1.25f), {4, 0, 0});
    expect_near(closed.place(-0.25f), {0, 0, 4});
    expect_near(closed.direction(0.9f), {0, 0, -1});
    // Two points have no way round.
    EXPECT_FLOAT_EQ(PathShape({{0, 0, 0}, {3, 0, 0}}, true, true).length(), 3);
}

TEST(PathShape, ACurveGoesThroughItsPointsWithoutACorner)
{
    for (const bool closed : {false, true}) {
        const PathShape path(square, closed, true);
        for (const QVector3D& point : square) {
            float nearest = 1e9f;
            for (const QVector3D& corner : path.corners())
                nearest = std::min(nearest, (corner - point).length());
            EXPECT_LT(nearest, 1e-3f);
        }
        for (float share = 0.02f; share < 0.97f; share += 0.01f)
            EXPECT_GT(QVector3D::dotProduct(path.direction(share), path.direction(share + 0.01f)), 0.8f) << share;
    }
}
