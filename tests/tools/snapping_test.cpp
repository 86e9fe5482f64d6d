#include "tools/ruler_scale.h"
#include "tools/snapping.h"

#include <gtest/gtest.h>

#include <array>

using namespace tarn;

namespace {

constexpr double reach = 6;

SnapAxis axis(double guide, double object, double grid)
{
    SnapAxis axis;
    axis.set_grid(0, grid);
    axis.add_guide(guide);
    axis.add_object(object, object + 100, 0, 10);
    axis.prepare();
    return axis;
}

std::vector<std::pair<double, int>> numbered(const std::vector<RulerTick>& ticks)
{
    std::vector<std::pair<double, int>> numbers;
    for (const RulerTick& tick : ticks)
        if (tick.kind == RulerTick::Numbered)
            numbers.emplace_back(tick.place, tick.number);
    return numbers;
}

} // namespace

TEST(SnapAxis, the_nearest_wins_and_of_equally_near_ones_the_guide_then_the_object)
{
    const auto hit = [](const SnapAxis& axis, double from) { return axis.nearest(std::array{from}, reach); };
    EXPECT_EQ(hit(axis(24, 30, 0), 26.)->place, 24);
    EXPECT_EQ(hit(axis(24, 30, 0), 28.)->place, 30);
    EXPECT_EQ(hit(axis(24, 30, 0), 27.)->kind, SnapKind::Guide) << "three pixels to both";
    EXPECT_EQ(hit(axis(30, 24, 0), 27.)->kind, SnapKind::Guide);
    EXPECT_EQ(hit(axis(30, 30, 10), 28.)->kind, SnapKind::Guide) << "all in one place";
    EXPECT_EQ(hit(axis(500, 30, 10), 31.)->kind, SnapKind::Object);
    EXPECT_EQ(hit(axis(500, 30, 8), 34.)->place, 32) << "the grid is nearer";
    EXPECT_EQ(hit(axis(500, 30, 0), 80.)->place, 80) << "the centre";
    EXPECT_EQ(hit(axis(500, 30, 0), 136.)->place, 130) << "just in reach";
    EXPECT_FALSE(hit(axis(500, 30, 0), 136.5));
    EXPECT_FALSE(hit(SnapAxis(), 5.));
    EXPECT_FALSE(axis(24, 30, 8).nearest({}, reach)) << "nothing moves on this axis";
}

TEST(SnapAxis, any_edge_or_the_centre_meets_objects_but_only_the_first_edge_the_grid)
{
    const auto hit = axis(500, 40, 8).nearest(std::array{12., 27.5, 43.}, reach);
    EXPECT_EQ(hit->place, 40) << "the right edge";
    EXPECT_EQ(hit->offset, -3);
    EXPECT_EQ(axis(500, 900, 8).nearest(std::array{13., 27., 39.}, reach)->offset, 3) << "not the 1 from 39 to 40";
}

TEST(SnapAxis, an_alignment_runs_to_the_nearest_of_those_that_stand_there)
{
    SnapAxis axis;
    axis.add_guide(50);
    axis.add_object(50, 60, 0, 10);
    axis.add_object(50, 70, 500, 510);
    axis.prepare();
    const auto line = axis.alignment(50, 100, 120);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->low, 0);
    EXPECT_EQ(line->high, 120);
    EXPECT_FALSE(axis.alignment(51, 100, 120));
}

TEST(FreeWays, end_at_the_nearest_neighbour_that_faces_the_side_or_at_the_home)
{
    const std::array others{QRectF(0, 100, 50, 50), QRectF(20, 110, 60, 10), QRectF(100, 0, 10, 20),
                            QRectF(300, 300, 50, 50)};
    const auto ways = free_ways({100, 100, 40, 40}, others, {0, 0, 400, 200});
    EXPECT_EQ(ways,
              (std::vector{QLineF(80, 120, 100, 120), QLineF(140, 120, 400, 120), QLineF(120, 20, 120, 100),
                           QLineF(120, 140, 120, 200)}));
    EXPECT_TRUE(free_ways({0, 0, 400, 200}, {}, {0, 0, 400, 200}).empty()) << "it fills its home";
}

TEST(RulerTicks, are_ten_to_a_number_and_keep_their_distance_in_the_view)
{
    using Numbers = std::vector<std::pair<double, int>>;
    EXPECT_EQ(numbered(ruler_ticks({}, 0, 250, 1)), (Numbers{{0, 0}, {100, 100}, {200, 200}}));
    EXPECT_EQ(numbered(ruler_ticks({130, 1}, 0, 250, 1)), (Numbers{{30, -100}, {130, 0}, {230, 100}}));
    EXPECT_EQ(numbered(ruler_ticks({0, 2}, 0, 250, 1)), (Numbers{{0, 0}, {100, 50}, {200, 100}})) << "a scaled dialog";
    EXPECT_EQ(numbered(ruler_ticks({}, 0, 1000, 4)), (Numbers{{0, 0}, {500, 500}, {1000, 1000}})) << "a reduced view";
    EXPECT_EQ(numbered(ruler_ticks({}, 95, 105, 0.125)), (Numbers{{100, 100}})) << "a part that is zoomed into";
    EXPECT_EQ(ruler_ticks({}, 0, 250, 1).size(), 26u);
    EXPECT_EQ(ruler_ticks({}, 0, 100, 1)[5].kind, RulerTick::Middle);
}
