#include "pose.h"

#include <algorithm>

namespace tarn {

const ChannelRow& channel_row(Channel channel)
{
    static constexpr ChannelRow rows[] = {
        {VarType::Vec, false, 0, "position", u"位置", u"Position"},
        {VarType::Vec, false, 3, "rotation", u"旋转", u"Rotation"},
        {VarType::Vec, false, 6, "scale", u"缩放", u"Scale"},
        {VarType::Color, false, 9, "color", u"颜色", u"Colour"},
        {VarType::Float, false, 10, "transparency", u"透明度", u"Transparency"},
        {VarType::Int, true, 11, "show", u"显示/隐藏", u"Show/Hide"},
        {VarType::Float, false, 12, "path_share", u"路径百分比", u"Share of the Path"},
        {VarType::Float, false, 13, "path_turn", u"路径旋转", u"Turn about the Path"},
        {VarType::Int, true, 14, "action", u"动作", u"Action"},
        {VarType::Int, true, 15, "loops", u"循环次数", u"Loops"},
        {VarType::Float, false, 16, "field_of_view", u"视野角度", u"Field of View"},
        {VarType::Float, false, 17, "action_time", u"动作时间", u"Time of the Action"},
    };
    return rows[int(channel)];
}

KeyValue Pose::value(Channel channel) const
{
    const ChannelRow& row = channel_row(channel);
    return KeyValue(row.type, std::span(m_words).subspan(row.word, std::size_t(KeyValue::words_of(row.type))));
}

void Pose::set(Channel channel, const KeyValue& value)
{
    std::copy(value.words().begin(), value.words().end(), m_words.begin() + channel_row(channel).word);
    m_channels |= bit(channel);
}

void Pose::take(const Pose& other)
{
    for (int c = 0; c < channel_count; ++c)
        if (const auto channel = Channel(c); other.has(channel))
            set(channel, other.value(channel));
}

} // namespace tarn
