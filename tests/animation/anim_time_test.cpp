#include "animation/anim_time.h"

#include "animation/ease.h"
#include "core/language.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace tarn;

TEST(AnimTime, a_frame_is_one_float_and_is_shown_as_that_frame)
{
    for (const int rate : {0, 1, 24, 25, 29, 30, 60, 144, 1000})
        for (qint64 frame = 0; frame < qint64(std::max(rate, 1)) * 1000; frame += 1 + frame / 997) {
            const float time = frame_time(frame, rate);
            ASSERT_EQ(frame_of(time, rate), frame) << rate;
            ASSERT_EQ(snap(time, {.frame_rate = std::max(rate, 1)}), time) << frame << " at " << rate;
            ASSERT_EQ(snap(time + 0.3f / float(std::max(rate, 1)), {.frame_rate = std::max(rate, 1)}), time);
        }
    EXPECT_EQ(frame_time(30, 30), 1.f);
}

TEST(AnimTime, what_is_near_goes_before_frames_and_all_stays_in_range)
{
    const std::vector<float> marks{0.51f, 2.f};
    const SnapGrid grid{.frame_rate = 10, .times = marks, .reach = 0.02f};
    EXPECT_EQ(snap(0.5f, grid), 0.51f);
    EXPECT_EQ(snap(0.48f, grid), 0.5f);
    EXPECT_EQ(snap(2.01f, grid), 2.f);
    EXPECT_EQ(snap(1.234f, {}), 1.234f);
    EXPECT_EQ(snap(-3, grid), 0.f);
    EXPECT_EQ(snap(1e9f, grid), max_time);
}

TEST(AnimTime, what_was_rounded_together_stays_apart_and_in_order)
{
    std::vector<float> times{1, 1, 1, 0.5f, 2, max_time, max_time};
    keep_apart(times);
    EXPECT_TRUE(std::is_sorted(times.begin(), times.end(), std::less_equal<>()));
    EXPECT_EQ(times.front(), 1.f);
    EXPECT_EQ(times.back(), max_time);
    EXPECT_NEAR(times[3], 1, 0.001);
}

TEST(TimeUnit, typed_numbers_become_times_and_times_texts)
{
    using namespace Qt::StringLiterals;
    struct Case {
        int rate; ///< -1: seconds
        QString typed;
        float time;
        QString length, key;
    };
    const Case cases[] = {
        {-1, u"10"_s, 10, u"10.0S"_s, u"10.00Sec"_s},
        {-1, u" +2.5e1 apples"_s, 25, u"25.0S"_s, u"25.00Sec"_s},
        {-1, u""_s, 0, u"0.0S"_s, u"0.00Sec"_s},
        {-1, u"much"_s, 0, u"0.0S"_s, u"0.00Sec"_s},
        {-1, u"-1"_s, -1, u"-1.0S"_s, u"-1.00Sec"_s},
        {25, u"250"_s, 10, u"250Frame"_s, u"250Frame"_s},
        {0, u"3"_s, 3, u"3Frame"_s, u"3Frame"_s},
        {24, u"0.96"_s, 0.04f, u"Frame"_s, u"0Frame"_s},
        {30, u"1"_s, frame_time(1, 30), u"1Frame"_s, u"1Frame"_s},
        {30, u"2.5"_s, 2.5f / 30, u"2Frame"_s, u"2Frame"_s},
    };
    VLCMsgIniW::set_language(Language::English);
    for (const Case& c : cases) {
        const TimeUnit unit = c.rate < 0 ? TimeUnit::seconds() : TimeUnit::frames(c.rate);
        EXPECT_EQ(unit.time_of(TimeUnit::typed(c.typed)), c.time) << c.typed.toStdString();
        EXPECT_EQ(unit.length_text(c.time), c.length);
        EXPECT_EQ(unit.key_text(c.time), c.key);
    }
    EXPECT_TRUE(std::isnan(TimeUnit::frames(25).time_of(TimeUnit::typed(u"nan"_s))));
    for (qint64 frame = 0; frame < 100'000; frame += 7)
        ASSERT_EQ(TimeUnit::frames(30).number_of(TimeUnit::frames(30).time_of(double(frame))), frame);
    VLCMsgIniW::set_language(Language::Chinese);
    EXPECT_EQ(TimeUnit::seconds().length_text(2) + TimeUnit::seconds().key_text(2), u"2.0秒2.00秒"_s);
    EXPECT_EQ(TimeUnit::frames(25).length_text(0) + TimeUnit::frames(25).key_text(2), u"帧50帧"_s);
}

TEST(Ease, is_monotone_straight_at_0_and_half_way_where_its_handle_stands)
{
    for (float ease = -100; ease <= 100; ease += 12.5f) {
        const float bend = Ease::bend(ease);
        float before = -1;
        for (int i = 0; i <= 1000; ++i) {
            const float u = float(i) / 1000;
            const float way = Ease::way(u, bend);
            ASSERT_GT(way, before);
            before = way;
            if (ease == 0) {
                ASSERT_FLOAT_EQ(way, u);
            }
            const float h = 1e-3f;
            if (std::abs(ease) <= 75 && u > h && u < 1 - h) {
                ASSERT_NEAR(Ease::slope(u, bend), (Ease::way(u + h, bend) - Ease::way(u - h, bend)) / (2 * h), 0.01);
            }
        }
        EXPECT_EQ(Ease::way(0, bend), 0.f);
        EXPECT_EQ(Ease::way(1, bend), 1.f);
        EXPECT_NEAR(Ease::way(0.5f + ease * 0.0049f, bend), 0.5, 1e-4);
    }
}
