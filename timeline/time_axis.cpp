#include "time_axis.h"

#include "animation/anim_time.h"
#include "animation/timebar.h"

#include <algorithm>

namespace tarn {

float TimeAxis::time_from_pixel(float x) const
{
    return std::max(seconds_per_pixel * x + view_origin, 0.f);
}

void TimeAxis::double_scale()
{
    seconds_per_pixel = std::min(2 * seconds_per_pixel, greatest_scale);
}

void TimeAxis::halve_scale()
{
    seconds_per_pixel = std::max(seconds_per_pixel / 2, least_scale);
}

void TimeAxis::keep_column(float time, int column)
{
    view_origin = time - time_from_pixel(float(column)) + view_origin;
}

void TimeAxis::zoom_in(float time)
{
    const int column = int(pixel_from_time(time));
    halve_scale();
    keep_column(time, column);
}

void TimeAxis::zoom_out(float time)
{
    const int column = int(pixel_from_time(time));
    double_scale();
    keep_column(time, column);
    view_origin = std::max(view_origin, 0.f);
}

void TimeAxis::fit(float begin, float end, int width)
{
    constexpr int margin = 20;
    const auto pixels = float(std::max(width - 2 * margin, 1));
    seconds_per_pixel = std::clamp((end - begin) / pixels, least_scale, greatest_scale);
    view_origin = std::max(begin - seconds(margin), 0.f);
}

void TimeAxis::show(float time, int width, int margin)
{
    const float x = pixel_from_time(time);
    const auto right = float(width - margin);
    if (x < float(margin))
        view_origin = std::max(time - seconds(float(margin)), 0.f);
    else if (x > right)
        view_origin = std::max(time - seconds(right), 0.f);
}

QString time_label(float time, const CTimebar* bar)
{
    if (bar && bar->shows_frames())
        return QString::number(frame_of(time, bar->frame_rate()));
    const int minutes = int(time / 60);
    const QString rest = QString::number(double(time - 60 * float(minutes)), 'f', 0);
    const int hours = minutes / 60;
    if (hours)
        return QStringLiteral("%1:%2:%3").arg(hours).arg(minutes - 60 * hours).arg(rest);
    return minutes ? QStringLiteral("%1:%2").arg(minutes).arg(rest)
                   : QStringLiteral("%1s").arg(double(time), 0, 'f', 2);
}

} // namespace tarn
