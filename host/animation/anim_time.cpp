#include "anim_time.h"

#include "core/language.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace tarn {

qint64 frame_of(float time, int frame_rate)
{
    return qint64(float(std::max(frame_rate, 1)) * time);
}

float frame_time(qint64 frame, int frame_rate)
{
    auto time = float(double(frame) / std::max(frame_rate, 1));
    // What is rounded down would be shown as the frame before.
    if (frame_of(time, frame_rate) < frame)
        time = std::nextafter(time, std::numeric_limits<float>::max());
    return time;
}

TimeUnit TimeUnit::frames(int rate)
{
    return TimeUnit(std::max(rate, 1));
}

double TimeUnit::number_of(float time) const
{
    return is_frames() ? double(frame_of(time, m_frame_rate)) : double(time);
}

float TimeUnit::time_of(double number) const
{
    if (!is_frames())
        return float(number);
    constexpr double most_frames = 1e15;
    const bool is_whole = std::abs(number) < most_frames && number == std::floor(number);
    return is_whole ? frame_time(qint64(number), m_frame_rate) : float(number / m_frame_rate);
}

double TimeUnit::typed(const QString& text)
{
    const QByteArray bytes = text.trimmed().toLatin1();
    const char* begin = bytes.constData() + (bytes.startsWith('+') ? 1 : 0);
    double number = 0;
    std::from_chars(begin, bytes.constData() + bytes.size(), number);
    return number;
}

QString TimeUnit::length_text(float time) const
{
    if (is_frames()) {
        const auto frame = qint64(number_of(time));
        return (frame ? QString::number(frame) : QString()) + lang(u"帧", u"Frame");
    }
    return QString::asprintf("%.1f", double(time)) + lang(u"秒", u"S");
}

QString TimeUnit::key_text(float time) const
{
    if (is_frames())
        return QString::number(qint64(number_of(time))) + lang(u"帧", u"Frame");
    return QString::asprintf("%.2f", double(time)) + lang(u"秒", u"Sec");
}

float snap(float time, const SnapGrid& grid)
{
    time = std::clamp(time, 0.f, max_time);
    if (!grid.times.empty()) {
        const auto after = std::lower_bound(grid.times.begin(), grid.times.end(), time);
        const bool takes_after = after != grid.times.end()
            && (after == grid.times.begin() || *after - time < time - *(after - 1));
        const float nearest = takes_after ? *after : *(after - 1);
        if (std::abs(nearest - time) <= grid.reach)
            return nearest;
    }
    if (grid.frame_rate < 1)
        return time;
    return std::min(frame_time(std::llround(double(time) * grid.frame_rate), grid.frame_rate), max_time);
}

float just_behind(float time)
{
    constexpr float unseen = 1e-4f;
    return std::max(time + unseen, std::nextafter(time, std::numeric_limits<float>::max()));
}

void keep_apart(std::span<float> times)
{
    for (std::size_t i = 1; i < times.size(); ++i)
        if (times[i] <= times[i - 1])
            times[i] = just_behind(times[i - 1]);
    float bound = max_time;
    for (std::size_t i = times.size(); i-- > 0 && times[i] > bound;) {
        times[i] = bound;
        bound = std::nextafter(bound, 0.f);
    }
}

} // namespace tarn
