#include "animation_program.h"

#include "animation_scene.h"
#include "ease.h"
#include "t_var.h"
#include "timebar.h"
#include "timer_object.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

/// What a path gives an object that has those of its channels driven.
quint32 led_channels(quint32 channels, bool along)
{
    const bool turns = along || (channels & bit(Channel::PathTurn));
    return bit(Channel::Position) | (turns ? bit(Channel::Rotation) : 0);
}

} // namespace

AnimationProgram::AnimationProgram(const CTimebar& bar, Covered& covered)
{
    for (const CTimerObject* object : bar.objects()) {
        AnimationTarget* kind = bar.scene().target_kind(object->type());
        ModelObject* target = object->target_object();
        if (kind && target && !bar.scene().is_silent(*object))
            add(*object, *kind, *target, covered);
    }
}

AnimationProgram::AnimationProgram(const CTimerObject& object)
{
    AnimationTarget* kind = object.timebar()->scene().target_kind(object.type());
    Covered covered;
    if (ModelObject* target = kind ? object.target_object() : nullptr)
        add(object, *kind, *target, covered);
}

void AnimationProgram::add(const CTimerObject& object, AnimationTarget& kind, ModelObject& target, Covered& covered)
{
    quint32 channels = 0;
    quint32& taken = covered[target.id()];
    const bool can_be_led = !(taken & bit(Channel::Position));
    for (const CTVar* variable : object.variables()) {
        const auto channel = variable->channel();
        if (!channel || variable->keys().is_empty() || !object.is_on(*channel) || (taken & bit(*channel)))
            continue;
        const ChannelRow& row = channel_row(*channel);
        if (variable->type() != row.type)
            continue;
        taken |= bit(*channel);
        channels |= bit(*channel);
        if (*channel == Channel::Action)
            channels |= bit(Channel::ActionTime);
        Track& track = m_tracks.emplace_back();
        track.type = row.type;
        track.steps = row.steps;
        track.word = row.word;
        m_keys.push_back(variable->keys());
    }
    if (channels == 0)
        return;
    Object& added = m_objects.emplace_back(Object{&kind, &target, m_tracks.size(), channels});
    if (can_be_led && (channels & bit(Channel::PathShare))) {
        added.path = object.path_object();
        added.along_path = object.follows_direction();
    }
    const quint32 led = added.path ? led_channels(channels, added.along_path) : 0;
    taken |= led;
    m_channels[target.id()] |= channels | led;
}

bool AnimationProgram::follows(const ModelObject& path) const
{
    return std::any_of(m_objects.begin(), m_objects.end(), [&](const Object& object) { return object.path == &path; });
}

/// Seconds since the key before; 0 before the first one.
float AnimationProgram::time_in_span(const Track& track, float time)
{
    return std::isfinite(track.begin) ? std::max(time - track.begin, 0.f) : 0;
}

/// Finds the span that holds `time` and what is needed to work out values in it.
void AnimationProgram::enter_span(std::size_t index, float time)
{
    Track& track = m_tracks[index];
    const KeyTrack& keys = m_keys[index];
    const KeySpan span = keys.span_at(time);
    const KeyValue from = keys.value(std::max<qsizetype>(span.key, 0));
    track.begin = span.begin;
    track.end = span.end;
    track.moves = span.moves && !track.steps;
    const KeyValue to = track.moves ? keys.value(span.key + 1) : from;
    track.scale = track.moves ? span.scale() : 0;
    track.bend = track.moves ? span.bend : 0;
    track.from = from.words()[0];
    track.to = to.words()[0];
    for (int part = 0; part < (track.type == VarType::Vec ? 3 : 1); ++part) {
        track.base[part] = from.part(part);
        track.delta[part] = to.part(part) - from.part(part);
    }
}

void AnimationProgram::evaluate(std::size_t begin, const Object& object, float time, Pose& pose)
{
    pose.set_channels(object.channels);
    quint32* words = pose.words();
    for (std::size_t i = begin; i < object.end; ++i) {
        if (!(time >= m_tracks[i].begin && time < m_tracks[i].end))
            enter_span(i, time);
        const Track& track = m_tracks[i];
        const float way = Ease::way((time - track.begin) * track.scale, track.bend);
        quint32* out = words + track.word;
        switch (track.type) {
        case VarType::Vec:
            out[2] = std::bit_cast<quint32>(track.base[2] + way * track.delta[2]);
            out[1] = std::bit_cast<quint32>(track.base[1] + way * track.delta[1]);
            [[fallthrough]];
        case VarType::Float: out[0] = std::bit_cast<quint32>(track.base[0] + way * track.delta[0]); break;
        case VarType::Color: *out = track.moves ? mix_color(track.from, track.to, way) : track.from; break;
        case VarType::Int:
            if (track.word == channel_row(Channel::Action).word)
                words[channel_row(Channel::ActionTime).word] = std::bit_cast<quint32>(time_in_span(track, time));
            [[fallthrough]];
        case VarType::Mat: *out = track.from; break; // the channels of whole numbers step
        }
    }
}

void AnimationProgram::show(float time, const QMap<quint32, Pose>& unrecorded)
{
    std::size_t begin = 0;
    Pose pose;
    for (const Object& object : m_objects) {
        evaluate(begin, object, time, pose);
        if (object.path)
            object.kind->follow(*object.path, object.along_path, pose);
        begin = object.end;
        if (!unrecorded.isEmpty())
            if (const auto changed = unrecorded.constFind(object.target->id()); changed != unrecorded.constEnd())
                pose.take(*changed);
        object.kind->show(*object.target, pose);
    }
}

Pose AnimationProgram::pose_at(quint32 id, float time)
{
    Pose all;
    std::size_t begin = 0;
    for (const Object& object : m_objects) {
        if (object.target->id() == id) {
            Pose pose;
            evaluate(begin, object, time, pose);
            if (object.path)
                object.kind->follow(*object.path, object.along_path, pose);
            all.take(pose);
        }
        begin = object.end;
    }
    return all;
}

} // namespace tarn
