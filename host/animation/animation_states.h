#pragma once

#include "animation_target.h"
#include "core/object_state.h"
#include "key_track.h"

#include <QMap>

namespace tarn {

/// The scene's animation as a whole.
struct AnimationState : StateOf<AnimationState> {
    IdList bars; ///< the one higher in the list wins where two drive one channel
    /// What the author changed of driven objects and did not record yet, by their ids. Not saved.
    QMap<quint32, Pose> unrecorded;

    static const FieldTable& field_table();
};

struct TimebarState : StateOf<TimebarState> {
    static constexpr int seconds_mode = 1;
    static constexpr int frames_mode = 2;
    static constexpr int max_name = 100;

    QString name;
    float total_length = 10; ///< seconds
    int play_mode = 0;       ///< PlayMode
    int display_mode = seconds_mode;
    int frame_rate = 25; ///< a second; below 1 counts as 1
    bool auto_play = false;
    float loop_from = 0; ///< seconds; what repeats while the author plays, nothing unless it ends behind its begin
    float loop_to = 0;
    QString end_function; ///< runs in a preview when the bar has come to its end; there need not be one of that name
    IdList objects;
    IdList script_keys;
    IdList marks;

    static const FieldTable& field_table();
};

struct TimerObjectState : StateOf<TimerObjectState> {
    explicit TimerObjectState(int object_type = 0) : type(object_type) {}

    int type;                        ///< TimerObjectType
    ObjectRef target;                ///< kept when the object is gone
    quint32 flags = chosen_channels; ///< bits of the channels that take part
    ObjectRef path;                  ///< that the object follows; none, or kept when it is gone
    bool along_path = false;         ///< it turns into the path's direction
    bool by_camera = false;          ///< of a skeleton: it stands where the view looks while the interface runs
    // A script object's command
    QString function;
    QString arguments; ///< as they were written behind the function's name
    IdList variables;

    static const FieldTable& field_table();
};

struct VarState : StateOf<VarState> {
    static constexpr int no_channel = -1;

    QString name;
    int channel = no_channel; ///< Channel whose keys a variable of the system holds
    KeyTrack keys;

    static const FieldTable& field_table();
};

/// A time at which a function runs.
struct ScriptKeyState : StateOf<ScriptKeyState> {
    float time = 0;
    QString function; ///< there need not be one of that name

    static const FieldTable& field_table();
};

/// A marker of the author's; with a length, a section.
struct TimeMarkState : StateOf<TimeMarkState> {
    QString name;
    float time = 0;
    float length = 0;
    quint32 color = 0xffe0a030; ///< ARGB

    static const FieldTable& field_table();
};

/// What a running timebar has and nobody saves, as attributes that can be read. Its value is the timebar's to give.
struct CurrentTimeAccess {
    using Type = float;
    float get(const TimebarState&) const { return 0; }
    void set(TimebarState&, float) const {}
    bool is_default(const TimebarState&) const { return true; }
    void copy(const TimebarState&, TimebarState&) const {}
};
struct PlayingAccess {
    using Type = bool;
    bool get(const TimebarState&) const { return false; }
    void set(TimebarState&, bool) const {}
    bool is_default(const TimebarState&) const { return true; }
    void copy(const TimebarState&, TimebarState&) const {}
};

/// The type of a variable's values.
struct VarTypeAccess {
    using Type = int;
    int get(const VarState& s) const { return int(s.keys.type()); }
    void set(VarState&, int) const {}
    bool is_default(const VarState& s) const { return get(s) == 0; }
    void copy(const VarState&, VarState&) const {}
};

} // namespace tarn
