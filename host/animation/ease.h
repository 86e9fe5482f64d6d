#pragma once

namespace tarn {

/// How the values between two keys are eased, -100..100: the half of the way is done where the span's handle stands. At 0
/// that is in the middle and the way is straight, towards 100 all happens late, towards -100 early; always monotone.
struct Ease {
    static constexpr float limit = 100;

    /// The number that the formulas below take. The ends are kept off 0 and 1, where the way would be a jump.
    static constexpr float bend(float ease)
    {
        const float half_way = 0.5f + ease * 0.0049f;
        return (2 * half_way - 1) / (1 - half_way);
    }
    /// The share of the way at the share `u` of the time, both 0..1.
    static constexpr float way(float u, float bend) { return u / (bend * (1 - u) + 1); }
    /// Its slope there; 1 everywhere when the ease is 0.
    static constexpr float slope(float u, float bend)
    {
        const float divisor = bend * (1 - u) + 1;
        return (1 + bend) / (divisor * divisor);
    }
};

} // namespace tarn
