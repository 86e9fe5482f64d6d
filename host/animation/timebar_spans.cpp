// Edits of a timebar that move all that stands later: time that is inserted, removed, or filled with another timebar.

#include "animation_scene.h"
#include "core/authored.h"
#include "core/field.h"
#include "core/language.h"
#include "t_var.h"
#include "timebar.h"
#include "timer_object.h"

#include <algorithm>
#include <numeric>

using namespace tarn;

namespace {

void close_region(KeyTrack& track, float from, float to)
{
    const qsizetype begin = track.first_from(from);
    const qsizetype end = track.first_from(to);
    std::vector<qsizetype> gone(std::size_t(end - begin));
    std::iota(gone.begin(), gone.end(), begin);
    const bool takes_first = begin == 0 && end > 0;
    Key first = takes_first ? track.key(0) : Key();
    track.edit(gone, {});
    track.shift(begin, from - to, from);
    first.time = from;
    if (takes_first && track.find(from) < 0)
        track.set_key(first);
}

/// The keys of `theirs` up to `until`, `at` seconds later, where `mine` has none.
void add_keys(KeyTrack& mine, const KeyTrack& theirs, float until, float at)
{
    std::vector<Key> keys;
    std::vector<float> times;
    theirs.each_time(0, until, [&](qsizetype index, float time) {
        keys.push_back(theirs.key(index));
        times.push_back(time + at);
    });
    keep_apart(times);
    std::vector<Key> added;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        keys[i].time = times[i];
        if (mine.find(times[i]) < 0)
            added.push_back(keys[i]);
    }
    mine.edit({}, added);
}

} // namespace

/// Those at `at` or later.
void CTimebar::shift_script_keys(float at, float offset)
{
    std::vector<float> times = script_key_times();
    const auto first = std::size_t(std::lower_bound(times.begin(), times.end(), at) - times.begin());
    for (std::size_t i = first; i < times.size(); ++i)
        times[i] = std::clamp(times[i] + offset, 0.f, max_time);
    keep_apart(times);
    const std::vector<CScriptKey*> moved(script_keys().begin() + std::ptrdiff_t(first), script_keys().end());
    for (std::size_t i = 0; i < moved.size(); ++i)
        moved[i]->write<ScriptKeyState>([&](ScriptKeyState& state) { state.time = times[first + i]; });
}

bool CTimebar::insert_time(float at, float length)
{
    if (!(at >= 0 && length > 0 && get_total_length() + length <= max_time))
        return false;
    const UserAction action(journal(), lang(u"插入时间", u"Insert Time"));
    for (const CTimerObject* object : objects())
        for (CTVar* variable : object->variables())
            if (variable->keys().first_from(at) < variable->keys().size())
                variable->edit_keys({}, [&](KeyTrack& track) { track.shift(track.first_from(at), length); });
    shift_script_keys(at, length);
    for (CTimeMark* mark : marks())
        if (mark->time() >= at)
            mark->set_span(mark->time() + length, mark->length());
        else if (mark->end() > at)
            mark->set_span(mark->time(), mark->length() + length);
    return set_total_length(get_total_length() + length);
}

bool CTimebar::remove_region(float from, float to)
{
    if (!(from >= 0 && to > from && to <= max_time))
        return false;
    const UserAction action(journal(), lang(u"删除时间段", u"Remove Section"));
    for (const CTimerObject* object : objects())
        for (CTVar* variable : object->variables())
            if (variable->keys().first_from(from) < variable->keys().size())
                variable->edit_keys({}, [&](KeyTrack& track) { close_region(track, from, to); });
    std::vector<float> inside = script_key_times();
    std::erase_if(inside, [=](float time) { return time < from || time >= to; });
    remove_script_keys(inside);
    shift_script_keys(to, from - to);
    std::vector<ModelObject*> gone;
    const auto closed = [=](float time) { return time < from ? time : std::max(time - (to - from), from); };
    for (CTimeMark* mark : marks())
        if (mark->time() >= from && mark->time() < to && mark->end() <= to)
            gone.push_back(mark);
        else
            mark->set_span(closed(mark->time()), closed(mark->end()) - closed(mark->time()));
    remove_children(std::move(gone));
    return true;
}

// Another timebar's content -------------------------------------------------------------------------------------------

bool CTimebar::insert_timerbar(float at, const CTimebar& other)
{
    if (&other == this)
        return false;
    const UserAction action(journal(), lang(u"插入时间轴", u"Insert Timebar"));
    if (!insert_time(at, other.get_total_length()))
        return false;
    copy_content(other, at, other.get_total_length());
    return true;
}

/// The timer object for what `theirs` animates.
CTimerObject* CTimebar::like(const CTimerObject& theirs)
{
    const auto found = std::find_if(objects().begin(), objects().end(), [&](const CTimerObject* mine) {
        return mine->type() == theirs.type() && mine->target() == theirs.target()
            && (theirs.type() != TimerObjectType::Script || mine->name() == theirs.name());
    });
    if (found != objects().end())
        return *found;
    CTimerObject* mine = create_object(theirs.type(), theirs.target());
    if (mine)
        mine->write<TimerObjectState>([&](TimerObjectState& state) {
            const auto& from = static_cast<const TimerObjectState&>(Authored::state(theirs));
            state.flags = from.flags;
            state.path = from.path;
            state.along_path = from.along_path;
            state.by_camera = from.by_camera;
            state.function = from.function;
            state.arguments = from.arguments;
        });
    return mine;
}

void CTimebar::copy_content(const CTimebar& other, float at, float until)
{
    for (const CTimerObject* theirs : other.objects()) {
        CTimerObject* object = like(*theirs);
        for (const CTVar* variable : object ? theirs->variables() : std::vector<CTVar*>()) {
            const auto channel = variable->channel();
            CTVar* mine = channel ? object->channel_variable(*channel)
                                  : object->find_variable(variable->name(), variable->type());
            if (!mine)
                mine = channel ? object->create_channel_var(*channel)
                               : object->create_var(variable->type(), variable->name());
            if (mine && mine->type() == variable->type())
                mine->edit_keys({}, [&](KeyTrack& track) { add_keys(track, variable->keys(), until, at); });
        }
    }
    copy_script_keys(other, at, until);
    for (const CTimeMark* mark : other.marks())
        if (CTimeMark* mine = create_mark(mark->time() + at, mark->length(), mark->name()))
            mine->write<TimeMarkState>([&](TimeMarkState& state) { state.color = mark->color(); });
}
