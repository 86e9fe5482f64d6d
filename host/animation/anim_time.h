#pragma once

#include <QString>

#include <span>

namespace tarn {

/// Times are seconds from a timebar's begin. At this one, 100 hours, neighbouring floats are a 32nd of a second apart.
constexpr float max_time = 360'000;

/// The time of a frame: the one float that stands for it everywhere. A rate below 1 counts as 1.
float frame_time(qint64 frame, int frame_rate);
/// The frame that is shown at a time.
qint64 frame_of(float time, int frame_rate);

/// The unit in which an author sees and types the times of a timebar: seconds, or frames of a rate. All ways from the one to
/// the other go through here.
class TimeUnit {
public:
    static TimeUnit seconds() { return TimeUnit(0); }
    static TimeUnit frames(int rate);

    bool is_frames() const { return m_frame_rate > 0; }
    /// The time as a number of the unit; a frame that has begun counts.
    double number_of(float time) const;
    /// The time that a number stands for; of a whole frame the one float that stands for it everywhere. Neither limited
    /// nor checked: what is no number stays none.
    float time_of(double number) const;
    /// As C reads it: the number that the text begins with, 0 without one.
    static double typed(const QString& text);

    /// "10.0S", "250Frame" in the program's language. Of frame 0 only the word is left.
    QString length_text(float time) const;
    /// "1.50Sec", "37Frame".
    QString key_text(float time) const;

private:
    explicit TimeUnit(int frame_rate) : m_frame_rate(frame_rate) {}

    int m_frame_rate; ///< 0: seconds
};

/// What times snap to.
struct SnapGrid {
    int frame_rate = 0;             ///< whole frames of that rate; 0: no frames
    std::span<const float> times{}; ///< marks, keys and what else there is, ascending
    float reach = 0;                ///< seconds within which one of `times` goes before a frame
};

/// The time that cursor, keys, ruler, pasting and nudging take when `time` is meant; within 0 and max_time.
float snap(float time, const SnapGrid& grid);

/// Makes the times strictly ascending, by steps that nobody sees: what was rounded together stays apart. All of them stay
/// within max_time.
void keep_apart(std::span<float> times);
/// The least time for what is to stand behind `time`.
float just_behind(float time);

} // namespace tarn
