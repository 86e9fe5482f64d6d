#pragma once

#include "key_value.h"

#include <array>
#include <bit>

namespace tarn {

/// What of an object a timebar can drive. The first six are the bits by which an author chooses; those behind belong to
/// objects of the world and take part always.
enum class Channel : quint8 {
    Position,
    Rotation, ///< degrees
    Scale,
    Color,        ///< ARGB
    Transparency, ///< 0 opaque, 1 not to be seen
    Show,
    PathShare,   ///< of the way along the path
    PathTurn,    ///< about the path, radians
    Action,      ///< number of a skeleton's action
    Loops,       ///< of the action
    FieldOfView, ///< of a camera, degrees
    ActionTime,  ///< seconds since the action began; it has no keys and comes with the action
};
constexpr int channel_count = 12;
constexpr quint32 chosen_channels = 0x3f; ///< the bits of those by which an author chooses
constexpr quint32 bit(Channel channel)
{
    return 1u << int(channel);
}

struct ChannelRow {
    VarType type;
    bool steps;       ///< the value changes at keys only
    quint8 word;      ///< where its words begin in a pose
    const char* name; ///< of the variable that holds its keys
    const char16_t* chinese;
    const char16_t* english;
};
const ChannelRow& channel_row(Channel channel);

/// Values of some channels of one object.
class Pose {
public:
    quint32 channels() const { return m_channels; } ///< bits of those that it has
    bool has(Channel channel) const { return m_channels & bit(channel); }
    bool is_empty() const { return m_channels == 0; }

    float number(Channel channel, int part = 0) const { return std::bit_cast<float>(word(channel, part)); }
    int whole(Channel channel) const { return int(word(channel, 0)); }
    quint32 color() const { return word(Channel::Color, 0); }
    bool shows() const { return whole(Channel::Show) != 0; }
    KeyValue value(Channel channel) const;

    void set(Channel channel, const KeyValue& value);
    void set_vec(Channel channel, float x, float y, float z = 0) { set(channel, KeyValue::vec(x, y, z)); }
    void set_number(Channel channel, float number) { set(channel, KeyValue::number(number)); }
    void set_whole(Channel channel, int number) { set(channel, KeyValue::whole(number)); }
    void set_color(quint32 argb) { set(Channel::Color, KeyValue::color(argb)); }
    void drop(Channel channel) { m_channels &= ~bit(channel); }
    /// Takes what `other` has.
    void take(const Pose& other);

    // For evaluation: the words lie as ChannelRow::word tells.
    void set_channels(quint32 channels) { m_channels = channels; }
    quint32* words() { return m_words.data(); }

private:
    quint32 word(Channel channel, int part) const { return m_words[std::size_t(channel_row(channel).word + part)]; }

    std::array<quint32, 18> m_words{};
    quint32 m_channels = 0;
};

} // namespace tarn
