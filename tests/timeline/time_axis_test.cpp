#include "timeline/time_axis.h"

#include <gtest/gtest.h>

using namespace tarn;

TEST(TimeAxis, keeps_its_scale_within_bounds)
{
    TimeAxis axis;
    axis.seconds_per_pixel = 0.6f;
    axis.double_scale();
    EXPECT_EQ(axis.seconds_per_pixel, 1.f);
    axis.seconds_per_pixel = 0.008f;
    axis.halve_scale();
    EXPECT_EQ(axis.seconds_per_pixel, 0.005f);
}

TEST(TimeAxis, has_no_times_left_of_its_begin)
{
    TimeAxis axis;
    axis.view_origin = -1;
    EXPECT_EQ(axis.time_from_pixel(0), 0);
    EXPECT_FLOAT_EQ(axis.time_from_pixel(80), 1);
    EXPECT_EQ(axis.pixel_from_time(-1), 0);
}

TEST(TimeAxis, zooms_about_the_cursor)
{
    TimeAxis axis;
    const auto column = [&](float time) { return int(axis.pixel_from_time(time) + 0.01f); };
    axis.zoom_in(2); // The begin leaves to the left,
    EXPECT_EQ(column(2), 80);
    EXPECT_FLOAT_EQ(axis.view_origin, 1);
    axis.zoom_out(2);
    EXPECT_EQ(column(2), 80);
    axis.zoom_out(1); // and does not come back beyond the edge.
    EXPECT_EQ(axis.view_origin, 0);
}

TEST(TimeAxis, fits_and_shows_times)
{
    TimeAxis axis;
    axis.fit(10, 20, 440);
    EXPECT_FLOAT_EQ(axis.seconds_per_pixel, 0.025f);
    EXPECT_FLOAT_EQ(axis.pixel_from_time(10), 20);
    EXPECT_FLOAT_EQ(axis.pixel_from_time(20), 420);
    const float origin = axis.view_origin;
    axis.show(15, 440);
    EXPECT_EQ(axis.view_origin, origin);
    axis.show(40, 440, 40);
    EXPECT_FLOAT_EQ(axis.pixel_from_time(40), 400);
    axis.show(0, 440);
    EXPECT_EQ(axis.view_origin, 0);
}

TEST(TimeAxis, writes_times_as_people_read_them)
{
    const std::pair<float, const char*> cases[] = {{0.f, "0.00s"},    {12.5f, "12.50s"}, {59.999f, "60.00s"},
                                                   {60.f, "1:0"},     {75.f, "1:15"},    {3600.f, "1:0:0"},
                                                   {3700.f, "1:1:40"}};
    for (const auto& [time, text] : cases)
        EXPECT_EQ(time_label(time, nullptr), QLatin1String(text));
}
