#pragma once

#include "animation/pose.h"
#include "core/field_key.h"

#include <algorithm>
#include <span>
#include <vector>

namespace tarn {

/// The attributes that a channel drives.
struct ChannelFields {
    Channel channel;
    std::vector<FieldKey> fields;
};

inline std::span<const FieldKey> fields_of(std::span<const ChannelFields> rows, Channel channel)
{
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [channel](const ChannelFields& row) { return row.channel == channel; });
    return found == rows.end() ? std::span<const FieldKey>() : found->fields;
}

/// Whether an object that has `now` shows `pose` already: then nobody has to be told.
inline bool shows(const Pose& now, const Pose& pose)
{
    for (int c = 0; c < channel_count; ++c)
        if (const auto channel = Channel(c); pose.has(channel) && now.has(channel))
            if (!(now.value(channel) == pose.value(channel)))
                return false;
    return true;
}

} // namespace tarn
