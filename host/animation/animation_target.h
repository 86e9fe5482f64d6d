#pragma once

#include "core/field_key.h"
#include "pose.h"

#include <QString>

#include <span>

class CTCommandScript;
class CTimebar;

namespace tarn {

class ModelObject;
struct ObjectState;

/// Kinds of timer objects; the numbers are saved.
enum class TimerObjectType : quint8 { Script, Model, Control, Dialog, Camera, Panel, Skeleton, AniModel };
constexpr int timer_object_type_count = 8;

/// The objects of one kind as timebars see them. The scene that has such objects brings one.
class AnimationTarget {
public:
    virtual ~AnimationTarget() = default;
    virtual bool takes(const ModelObject& object) const = 0;
    /// What a state of an object that it takes has in every channel that there is for it.
    virtual Pose pose(const ObjectState& state) const = 0;
    /// The attributes that the channel drives; none for a channel that the objects do not have.
    virtual std::span<const FieldKey> fields(Channel channel) const = 0;
    /// Whether the objects can follow something that leads along a way, as a path of the world does.
    virtual bool can_follow(const ModelObject&) const { return false; }
    /// Has `pose`, which has a share of the path, the place and turn to which the path leads: with `along` in its direction,
    /// turned about that.
    virtual void follow(const ModelObject&, bool, Pose&) const {}
    /// The other way: what is nearest on the path instead of the place that `pose` has.
    virtual void find_on_path(const ModelObject&, Pose&) const {}
    /// Has the object show the channels that `pose` has, and leaves the others. Writes are writes to what is shown.
    virtual void show(ModelObject& object, const Pose& pose) = 0;
};

/// Hears what happens while timebars play. It may change the model.
class AnimationListener {
public:
    virtual ~AnimationListener() = default;
    /// Time came by a script key; the function need not exist.
    virtual void script_key_passed(CTimebar& bar, float time, const QString& function) = 0;
    /// A frame of a bar with a script object was shown, whose variables have what they have at that time; not when none of
    /// them has another value than in the frame before.
    virtual void command_due(CTCommandScript& object) = 0;
    virtual void bar_ended(CTimebar& bar) = 0;
};

} // namespace tarn
