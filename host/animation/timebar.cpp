#include "timebar.h"

#include "animation_scene.h"
#include "core/field.h"
#include "core/language.h"
#include "ease.h"
#include "key_drag.h"
#include "t_var.h"
#include "timer_object.h"

#include <algorithm>
#include <span>

using namespace tarn;

CTimeMark::CTimeMark(CAnimationScene& scene, StatePtr state) : ModelObject(scene.document(), std::move(state)) {}

bool CTimeMark::set_span(float time, float length)
{
    const UserAction action(journal(), lang(u"移动标记", u"Move Mark"));
    const bool moved = change<&TimeMarkState::time>(time);
    return change<&TimeMarkState::length>(std::min(length, max_time - this->time())) || moved;
}

bool CTimeMark::set_name(const QString& name)
{
    const UserAction action(journal(), lang(u"标记的名称", u"Name of Mark"));
    return change<&TimeMarkState::name>(name);
}

CTimebar::CTimebar(CAnimationScene& scene, StatePtr state)
    : ModelObject(scene.document(), std::move(state)), m_scene(scene)
{
}

CTimebar::~CTimebar() = default;

Value CTimebar::value_in(const ObjectState& state, const FieldBase& field) const
{
    if (field.key() == key<CurrentTimeAccess{}>)
        return double(m_current_time);
    if (field.key() == key<PlayingAccess{}>)
        return m_playing;
    return ModelObject::value_in(state, field);
}

void CTimebar::state_changed()
{
    m_current_time = std::min(m_current_time, get_total_length());
    m_scene.content_changed();
}

void CTimebar::children_changed()
{
    m_objects.changed();
    m_listed_script_keys.changed();
    m_script_keys_stale = true;
    m_marks.changed();
    m_scene.content_changed();
}

bool CTimebar::set_total_length(float seconds)
{
    const UserAction action(journal(), lang(u"总时间", u"Total Length"), "length " + QByteArray::number(id()));
    return seconds >= 0 && change<&TimebarState::total_length>(seconds);
}

bool CTimebar::set_loop(float from, float to)
{
    const UserAction action(journal(), lang(u"循环区间", u"Loop Range"), "loop " + QByteArray::number(id()));
    const bool moved = change<&TimebarState::loop_from>(from);
    return change<&TimebarState::loop_to>(to) || moved;
}

// Timer objects ------------------------------------------------------------------------------------------------------

const std::vector<CTimerObject*>& CTimebar::objects() const
{
    return m_objects.get(document(), bar_state().objects);
}

CTimerObject* CTimebar::current_object() const
{
    const auto found = std::find_if(objects().begin(), objects().end(),
                                    [this](const CTimerObject* object) { return object->id() == m_current_object; });
    return found == objects().end() ? nullptr : *found;
}

void CTimebar::set_current_object(const CTimerObject* object)
{
    m_current_object = object ? object->id() : 0;
}

CTimerObject* CTimebar::create_object(TimerObjectType type, ObjectRef target)
{
    const UserAction action(journal(), lang(u"添加动画对象", u"Add Timer Object"));
    auto* state = new TimerObjectState(int(type));
    state->target = target;
    return static_cast<CTimerObject*>(m_scene.add(m_scene.object_kind(), state, *this, bar_state().objects.size()));
}

CTCommandScript* CTimebar::create_script_object()
{
    return static_cast<CTCommandScript*>(create_object(TimerObjectType::Script, {}));
}

void CTimebar::remove_obj(CTimerObject* object)
{
    if (!object || object->timebar() != this)
        return;
    const UserAction action(journal(), lang(u"删除动画对象", u"Remove Timer Object"));
    ModelObject* gone = object;
    document().detach(std::span(&gone, 1));
}

CTimerObject* CTimebar::SearchItemUsage(const ModelObject& object) const
{
    const auto found = std::find_if(objects().begin(), objects().end(), [&](const CTimerObject* candidate) {
        return candidate->type() != TimerObjectType::Script && candidate->target().id == object.id();
    });
    return found == objects().end() ? nullptr : *found;
}

std::vector<CTVar*> CTimebar::shown_variables() const
{
    std::vector<CTVar*> shown;
    const CTimerObject* current = current_object();
    if (current && current->current_variable())
        return {current->current_variable()};
    for (const CTimerObject* object : objects())
        if (!current || object == current)
            shown.insert(shown.end(), object->variables().begin(), object->variables().end());
    return shown;
}

// Keys ---------------------------------------------------------------------------------------------------------------

std::optional<float> CTimebar::get_next_action_key_frame(float time) const
{
    std::optional<float> next;
    for (const CTVar* variable : shown_variables()) {
        const KeyTrack& keys = variable->keys();
        qsizetype key = keys.first_from(time);
        key += key < keys.size() && keys.time(key) == time ? 1 : 0;
        if (key < keys.size())
            next = std::min(next.value_or(keys.time(key)), keys.time(key));
    }
    return next;
}

std::optional<float> CTimebar::get_pre_action_key_frame(float time) const
{
    std::optional<float> previous;
    for (const CTVar* variable : shown_variables())
        if (const qsizetype key = variable->keys().first_from(time) - 1; key >= 0)
            previous = std::max(previous.value_or(0), variable->keys().time(key));
    return previous;
}

bool CTimebar::change_key_time(KeyKind kind, float from, float to)
{
    if (!(to >= 0 && to <= max_time))
        return false;
    const UserAction action(journal(), lang(u"移动关键帧", u"Move Key"));
    if (kind == KeyKind::Script) {
        CScriptKey* key = script_key(from);
        if (!key || is_script_key_time(to))
            return false;
        key->write<ScriptKeyState>([to](ScriptKeyState& state) { state.time = to; });
        return true;
    }
    KeySelection keys;
    for (CTVar* variable : shown_variables())
        if (variable->is_movable(from) && to > variable->keys().first_time())
            keys[variable] = {from};
    return retime_keys(keys, [to](float) { return to; });
}

bool CTimebar::retime_keys(KeySelection& keys, const std::function<float(float)>& moved)
{
    const UserAction action(journal(), lang(u"移动关键帧", u"Move Keys"));
    KeyDrag drag(keys);
    const bool changed = drag.retime(moved);
    keys = drag.keys();
    return changed;
}

namespace {

/// Calls `edit` with the track and the chosen times of each variable. True if one of them changed.
template <class Edit>
bool edit_chosen_keys(const KeySelection& keys, Edit edit)
{
    bool changed = false;
    for (const auto& chosen : keys)
        changed |= chosen.first->edit_keys({}, [&](KeyTrack& track) { edit(track, chosen.second); });
    return changed;
}

} // namespace

bool CTimebar::remove_keys(const KeySelection& keys)
{
    const UserAction action(journal(), lang(u"删除关键帧", u"Delete Keys"));
    return edit_chosen_keys(keys, [](KeyTrack& track, const auto& times) {
        std::vector<qsizetype> gone;
        for (const float time : times)
            if (const qsizetype key = track.find(time); key > 0)
                gone.push_back(key);
        track.edit(gone, {});
    });
}

bool CTimebar::set_keys_ease(const KeySelection& keys, float ease)
{
    const UserAction action(journal(), lang(u"松紧值", u"Ease"));
    return edit_chosen_keys(keys, [ease](KeyTrack& track, const auto& times) {
        for (const float time : times)
            if (const qsizetype key = track.find(time); key >= 0)
                track.set_ease(key, std::clamp(ease, -Ease::limit, Ease::limit));
    });
}

bool CTimebar::set_key_group(const KeySelection& keys, int group)
{
    const UserAction action(journal(), lang(u"关键帧的组", u"Key Group"));
    return edit_chosen_keys(keys, [group](KeyTrack& track, const auto& times) {
        for (const float time : times)
            if (const qsizetype key = track.find(time); key >= 0)
                track.set_group(key, std::clamp(group, Key::no_group, Key::max_group));
    });
}

KeySelection CTimebar::keys_of_group(int group) const
{
    KeySelection found;
    for (CTVar* variable : shown_variables())
        variable->keys().each_time(0, max_time, [&](qsizetype key, float time) {
            if (variable->keys().group(key) == group)
                found[variable].push_back(time);
        });
    return found;
}

// Recording ----------------------------------------------------------------------------------------------------------

/// What is to be recorded of an object, and which of its channels this bar drives.
struct CTimebar::Recording {
    ModelObject* object;
    TimerObjectType type;
    Pose pose;
    quint32 driven = 0;
};

int CTimebar::record_selection(const std::vector<ModelObject*>& objects)
{
    const UserAction action(journal(), lang(u"记录关键帧", u"Record Key"));
    // All are looked at before a key of one changes what the others show.
    std::vector<Recording> recordings;
    for (ModelObject* object : objects) {
        Recording recording{object, m_scene.type_for(*object), {}};
        if (recording.type == TimerObjectType::Script)
            continue;
        for (int c = 0; c < channel_count; ++c)
            if (m_scene.driver_of(object->id(), Channel(c)) == this)
                recording.driven |= bit(Channel(c));
        recording.pose = m_scene.target_kind(recording.type)->pose(object->shown_state());
        recordings.push_back(recording);
    }
    int count = 0;
    for (const Recording& recording : recordings)
        count += record(recording);
    m_scene.show_frame();
    return count;
}

int CTimebar::record(const Recording& recording)
{
    const ModelObject& object = *recording.object;
    CTimerObject* timer = SearchItemUsage(object);
    if (!timer)
        timer = create_object(recording.type, {object.id()});
    if (!timer)
        return 0;
    set_current_object(timer);
    const Pose unrecorded = m_scene.unrecorded().value(object.id());
    Pose pose = recording.pose;
    pose.take(unrecorded);

    quint32 possible = 0;
    quint32 changed = 0;
    for (int c = 0; c < channel_count; ++c) {
        const auto channel = Channel(c);
        if (!pose.has(channel) || !timer->is_on(channel))
            continue;
        possible |= bit(channel);
        const CTVar* variable = timer->channel_variable(channel);
        const bool is_new = !variable || variable->keys().is_empty();
        // What the bar drives shows its keys, as exactly as the object can: only what the author changed is another.
        const bool differs = recording.driven & bit(channel)
            ? unrecorded.has(channel)
            : !is_new && !(pose.value(channel) == variable->value_at(m_current_time));
        if (is_new || differs)
            changed |= bit(channel);
    }
    const quint32 written = changed ? changed : possible;
    pose.set_channels(written);
    timer->record(m_current_time, pose);
    m_scene.forget_unrecorded(object.id(), written);
    return std::popcount(written);
}

// Marks --------------------------------------------------------------------------------------------------------------

const std::vector<CTimeMark*>& CTimebar::marks() const
{
    return m_marks.get(document(), bar_state().marks);
}

CTimeMark* CTimebar::mark_at(float time) const
{
    const auto found = std::find_if(marks().rbegin(), marks().rend(),
                                    [=](const CTimeMark* mark) { return mark->time() == time; });
    return found == marks().rend() ? nullptr : *found;
}

CTimeMark* CTimebar::create_mark(float time, float length, const QString& name)
{
    const UserAction action(journal(), lang(u"添加标记", u"Add Mark"));
    auto* state = new TimeMarkState;
    state->name = name.left(TimebarState::max_name);
    state->time = std::clamp(time, 0.f, max_time);
    state->length = std::clamp(length, 0.f, max_time - state->time);
    return static_cast<CTimeMark*>(m_scene.add(m_scene.mark_kind(), state, *this, bar_state().marks.size()));
}

void CTimebar::remove_mark(CTimeMark* mark)
{
    const UserAction action(journal(), lang(u"删除标记", u"Delete Mark"));
    remove_children({mark});
}

/// Of one kind.
void CTimebar::remove_children(std::vector<ModelObject*> objects)
{
    document().detach(objects);
}
