#include "animation_states.h"

#include "anim_time.h"
#include "core/field.h"
#include "script/config_scene.h"

namespace tarn {

namespace {

constexpr double max_frame_rate = 1000;
constexpr int max_arguments = 10'000;

FieldRules worked_out()
{
    return {.read_only = true, .derived = true};
}

} // namespace

const FieldTable& AnimationState::field_table()
{
    using S = AnimationState;
    static const FieldTable table(nullptr, field<S, &S::bars>("timebar_ids", {}, children()));
    return table;
}

const FieldTable& TimebarState::field_table()
{
    using S = TimebarState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::name>("name", {}, max_length(S::max_name)),
        field<S, &S::total_length>("total_length", 10.f, range(0, double(max_time))),
        computed_field<S, CurrentTimeAccess>("current_time", worked_out()),
        computed_field<S, PlayingAccess>("playing", worked_out()), field<S, &S::play_mode>("play_mode", 0, range(0, 4)),
        field<S, &S::display_mode>("display_mode", S::seconds_mode, range(S::seconds_mode, S::frames_mode)),
        field<S, &S::frame_rate>("frame_rate", 25, range(0, max_frame_rate)),
        field<S, &S::auto_play>("auto_play", false),
        field<S, &S::loop_from>("loop_from", 0.f, range(0, double(max_time))),
        field<S, &S::loop_to>("loop_to", 0.f, range(0, double(max_time))),
        field<S, &S::end_function>("end_function", {}, {.max_length = IFunc::max_name, .function = true}),
        field<S, &S::objects>("object_ids", {}, children()),
        field<S, &S::script_keys>("script_key_ids", {}, children()), field<S, &S::marks>("mark_ids", {}, children()));
    return table;
}

const FieldTable& TimerObjectState::field_table()
{
    using S = TimerObjectState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::type>("type", -1, read_only()),
        field<S, &S::parent>("timebar", {}, read_only()), field<S, &S::target>("target"),
        field<S, &S::flags>("flags", chosen_channels, range(0, double(chosen_channels))), field<S, &S::path>("path"),
        field<S, &S::along_path>("along_path", false), field<S, &S::by_camera>("by_camera", false),
        field<S, &S::function>("function", {}, {.max_length = IFunc::max_name, .function = true}),
        field<S, &S::arguments>("arguments", {}, max_length(max_arguments)),
        field<S, &S::variables>("variable_ids", {}, children()));
    return table;
}

const FieldTable& VarState::field_table()
{
    using S = VarState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::parent>("object", {}, read_only()),
        field<S, &S::name>("name", {}, max_length(TimebarState::max_name)),
        field<S, &S::channel>("channel", S::no_channel,
                              {.minimum = S::no_channel, .maximum = channel_count - 1, .read_only = true}),
        computed_field<S, VarTypeAccess>("type", worked_out()), field<S, &S::keys>("keys", KeyTrack()));
    return table;
}

const FieldTable& ScriptKeyState::field_table()
{
    using S = ScriptKeyState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::parent>("timebar", {}, read_only()),
        field<S, &S::time>("time", 0.f, {.minimum = 0, .maximum = double(max_time), .read_only = true}),
        field<S, &S::function>("function", {}, {.max_length = IFunc::max_name, .function = true}));
    return table;
}

const FieldTable& TimeMarkState::field_table()
{
    using S = TimeMarkState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::parent>("timebar", {}, read_only()),
        field<S, &S::name>("name", {}, max_length(TimebarState::max_name)),
        field<S, &S::time>("time", 0.f, range(0, double(max_time))),
        field<S, &S::length>("length", 0.f, range(0, double(max_time))), field<S, &S::color>("color", 0xffe0a030u));
    return table;
}

} // namespace tarn
