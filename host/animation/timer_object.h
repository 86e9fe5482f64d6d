#pragma once

#include "animation_states.h"
#include "child_list.h"
#include "script/command_line.h"

#include <optional>
#include <vector>

class CAnimationScene;
class CTimebar;
class CTVar;

/// One thing that a timebar animates: an object of the scene by its channels, or a script command with variables of the
/// author's. Each change is one step of undo.
class CTimerObject : public tarn::ModelObject {
public:
    CTimerObject(CAnimationScene& scene, tarn::StatePtr state);

    tarn::TimerObjectType type() const { return tarn::TimerObjectType(object_state().type); }
    QString get_type_name() const; ///< in the program's language
    /// What lists show of it: the target's name, "" when that is gone, or the command.
    QString name() const;
    CTimebar* timebar() const;
    tarn::ObjectRef target() const { return object_state().target; }
    /// Null when the target is gone, or is of another kind than this animates.
    tarn::ModelObject* target_object() const;
    /// Of one that animates an object: the target is not there.
    bool is_broken() const { return type() != tarn::TimerObjectType::Script && !target_object(); }
    bool set_target(tarn::ObjectRef target) { return change<&tarn::TimerObjectState::target>(target); }
    /// The path that it follows, as long as that is there; null for none.
    tarn::ModelObject* path_object() const;
    tarn::ObjectRef path() const { return object_state().path; }
    bool set_path(tarn::ObjectRef path) { return change<&tarn::TimerObjectState::path>(path); }
    bool clear_path() { return set_path({}); }
    bool follows_direction() const { return object_state().along_path; }
    bool set_follows_direction(bool on) { return change<&tarn::TimerObjectState::along_path>(on); }
    bool is_led_by_camera() const { return object_state().by_camera; }
    bool set_led_by_camera(bool on) { return change<&tarn::TimerObjectState::by_camera>(on); }
    quint32 flags() const { return object_state().flags; }
    /// Whether the channel takes part.
    bool is_on(tarn::Channel channel) const;

    const std::vector<CTVar*>& variables() const;
    /// Null for none; not saved.
    CTVar* current_variable() const;
    void set_current_variable(const CTVar* variable);
    CTVar* channel_variable(tarn::Channel channel) const; ///< null when it has no keys yet
    CTVar* find_variable(const QString& name, tarn::VarType type) const;
    /// A new variable without keys, "Var<n>" when `name` is empty. Null when no ids are left.
    CTVar* create_var(tarn::VarType type, const QString& name = {});
    CTVar* create_channel_var(tarn::Channel channel);
    void remove_var(CTVar* variable);

    // Its keys: what its variables have at one time
    bool has_key(float time) const;
    /// False when no key stands there.
    bool set_key_ease(float time, float ease);
    float get_ease(float time) const; ///< of the first variable that has a key there
    /// The keys between which `time` lies; none before the first, from the last on, and without keys.
    std::optional<std::pair<float, float>> get_time_belone(float time) const;
    std::optional<float> next_key(float after) const;
    std::optional<float> previous_key(float before) const;
    /// Gives its channels keys at `time` with what `pose` has of them; one that follows a path keeps the share of the way
    /// that is nearest to the place.
    void record(float time, const tarn::Pose& pose);
    /// Has the scene show what the keys say now.
    void update_frame();

    const char* class_name() const override;
    /// One that begins to follow a path takes its places along, as shares of the way.
    void after_write(const tarn::WrittenFields& written) override;
    void state_changed() override;
    void children_changed() override;

protected:
    const tarn::TimerObjectState& object_state() const { return state<tarn::TimerObjectState>(); }

private:
    CTVar* add_var(tarn::VarState* state);

    CAnimationScene& m_scene;
    tarn::ChildList<CTVar> m_variables;
    quint32 m_current_variable = 0;
};

/// A command that runs while its timebar plays: once when that begins, and whenever a variable has another value. It is a
/// line that calls one function, with expressions in which the object's variables stand by their names.
class CTCommandScript final : public CTimerObject {
public:
    using CTimerObject::CTimerObject;

    QString script() const { return object_state().function + object_state().arguments; }
    bool set_script(const QString& command);
    tarn::CommandLine command() const { return tarn::CommandLine::parse(script()); }
    /// Makes the variables that the command names and that are not there, as numbers without keys.
    void analyze_script();
    /// The command follows a variable that is called otherwise now.
    bool rename_var(CTVar* variable, const QString& name);

    /// Whether the command has to run, now that its variables have what they have at that time; then it has run.
    bool take_due(float time);
    /// It has to run again, whatever the variables have.
    void forget_run() { m_ran_with.reset(); }

private:
    std::optional<std::vector<tarn::KeyValue>> m_ran_with;
};

namespace tarn {

/// The key of a timer object at a time, as a view of its variables.
class CObjKey {
public:
    CObjKey(CTimerObject& object, float time) : m_object(&object), m_time(time) {}

    float time() const { return m_time; }
    CTimerObject& object() const { return *m_object; }
    /// Of the first variable that has a key there.
    int group() const;
    void set_group(int group);
    bool has(Channel channel) const;
    /// What the channel has at that time; that of a new variable without keys.
    KeyValue value(Channel channel) const;
    void set_value(Channel channel, const KeyValue& value);

private:
    CTimerObject* m_object;
    float m_time;
};

} // namespace tarn
