#include "animation_targets.h"

#include "channel_fields.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr float farthest = 1e6f; ///< pixels, or degrees
constexpr quint32 rare_channels = bit(Channel::Rotation) | bit(Channel::Color) | bit(Channel::Transparency);

float within_reach(const Pose& pose, Channel channel, int part, float least = -farthest)
{
    return std::clamp(pose.number(channel, part), least, farthest);
}
int whole_pixels(const Pose& pose, Channel channel, int part, float least = -farthest)
{
    return int(std::lround(within_reach(pose, channel, part, least)));
}

} // namespace

bool ControlTarget::takes(const ModelObject& object) const
{
    return dynamic_cast<const CDXUTControl*>(&object);
}

std::span<const FieldKey> ControlTarget::fields(Channel channel) const
{
    using S = ControlState;
    using E = ControlExtras;
    static const ChannelFields rows[] = {
        {Channel::Position, {key<&S::x>, key<&S::y>}},       {Channel::Rotation, {key<&E::rotation>}},
        {Channel::Scale, {key<&S::width>, key<&S::height>}}, {Channel::Color, {key<&E::color>}},
        {Channel::Transparency, {key<&E::transparency>}},    {Channel::Show, {key<&S::visible>}}};
    return fields_of(rows, channel);
}

Pose ControlTarget::pose(const ObjectState& state) const
{
    const auto& s = static_cast<const ControlState&>(state);
    Pose pose;
    pose.set_vec(Channel::Position, s.x, s.y);
    pose.set_vec(Channel::Rotation, 0, 0, s.extras->rotation);
    pose.set_vec(Channel::Scale, s.width, s.height);
    pose.set_color(s.extras->color);
    pose.set_number(Channel::Transparency, s.extras->transparency);
    pose.set_whole(Channel::Show, s.visible);
    return pose;
}

void ControlTarget::show(ModelObject& object, const Pose& pose)
{
    if (shows(this->pose(object.shown_state()), pose))
        return;
    object.write<ControlState>([&](ControlState& s) {
        if (pose.has(Channel::Position)) {
            s.x = within_reach(pose, Channel::Position, 0);
            s.y = within_reach(pose, Channel::Position, 1);
        }
        if (pose.channels() & rare_channels)
            s.extras.edit([&](ControlExtras& extras) {
                if (pose.has(Channel::Rotation))
                    extras.rotation = within_reach(pose, Channel::Rotation, 2);
                if (pose.has(Channel::Color))
                    extras.color = pose.color();
                if (pose.has(Channel::Transparency))
                    extras.transparency = std::clamp(pose.number(Channel::Transparency), 0.f, 1.f);
            });
        if (pose.has(Channel::Scale)) {
            s.width = within_reach(pose, Channel::Scale, 0, 0);
            s.height = within_reach(pose, Channel::Scale, 1, 0);
        }
        if (pose.has(Channel::Show))
            s.visible = pose.shows();
    });
}

bool DialogTarget::takes(const ModelObject& object) const
{
    const auto* dialog = dynamic_cast<const CDXUTDialog*>(&object);
    return dialog && !dialog->is_root();
}

std::span<const FieldKey> DialogTarget::fields(Channel channel) const
{
    using S = DialogState;
    static const ChannelFields rows[] = {{Channel::Position, {key<&S::x>, key<&S::y>}},
                                         {Channel::Scale, {key<&S::width>, key<&S::height>}},
                                         {Channel::Color, {key<&S::color>}},
                                         {Channel::Transparency, {key<&S::transparency>}},
                                         {Channel::Show, {key<&S::visible>}}};
    return fields_of(rows, channel);
}

Pose DialogTarget::pose(const ObjectState& state) const
{
    const auto& s = static_cast<const DialogState&>(state);
    Pose pose;
    pose.set_vec(Channel::Position, float(s.x), float(s.y));
    pose.set_vec(Channel::Scale, float(s.width), float(s.height));
    pose.set_color(s.color);
    pose.set_number(Channel::Transparency, s.transparency);
    pose.set_whole(Channel::Show, s.visible);
    return pose;
}

void DialogTarget::show(ModelObject& object, const Pose& pose)
{
    if (shows(this->pose(object.shown_state()), pose))
        return;
    object.write<DialogState>([&](DialogState& s) {
        if (pose.has(Channel::Position)) {
            s.x = whole_pixels(pose, Channel::Position, 0);
            s.y = whole_pixels(pose, Channel::Position, 1);
        }
        if (pose.has(Channel::Scale)) {
            s.width = whole_pixels(pose, Channel::Scale, 0, 0);
            s.height = whole_pixels(pose, Channel::Scale, 1, 0);
        }
        if (pose.has(Channel::Color))
            s.color = pose.color();
        if (pose.has(Channel::Transparency))
            s.transparency = std::clamp(pose.number(Channel::Transparency), 0.f, 1.f);
        if (pose.has(Channel::Show))
            s.visible = pose.shows();
    });
}

} // namespace tarn
