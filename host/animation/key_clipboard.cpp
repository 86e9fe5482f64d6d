#include "key_clipboard.h"

#include "animation_scene.h"
#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/language.h"
#include "t_var.h"
#include "timer_object.h"

#include <algorithm>
#include <tuple>

namespace tarn {

namespace {

constexpr int text_format = 1;                       ///< newer ones are refused
constexpr qsizetype max_text = qsizetype(256) << 20; ///< bytes
constexpr std::size_t max_tracks = 100'000;

/// Keys of one variable, and where they come from.
struct CopiedTrack {
    int type = 0;       ///< TimerObjectType
    quint32 target = 0; ///< of the timer object
    QString object;     ///< its name, which tells script objects apart
    int channel = VarState::no_channel;
    QString name;
    KeyTrack keys;

    auto source() const { return std::tie(type, target, object); }
    QString title() const
    {
        if (channel == VarState::no_channel)
            return name;
        const ChannelRow& row = channel_row(Channel(channel));
        return lang(row.chinese, row.english);
    }
};

std::vector<Key> keys_of(const KeyTrack& track, const std::vector<float>& times)
{
    std::vector<Key> keys;
    for (const float time : times)
        if (const qsizetype key = track.find(time); key >= 0)
            keys.push_back(track.key(key));
    return keys;
}

Status read_track(JsonCursor& cursor, CopiedTrack& track)
{
    auto status = cursor.each_member([&](std::string_view key, JsonCursor& value) -> Status {
        if (key == "kind")
            return value.read(track.type);
        if (key == "target")
            return value.read(track.target);
        if (key == "object")
            return value.read(track.object);
        if (key == "channel")
            return value.read(track.channel);
        if (key == "name")
            return value.read(track.name);
        if (key == "keys")
            return track.keys.read(value);
        return value.fail(lang(u"这里应为关键帧", u"keys are expected here"));
    });
    if (!status)
        return status;
    const bool has_channel = track.channel >= 0 && track.channel < channel_count;
    if (track.type < 0 || track.type >= timer_object_type_count
        || (!has_channel && track.channel != VarState::no_channel)
        || (has_channel && channel_row(Channel(track.channel)).type != track.keys.type()) || track.keys.is_empty())
        return cursor.fail(lang(u"关键帧不属于任何变量", u"the keys belong to no variable"));
    track.name.truncate(TimebarState::max_name);
    return {};
}

Status read_tracks(const QByteArray& text, std::vector<CopiedTrack>& tracks)
{
    if (text.size() > max_text)
        return Status::error(lang(u"关键帧过多", u"there are too many keys"));
    int format = 0;
    auto status
        = JsonText(text, lang(u"剪贴板", u"clipboard")).each_member([&](std::string_view key, JsonCursor& value) {
              if (key == "format")
                  return value.read(format);
              if (key != "tracks")
                  return value.fail(lang(u"这里应为关键帧", u"keys are expected here"));
              return value.each_element([&](JsonCursor& element) {
                  if (tracks.size() == max_tracks)
                      return element.fail(lang(u"关键帧过多", u"there are too many keys"));
                  return read_track(element, tracks.emplace_back());
              });
          });
    if (status && format != text_format)
        return Status::error(lang(u"剪贴板中的内容不是此版本的关键帧", u"the clipboard holds no keys of this version"));
    return status;
}

/// Gives the variable the keys at the times that `moved` tells, and answers where they stand; none out of range.
std::vector<float> put_keys(CTVar& variable, std::vector<Key> keys, const std::function<float(float)>& moved)
{
    for (Key& key : keys)
        key.time = moved(key.time);
    std::erase_if(keys, [](const Key& key) { return !(key.time >= 0 && key.time <= max_time); });
    std::vector<float> times;
    for (const Key& key : keys)
        times.push_back(key.time);
    keep_apart(times);
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys[i].time = times[i];
    variable.edit_keys({}, [&](KeyTrack& track) { track.edit({}, keys); });
    return times;
}

/// Finds what copied keys go to in a timebar.
class Destination {
public:
    Destination(CTimebar& bar, const std::vector<CopiedTrack>& tracks) : m_bar(bar), m_is_single(tracks.size() == 1)
    {
        m_is_of_one = std::all_of(tracks.begin(), tracks.end(),
                                  [&](const CopiedTrack& track) { return track.source() == tracks.front().source(); });
    }

    /// Null, and `why`, where the keys do not fit.
    CTVar* variable(const CopiedTrack& track, QString& why) const
    {
        CTimerObject* object = m_is_of_one ? m_bar.current_object() : nullptr;
        CTVar* current = object && m_is_single ? object->current_variable() : nullptr;
        if (current && current->type() == track.keys.type())
            return current;
        if (!object)
            object = like(track);
        if (!object) {
            why = lang(u"对象不存在", u"the object is not there");
            return nullptr;
        }
        return variable_of(*object, track, why);
    }

private:
    CTimerObject* like(const CopiedTrack& track) const
    {
        const bool is_script = track.type == int(TimerObjectType::Script);
        for (CTimerObject* object : m_bar.objects())
            if (int(object->type()) == track.type
                && (is_script ? object->name() == track.object : object->target().id == track.target))
                return object;
        const ModelObject* target = is_script ? nullptr : m_bar.document().find(track.target);
        if (!target || !target->is_attached() || int(m_bar.scene().type_for(*target)) != track.type)
            return nullptr;
        return m_bar.create_object(TimerObjectType(track.type), {track.target});
    }
    CTVar* variable_of(CTimerObject& object, const CopiedTrack& track, QString& why) const
    {
        CTVar* found = nullptr;
        if (track.channel == VarState::no_channel) {
            found = object.find_variable(track.name, track.keys.type());
            return found ? found : object.create_var(track.keys.type(), track.name);
        }
        const auto channel = Channel(track.channel);
        found = object.channel_variable(channel);
        const AnimationTarget* kind = m_bar.scene().target_kind(object.type());
        if (!found && kind && !kind->fields(channel).empty())
            found = object.create_channel_var(channel);
        if (!found)
            why = lang(u"对象没有此通道", u"the object does not have it");
        return found;
    }

    CTimebar& m_bar;
    bool m_is_single;
    bool m_is_of_one;
};

} // namespace

QByteArray copy_keys(const KeySelection& keys)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(text_format);
    writer.key("tracks");
    writer.begin_array();
    for (const auto& [variable, times] : keys) {
        KeyTrack track(variable->type());
        track.edit({}, keys_of(variable->keys(), times));
        if (track.is_empty())
            continue;
        const CTimerObject& object = *variable->object();
        writer.new_line();
        writer.begin_object();
        writer.key("kind");
        writer.value(int(object.type()));
        writer.key("target");
        writer.value(object.target().id);
        writer.key("object");
        writer.value(object.name());
        writer.key("channel");
        writer.value(variable->channel() ? int(*variable->channel()) : VarState::no_channel);
        writer.key("name");
        writer.value(variable->name());
        writer.key("keys");
        track.write(writer);
        writer.end_object();
    }
    writer.end_array();
    writer.end_object();
    return QByteArray::fromStdString(writer.text());
}

QByteArray cut_keys(CTimebar& bar, const KeySelection& keys)
{
    const UserAction action(bar.journal(), lang(u"剪切关键帧", u"Cut Keys"));
    const QByteArray text = copy_keys(keys);
    bar.remove_keys(keys);
    return text;
}

Result<PastedKeys> paste_keys(CTimebar& bar, const QByteArray& text, float at, const SnapGrid& grid)
{
    std::vector<CopiedTrack> tracks;
    if (auto status = read_tracks(text, tracks); !status)
        return status;
    const UserAction action(bar.journal(), lang(u"粘贴关键帧", u"Paste Keys"));
    float first = max_time;
    for (const CopiedTrack& track : tracks)
        first = std::min(first, track.keys.first_time());
    const auto moved = [&](float time) {
        const float wanted = at + (time - first);
        return wanted <= max_time ? snap(wanted, grid) : wanted;
    };
    PastedKeys pasted;
    const Destination destination(bar, tracks);
    for (const CopiedTrack& track : tracks) {
        QString why;
        CTVar* variable = destination.variable(track, why);
        if (!variable) {
            pasted.left_out << lang(u"%1（%2）：%3", u"%1 (%2): %3").arg(track.title(), track.object, why);
            continue;
        }
        std::vector<Key> keys;
        for (qsizetype i = 0; i < track.keys.size(); ++i)
            keys.push_back(track.keys.key(i));
        const std::vector<float> times = put_keys(*variable, std::move(keys), moved);
        if (qsizetype(times.size()) < track.keys.size())
            pasted.left_out << lang(u"%1：%2 个关键帧超出时间范围", u"%1: %2 keys would be out of range")
                                   .arg(track.title())
                                   .arg(track.keys.size() - qsizetype(times.size()));
        pasted.keys[variable] = times;
    }
    return pasted;
}

KeySelection duplicate_keys(CTimebar& bar, const KeySelection& keys, float offset, const SnapGrid& grid)
{
    const UserAction action(bar.journal(), lang(u"复制关键帧", u"Duplicate Keys"));
    const auto moved = [&](float time) {
        const float wanted = time + offset;
        return wanted >= 0 && wanted <= max_time ? snap(wanted, grid) : wanted;
    };
    KeySelection copies;
    for (const auto& [variable, times] : keys)
        copies[variable] = put_keys(*variable, keys_of(variable->keys(), times), moved);
    return copies;
}

} // namespace tarn
