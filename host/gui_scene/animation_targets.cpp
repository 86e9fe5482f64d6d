#include "animation_targets.h"

#include "gui_core/control_state.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

const ControlState& control_state(const ModelObject& object)
{
    return static_cast<const ControlState&>(object.shown_state());
}
const DialogState& dialog_state(const ModelObject& object)
{
    return static_cast<const DialogState&>(object.shown_state());
}

constexpr float farthest = 1e6f; ///< pixels, or degrees

float within_reach(const Pose& pose, Channel channel, int part, float least = -farthest)
{
    return std::clamp(pose.number(channel, part), least, farthest);
}
int whole_pixels(const Pose& pose, Channel channel, int part, float least = -farthest)
{
    return int(std::lround(within_reach(pose, channel, part, least)));
}

/// Whether the object shows `pose` already: then nobody has to be told.
bool shows(const Pose& now, const Pose& pose)
{
    for (int c = 0; c < channel_count; ++c)
        if (const auto channel = Channel(c); pose.has(channel) && now.has(channel))
            if (!(now.value(channel) == pose.value(channel)))
                return false;
    return true;
}

} // namespace

bool ControlTarget::takes(const ModelObject& object) const
{
    return dynamic_cast<const CDXUTControl*>(&object);
}

Pose ControlTarget::pose(const ModelObject& object) const
{
    const ControlState& s = control_state(object);
    Pose pose;
    pose.set_vec(Channel::Position, s.x, s.y);
    pose.set_vec(Channel::Rotation, 0, 0, s.extras->rotation);
    pose.set_vec(Channel::Scale, s.width, s.height);
    pose.set_whole(Channel::Show, s.visible);
    return pose;
}

void ControlTarget::show(ModelObject& object, const Pose& pose)
{
    if (shows(this->pose(object), pose))
        return;
    object.write<ControlState>([&](ControlState& s) {
        if (pose.has(Channel::Position)) {
            s.x = within_reach(pose, Channel::Position, 0);
            s.y = within_reach(pose, Channel::Position, 1);
        }
        if (pose.has(Channel::Rotation))
            s.extras.edit([&](ControlExtras& extras) { extras.rotation = within_reach(pose, Channel::Rotation, 2); });
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

Pose DialogTarget::pose(const ModelObject& object) const
{
    const DialogState& s = dialog_state(object);
    Pose pose;
    pose.set_vec(Channel::Position, float(s.x), float(s.y));
    pose.set_vec(Channel::Scale, float(s.width), float(s.height));
    pose.set_whole(Channel::Show, s.visible);
    return pose;
}

void DialogTarget::show(ModelObject& object, const Pose& pose)
{
    if (shows(this->pose(object), pose))
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
        if (pose.has(Channel::Show))
            s.visible = pose.shows();
    });
}

} // namespace tarn
