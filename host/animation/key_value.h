#pragma once

#include "core/status.h"
#include "core/value.h"

#include <QString>

#include <array>
#include <bit>
#include <span>

namespace tarn {

/// The types of variables; the numbers are those of CTVar.
enum class VarType : quint8 { Float, Int, Vec, Color, Mat };
constexpr int var_type_count = 5;

/// A value of a variable: as many 32-bit words as its type needs. A float or whole number has one, a vector three, a
/// colour one (ARGB), a matrix ten: its place, its turn as a quaternion (x, y, z, w) and its scale.
class KeyValue {
public:
    static constexpr int max_words = 10;
    static constexpr float max_number = 1e30f; ///< of its floats, either way: what is worked out from them stays finite
    static constexpr int words_of(VarType type)
    {
        constexpr int words[] = {1, 1, 3, 1, 10};
        return words[int(type)];
    }

    /// That of a new variable: 0, opaque white, a matrix that changes nothing.
    KeyValue() : KeyValue(VarType::Float) {}
    explicit KeyValue(VarType type);
    KeyValue(VarType type, std::span<const quint32> words);
    static KeyValue number(float number);
    static KeyValue whole(int number);
    static KeyValue vec(float x, float y, float z);
    static KeyValue color(quint32 argb);

    VarType type() const { return m_type; }
    std::span<const quint32> words() const { return {m_words.data(), std::size_t(words_of(m_type))}; }
    float part(int index) const { return std::bit_cast<float>(m_words[std::size_t(index)]); }
    int as_int() const { return int(m_words[0]); }
    quint32 as_color() const { return m_words[0]; }
    static bool is_sound(float number) { return number >= -max_number && number <= max_number; }
    bool operator==(const KeyValue& other) const { return m_type == other.m_type && m_words == other.m_words; }

    /// For automation: a number, or a list of 3 numbers, of red, green, blue and alpha (0..255), or of the 16 of a matrix
    /// by rows, whose last row is the place.
    Value to_value() const;
    static Status from_value(VarType type, const Value& value, KeyValue& out);
    /// The same numbers as text, separated by commas. A colour can be read as "#AARRGGBB", too.
    QString to_text() const;
    /// False when it is no such text; `out` stays.
    static bool from_text(VarType type, const QString& text, KeyValue& out);

private:
    static bool from_numbers(VarType type, std::span<const double> numbers, KeyValue& out);
    QList<double> numbers() const;

    VarType m_type;
    std::array<quint32, max_words> m_words{};
};

/// The value on the way from `a` to `b`, both of one type: vectors and colours by their components, matrices by place, turn
/// and scale. `way` is 0..1.
KeyValue mix(const KeyValue& a, const KeyValue& b, float way);

/// One byte of a colour, on its way from one to another.
inline quint32 mix_byte(quint32 a, quint32 b, int shift, float way)
{
    const auto from = float(a >> shift & 0xff);
    const auto to = float(b >> shift & 0xff);
    return quint32(from + way * (to - from) + 0.5f) << shift;
}
inline quint32 mix_color(quint32 a, quint32 b, float way)
{
    return mix_byte(a, b, 0, way) | mix_byte(a, b, 8, way) | mix_byte(a, b, 16, way) | mix_byte(a, b, 24, way);
}

} // namespace tarn
