#include "design/align_math.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace tarn {

namespace {

constexpr Edge all_edges[] = {Edge::Left, Edge::MiddleX, Edge::Right, Edge::Top, Edge::MiddleY, Edge::Bottom};

class RandomRects {
public:
    /// A control's rectangle: numbers that a 32-bit float holds.
    QRectF any() { return {number(-2000, 2000), number(-2000, 2000), number(0, 900), number(0, 900)}; }
    /// The same with a whole and even size.
    QRectF even() { return {number(-2000, 2000), number(-2000, 2000), 2.0 * whole(0, 450), 2.0 * whole(0, 450)}; }
    QRect dialog() { return {whole(-2000, 2000), whole(-2000, 2000), whole(0, 900), whole(0, 900)}; }
    std::vector<QRectF> some()
    {
        std::vector<QRectF> rects(std::size_t(whole(2, 40)));
        std::generate(rects.begin(), rects.end(), [this] { return any(); });
        return rects;
    }

private:
    int whole(int from, int to) { return std::uniform_int_distribution(from, to)(m_random); }
    float number(float from, float to) { return std::uniform_real_distribution(from, to)(m_random); }

    std::mt19937 m_random{20260};
};

} // namespace

TEST(AlignMath, controls_come_to_lie_on_whole_pixels_beside_the_reference)
{
    const QRectF reference(3.9, -3.9, 101, 50.5);
    const QRectF control(10.7, 20.2, 20.5, 11);
    const struct {
        Edge edge;
        QPointF of_control;
        QPointF of_reference;
    } cases[] = {
        {Edge::Left, {3, 20.2}, {3, -3.9}},
        {Edge::MiddleX, {43, 20.2}, {3, -3.9}}, // 54.4 and 54 - 10.25, then 54 - 50.5
        {Edge::Right, {83, 20.2}, {3, -3.9}},   // 104.9 and 104 - 20.5
        {Edge::Top, {10.7, -3}, {3.9, -3}},     // toward zero, also from below
        {Edge::MiddleY, {10.7, 15}, {3.9, -4}}, // 21.35 and 21 - 5.5, then 21 - 25.25
        {Edge::Bottom, {10.7, 35}, {3.9, -4}},  // 46.6 and 46 - 11, then 46 - 50.5
    };
    for (const auto& c : cases) {
        EXPECT_EQ(aligned(c.edge, control, reference), c.of_control) << int(c.edge);
        EXPECT_EQ(aligned(c.edge, reference, reference), c.of_reference) << int(c.edge);
    }
}

TEST(AlignMath, dialogs_are_halved_as_integers)
{
    const QRect reference(0, -7, 101, 121);
    const QRect dialog(300, 400, 51, 20);
    EXPECT_EQ(aligned(Edge::MiddleX, dialog, reference), QPoint(25, 400));
    EXPECT_EQ(aligned(Edge::MiddleY, dialog, reference), QPoint(300, 43));
    EXPECT_EQ(aligned(Edge::Right, dialog, reference), QPoint(50, 400));
    EXPECT_EQ(aligned(Edge::Bottom, dialog, reference), QPoint(300, 94));
    EXPECT_EQ(aligned(Edge::Left, dialog, reference), QPoint(0, 400));
    EXPECT_EQ(aligned(Edge::Top, dialog, reference), QPoint(300, -7));
}

TEST(AlignMath, aligning_twice_changes_nothing_more)
{
    RandomRects random;
    for (int round = 0; round < 2000; ++round) {
        const QRectF reference = random.even();
        const QRectF control = random.any();
        const QRect dialog = random.dialog();
        const QRect other = random.dialog();
        for (const Edge edge : all_edges) {
            const QRectF moved(aligned(edge, reference, reference), reference.size());
            const QRectF once(aligned(edge, control, reference), control.size());
            EXPECT_EQ(aligned(edge, moved, moved), moved.topLeft());
            EXPECT_EQ(aligned(edge, once, moved), once.topLeft());
            EXPECT_LT(std::abs(moved.x() - reference.x()) + std::abs(moved.y() - reference.y()), 2);
            EXPECT_EQ(aligned(edge, dialog, dialog), dialog.topLeft()) << "a dialog that is the reference stays";
            const QRect once_moved(aligned(edge, other, dialog), other.size());
            EXPECT_EQ(aligned(edge, once_moved, dialog), once_moved.topLeft());
        }
    }
}

TEST(AlignMath, sizes_are_taken_without_their_fractions_and_only_where_asked_for)
{
    const QRectF reference(1, 2, 40.9, 30.9);
    const QRectF control(0, 0, 7.5, 8.5);
    EXPECT_EQ(matched(Dimension::Width, control, reference), QSizeF(40, 8.5));
    EXPECT_EQ(matched(Dimension::Height, control, reference), QSizeF(7.5, 30));
    EXPECT_EQ(matched(Dimension::Both, control, reference), QSizeF(40, 30));
    RandomRects random;
    for (int round = 0; round < 500; ++round) {
        QRectF follows = random.any();
        QRectF leads = random.any();
        for (const Dimension dimension : {Dimension::Width, Dimension::Height, Dimension::Both}) {
            follows.setSize(matched(dimension, follows, leads));
            leads.setSize(matched(dimension, leads, leads));
            EXPECT_EQ(matched(dimension, follows, leads), follows.size());
        }
    }
}

TEST(AlignMath, spreads_controls_by_their_whole_pixels)
{
    const auto xs = [](std::vector<QRectF> rects, std::size_t reference) {
        std::vector<double> all;
        for (const QPointF& place : distributed(Qt::Horizontal, rects, rects[reference]))
            all.push_back(place.x());
        return all;
    };
    using Rects = std::vector<QRectF>;
    using Xs = std::vector<double>;
    const Rects even{{0, 5, 10, 10}, {50, 6, 10, 10}, {100, 7, 10, 10}};
    EXPECT_EQ(xs(even, 0), (Xs{0, 50, 100}));
    EXPECT_EQ(xs({{0, 0, 10, 9}, {13, 0, 10, 9}, {100, 0, 10, 9}}, 1), (Xs{0, 50, 100}));
    EXPECT_EQ(xs({{100, 0, 10, 9}, {0, 0, 10, 9}, {13, 0, 10, 9}}, 2), (Xs{100, 0, 50})) << "in any order";
    EXPECT_EQ(xs({{5.9, 0, 10, 9}, {5.1, 0, 20, 9}, {95, 0, 10, 9}}, 0), (Xs{5, 45, 95}))
        << "the first selected one comes first though it begins farther right";
    EXPECT_EQ(xs({{0, 0, 60, 9}, {10, 0, 60, 9}, {40, 0, 60, 9}}, 0), (Xs{0, 20, 40})) << "evenly overlapping";
    // From 0 to 19, which is 10 + 9.9 cut off; the widths add up to 9 + 9.9, cut off again.
    EXPECT_EQ(xs({{0.8, 0, 9.9, 9}, {10.8, 0, 9.9, 9}}, 0), (Xs{0, double(9.9f + 1.f)}));
    EXPECT_EQ(xs({{7.5, 0, 10, 9}}, 0), Xs{7.5}) << "one alone stays";
    EXPECT_TRUE(distributed(Qt::Vertical, {}, {}).empty());

    const auto places = distributed(Qt::Vertical, {{1, 0, 5, 10}, {2.5, 20, 5, 10}, {3, 90, 5, 10}}, {1, 0, 5, 10});
    EXPECT_EQ(places, (std::vector<QPointF>{{1, 0}, {2.5, 45}, {3, 90}}));
}

TEST(AlignMath, spreading_keeps_the_outer_edges_and_makes_equal_gaps)
{
    RandomRects random;
    for (int round = 0; round < 500; ++round) {
        const std::vector<QRectF> rects = random.some();
        const auto places = distributed(Qt::Horizontal, rects, rects.back());
        std::vector<std::size_t> order(rects.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
            EXPECT_EQ(places[i].y(), rects[i].y());
        }
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return int(rects[a].x()) < int(rects[b].x()); });
        double right = -1e9;
        for (const QRectF& rect : rects)
            right = std::max(right, rect.right());
        const auto gap = [&](std::size_t i) {
            return places[order[i]].x() - places[order[i - 1]].x() - rects[order[i - 1]].width();
        };
        EXPECT_EQ(places[order.front()].x(), truncated(rects[order.front()].x()));
        for (std::size_t i = 2; i < order.size(); ++i)
            EXPECT_NEAR(gap(i), gap(1), 0.01);
        // The sum of the widths lost up to a pixel with each control.
        EXPECT_NEAR(places[order.back()].x() + rects[order.back()].width(), right, double(rects.size()) + 2);
    }
}

TEST(AlignMath, a_group_goes_to_the_edge_of_its_area_as_a_whole)
{
    const std::vector<QRectF> group{{10.7, -5.5, 20, 30.2}, {40, 8, 25.9, 10}}; // 10 to 65 and -5 to 24
    const QSizeF area(301, 200.5);
    EXPECT_EQ(area_offset(Edge::Left, group, area), QPointF(-10, 0));
    EXPECT_EQ(area_offset(Edge::Right, group, area), QPointF(236, 0));
    EXPECT_EQ(area_offset(Edge::MiddleX, group, area), QPointF(140 - 27.5, 0));
    EXPECT_EQ(area_offset(Edge::Top, group, area), QPointF(0, 5));
    EXPECT_EQ(area_offset(Edge::Bottom, group, area), QPointF(0, 176));
    EXPECT_EQ(area_offset(Edge::MiddleY, group, area), QPointF(0, 105 - 14.5));
    EXPECT_EQ(area_offset(Edge::Right, {{-90, 0, 40, 10}}, area), QPointF(351, 0)) << "all of it outside";
}

TEST(AlignMath, anchors_follow_the_edge)
{
    // By the anchor before: the corners and sides clockwise from the top left, the centre, and none.
    const struct {
        Edge edge;
        int after[10];
    } cases[] = {
        {Edge::Left, {0, 0, 0, 7, 6, 6, 6, 7, 7, 9}},    {Edge::Right, {2, 2, 2, 3, 4, 4, 4, 3, 3, 9}},
        {Edge::Top, {0, 1, 2, 2, 2, 1, 0, 0, 1, 9}},     {Edge::Bottom, {6, 5, 4, 4, 4, 5, 6, 6, 5, 9}},
        {Edge::MiddleX, {1, 1, 1, 8, 5, 5, 5, 8, 8, 9}}, {Edge::MiddleY, {7, 8, 3, 3, 3, 8, 7, 7, 8, 9}},
    };
    for (const auto& c : cases)
        for (int before = 0; before < 10; ++before)
            EXPECT_EQ(anchor_at_edge(c.edge, before), c.after[before]) << int(c.edge) << " from " << before;
}

TEST(AlignMath, places_beyond_all_integers_are_cut_off)
{
    using Limits = std::numeric_limits<int>;
    EXPECT_EQ(truncated(3e38), Limits::max());
    EXPECT_EQ(truncated(-3e38), Limits::min());
    EXPECT_EQ(truncated(-0.9), 0);
    const QRectF far(3e38, 0, 3e38, 1);
    EXPECT_EQ(aligned(Edge::Right, {0, 0, 1, 1}, far).x(), Limits::max() - 1.0);
    EXPECT_TRUE(std::isfinite(distributed(Qt::Horizontal, {far, {-3e38, 0, 1, 1}}, far).front().x()));
}

} // namespace tarn
