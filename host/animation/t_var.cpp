#include "t_var.h"

#include "anim_time.h"
#include "animation_scene.h"
#include "core/field.h"
#include "core/language.h"
#include "ease.h"
#include "timer_object.h"

#include <algorithm>

using namespace tarn;

namespace {

/// One number of a value; of a colour, its bytes as red, green, blue, alpha.
float number_of(const KeyValue& value, int part)
{
    switch (value.type()) {
    case VarType::Int: return float(value.as_int());
    case VarType::Color: {
        constexpr int shifts[] = {16, 8, 0, 24};
        return float(value.as_color() >> shifts[part] & 0xff);
    }
    case VarType::Float:
    case VarType::Vec:
    case VarType::Mat: break;
    }
    return value.part(part);
}

} // namespace

CTVar::CTVar(CAnimationScene& scene, StatePtr state) : ModelObject(scene.document(), std::move(state)), m_scene(scene)
{
}

QString CTVar::get_type_name(int words) const
{
    static constexpr const char16_t* chinese[] = {u"浮点数", u"整数", u"坐标", u"颜色", u"矩阵"};
    static constexpr const char16_t* english[] = {u"Number", u"Whole Number", u"Vector", u"Color", u"Matrix"};
    static constexpr const char* short_names[] = {"FLOAT", "INT", "VEC", "DWORD", "MAT"};
    const int index = int(type());
    return words ? lang(chinese[index], english[index]) : QString::fromLatin1(short_names[index]);
}

std::optional<Channel> CTVar::channel() const
{
    const int channel = var_state().channel;
    return channel == VarState::no_channel ? std::nullopt : std::optional(Channel(channel));
}

bool CTVar::steps() const
{
    const auto driven = channel();
    return driven && channel_row(*driven).steps;
}

CTimerObject* CTVar::object() const
{
    return static_cast<CTimerObject*>(parent());
}

void CTVar::state_changed()
{
    m_scene.content_changed();
}

float CTVar::get_derivative(float time, int part) const
{
    if (keys().is_empty() || steps())
        return 0;
    const KeySpan span = keys().span_at(time);
    if (!span.moves)
        return 0;
    const float way = number_of(keys().value(span.key + 1), part) - number_of(keys().value(span.key), part);
    return way / (span.end - span.begin) * Ease::slope(span.share(time), span.bend);
}

bool CTVar::edit_keys(const QString& name, const std::function<void(KeyTrack&)>& edit)
{
    const UserAction action(journal(), name);
    KeyTrack track = keys();
    edit(track);
    return set_keys(std::move(track));
}

bool CTVar::set_keys(KeyTrack keys)
{
    return change<&VarState::keys>(std::move(keys));
}

bool CTVar::add_key(float time)
{
    return keys().find(time) < 0 && set_key_value(time, value_at(time));
}

bool CTVar::set_key_value(float time, const KeyValue& value)
{
    if (value.type() != type() || !(time >= 0 && time <= max_time))
        return false;
    return edit_keys(lang(u"关键帧的值", u"Key Value"), [&](KeyTrack& track) {
        const qsizetype present = track.find(time);
        present < 0 ? track.set_key({.time = time, .value = value}) : track.set_value(present, value);
    });
}

bool CTVar::remove_key(float time)
{
    const qsizetype key = keys().find(time);
    return key > 0 && edit_keys(lang(u"删除关键帧", u"Delete Key"), [&](KeyTrack& track) {
               track.edit({&key, 1}, {});
           });
}

bool CTVar::set_key_ease(float time, float ease)
{
    const qsizetype key = keys().find(time);
    if (key < 0 || !(ease == ease))
        return false;
    return edit_keys(lang(u"松紧值", u"Ease"),
                     [&](KeyTrack& track) { track.set_ease(key, std::clamp(ease, -Ease::limit, Ease::limit)); });
}

float CTVar::get_ease(float time) const
{
    const qsizetype key = keys().find(time);
    return key < 0 ? 0 : keys().ease(key);
}

bool CTVar::set_key_group(float time, int group)
{
    const qsizetype key = keys().find(time);
    return key >= 0 && edit_keys(lang(u"关键帧的组", u"Key Group"), [&](KeyTrack& track) {
               track.set_group(key, std::clamp(group, Key::no_group, Key::max_group));
           });
}

void CTVar::update_value()
{
    m_scene.show_frame();
}
