#pragma once

#include "anim_time.h"
#include "animation_states.h"
#include "child_list.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <vector>

class CAnimationScene;
class CTCommandScript;
class CTimerObject;
class CTVar;

namespace tarn {

enum class PlayMode { Normal, Repeat, Swing, ReverseOnce, ReverseRepeat };
enum class KeyKind { Key, Script };

class CScriptKey final : public ModelObject {
public:
    CScriptKey(CAnimationScene& scene, StatePtr state);

    float time() const { return state<ScriptKeyState>().time; }
    const QString& function() const { return state<ScriptKeyState>().function; }
    bool set_function(const QString& name) { return change<&ScriptKeyState::function>(name); }
    const char* class_name() const override { return "CScriptKey"; }
    void state_changed() override;
};

class CTimeMark final : public ModelObject {
public:
    CTimeMark(CAnimationScene& scene, StatePtr state);

    const QString& name() const { return state<TimeMarkState>().name; }
    float time() const { return state<TimeMarkState>().time; }
    float length() const { return state<TimeMarkState>().length; }
    float end() const { return time() + length(); }
    quint32 color() const { return state<TimeMarkState>().color; }
    bool set_span(float time, float length);
    bool set_name(const QString& name);
    const char* class_name() const override { return "CTimeMark"; }
};

/// Keys of some variables, by their times, which ascend.
using KeySelection = std::map<CTVar*, std::vector<float>>;

} // namespace tarn

/// A timebar: timer objects with their keys, script keys and marks over a length of time, in seconds. Each change is one
/// step of undo. The current time and whether it plays are neither saved nor undone.
class CTimebar final : public tarn::ModelObject {
public:
    CTimebar(CAnimationScene& scene, tarn::StatePtr state);
    ~CTimebar() override;

    const QString& name() const { return bar_state().name; }
    bool set_name(const QString& name) { return change<&tarn::TimebarState::name>(name); }
    float get_total_length() const { return bar_state().total_length; }
    bool set_total_length(float seconds);
    tarn::PlayMode play_mode() const { return tarn::PlayMode(bar_state().play_mode); }
    bool shows_frames() const { return bar_state().display_mode == tarn::TimebarState::frames_mode; }
    int frame_rate() const { return bar_state().frame_rate; }
    /// In which its times are shown and typed.
    tarn::TimeUnit time_unit() const
    {
        return shows_frames() ? tarn::TimeUnit::frames(frame_rate()) : tarn::TimeUnit::seconds();
    }
    bool auto_play() const { return bar_state().auto_play; }
    /// The part that repeats while the author plays the bar, in seconds; one that does not end behind its begin: none.
    bool set_loop(float from, float to);
    float loop_from() const { return bar_state().loop_from; }
    float loop_to() const { return std::min(bar_state().loop_to, get_total_length()); }
    bool has_loop() const { return loop_to() > loop_from(); }
    /// What runs in a preview when the bar has come to its end; empty for nothing.
    const QString& end_function() const { return bar_state().end_function; }
    CAnimationScene& scene() const { return m_scene; }

    // Timer objects
    const std::vector<CTimerObject*>& objects() const;
    CTimerObject* current_object() const; ///< null for none; not saved
    void set_current_object(const CTimerObject* object);
    CTCommandScript* create_script_object();
    CTimerObject* create_object(tarn::TimerObjectType type, tarn::ObjectRef target);
    void remove_obj(CTimerObject* object);
    /// The timer object that animates it; null when none does.
    CTimerObject* SearchItemUsage(const tarn::ModelObject& object) const;
    /// Those whose keys the bands show: the current one of the current object, else all of it, else all there are.
    std::vector<CTVar*> shown_variables() const;

    // Keys, of what shown_variables() tells
    std::optional<float> get_next_action_key_frame(float time) const;
    std::optional<float> get_pre_action_key_frame(float time) const;
    /// Moves what stands at `from`: keys, but not first ones, which push out what stands where they come; or the script
    /// key, which does not move onto another. False when nothing was moved.
    bool change_key_time(tarn::KeyKind kind, float from, float to);
    /// Moves the selected keys, first ones left out, to where `moved` puts each: all at once, from where they stand now,
    /// apart from each other. Keys that are not selected give up their places. The selection follows.
    bool retime_keys(tarn::KeySelection& keys, const std::function<float(float)>& moved);
    bool remove_keys(const tarn::KeySelection& keys); ///< first ones stay
    bool set_keys_ease(const tarn::KeySelection& keys, float ease);
    bool set_key_group(const tarn::KeySelection& keys, int group);
    tarn::KeySelection keys_of_group(int group) const;
    /// Keys of the objects at the current time. An object that has none yet gets one for every channel that takes part,
    /// later for those that changed, and for all when none did. Answers how many keys were written.
    int record_selection(const std::vector<tarn::ModelObject*>& objects);

    // Script keys, ascending in time
    const std::vector<tarn::CScriptKey*>& script_keys() const;
    std::vector<float> script_key_times() const;
    bool is_script_key_time(float time) const { return script_key(time) != nullptr; }
    tarn::CScriptKey* script_key(float time) const;
    /// The function that runs at that time; empty where there is no script key.
    QString get_script_name(float time) const;
    /// A script key that runs a function of that name, of a name of its own when that is empty. The one that stands there
    /// stays as it is. Null when no ids are left.
    tarn::CScriptKey* insert_script_key(float time, const QString& function = {});
    /// The function that the script key runs comes to be when there is none of that name, in a step of undo. False where
    /// there is no script key, or no room for a function.
    bool create_script_function(float time);
    /// With the function that was made for it, when nothing else names that.
    bool remove_script_key(float time);
    bool remove_script_keys(const std::vector<float>& times);
    /// Moves the script keys that stand at `times` to where `moved` puts each, all at once and apart from each other; the
    /// times follow. False, and nothing is moved, where one would come onto a script key that stays.
    bool retime_script_keys(std::vector<float>& times, const std::function<float(float)>& moved);

    // Marks, in the order in which they were made
    const std::vector<tarn::CTimeMark*>& marks() const;
    tarn::CTimeMark* mark_at(float time) const; ///< the last that begins there; null for none
    tarn::CTimeMark* create_mark(float time, float length, const QString& name);
    void remove_mark(tarn::CTimeMark* mark);

    // Time as a whole
    /// What stands at `at` or later comes `length` seconds later, and the bar becomes longer by that. False when it would
    /// become too long.
    bool insert_time(float at, float length);
    /// What stands from `from` to before `to` goes, and what stands later closes up; the length stays. Of the variables
    /// that have a first key there it stays, at `from`, unless another comes to stand there.
    bool remove_region(float from, float to);
    /// Inserts the length of `other`, and its content: into timer objects and variables that are alike, and new ones. A
    /// key that stands where one comes stays. False for the bar itself, and where it would become too long.
    bool insert_timerbar(float at, const CTimebar& other);

    // Playing
    float current_time() const { return m_current_time; }
    bool is_playing() const { return m_playing; }
    /// `apply`: the scene shows it, and what was not recorded is dropped. A time beyond the end is the end.
    void set_current_time(float time, int apply = 1);
    /// Starts or stops; from the begin (in reverse modes the end), or from the current time where there is a way to go.
    void active_bar(int on, int from_start = 0);
    /// Goes on by that many seconds and shows it; see CAnimationScene::frame_move for all that play.
    void frame_move(float elapsed);
    float speed() const { return m_speed; }
    void set_speed(float speed); ///< 1/8 to 8

    const char* class_name() const override { return "CTimebar"; }
    void state_changed() override;
    void children_changed() override;

protected:
    tarn::Value value_in(const tarn::ObjectState& state, const tarn::FieldBase& field) const override;

private:
    friend class CAnimationScene;
    friend class tarn::CScriptKey;
    const tarn::TimebarState& bar_state() const { return state<tarn::TimebarState>(); }
    void advance(float elapsed);
    struct Part;
    Part played_part() const;
    bool at_edge(const Part& part);
    void pass(float from, float to);
    void remove_children(std::vector<tarn::ModelObject*> objects);
    tarn::CScriptKey* make_script_key(float time, QString function);
    void copy_content(const CTimebar& other, float at, float until);
    void copy_script_keys(const CTimebar& other, float at, float until);
    CTimerObject* like(const CTimerObject& object);
    struct Recording;
    int record(const Recording& recording);
    void shift_script_keys(float at, float offset);

    CAnimationScene& m_scene;
    tarn::ChildList<CTimerObject> m_objects;
    tarn::ChildList<tarn::CScriptKey> m_listed_script_keys;
    mutable std::vector<tarn::CScriptKey*> m_script_keys; ///< by time
    mutable bool m_script_keys_stale = true;
    tarn::ChildList<tarn::CTimeMark> m_marks;
    quint32 m_current_object = 0;
    float m_current_time = 0;
    float m_time_before = 0; ///< before the preview
    float m_speed = 1;
    int m_direction = 1;
    bool m_playing = false;
    bool m_ended = false;          ///< and nobody was told yet
    bool m_includes_begin = true;  ///< a script key at the current time was not passed yet
    std::vector<quint32> m_passed; ///< script keys that nobody was told of yet, in order
};
