#pragma once

#include "animation_states.h"
#include "core/model_object.h"

#include <functional>
#include <optional>

class CAnimationScene;
class CTimerObject;

/// A variable of a timer object and its keys. Times are seconds; each change is one step of undo.
class CTVar final : public tarn::ModelObject {
public:
    CTVar(CAnimationScene& scene, tarn::StatePtr state);

    const QString& name() const { return var_state().name; }
    bool set_name(const QString& name) { return change<&tarn::VarState::name>(name); }
    tarn::VarType type() const { return keys().type(); }
    /// "FLOAT", "INT", "VEC", "DWORD", "MAT"; with `words` 1 the same in the program's language.
    QString get_type_name(int words) const;
    /// One that holds the keys of a channel.
    bool is_system() const { return channel().has_value(); }
    std::optional<tarn::Channel> channel() const;
    /// Whether the value changes at keys only.
    bool steps() const;
    CTimerObject* object() const;

    const tarn::KeyTrack& keys() const { return var_state().keys; }
    tarn::KeyValue value_at(float time) const { return keys().value_at(time, steps()); }
    /// How much one of the value's numbers changes in a second.
    float get_derivative(float time, int part = 0) const;
    /// Whether the key at `time` can be moved and removed; the first one cannot.
    bool is_movable(float time) const { return keys().find(time) > 0; }

    // All answer whether they changed anything. A value has to be of the variable's type.
    /// A key of what the variable has at that time; false when one stands there.
    bool add_key(float time);
    /// The same with a value; a key that stands there gets it and keeps its ease and group.
    bool set_key_value(float time, const tarn::KeyValue& value);
    bool remove_key(float time); ///< false for the first key, too
    bool set_key_ease(float time, float ease);
    float get_ease(float time) const; ///< 0 where there is no key
    bool set_key_group(float time, int group);
    bool set_keys(tarn::KeyTrack keys);
    /// Changes the keys by `edit`, in one step of undo of that name.
    bool edit_keys(const QString& name, const std::function<void(tarn::KeyTrack&)>& edit);
    /// Has the scene show what the keys say now.
    void update_value();

    static QString get_string_from_var(const tarn::KeyValue& value) { return value.to_text(); }
    /// False when the text is no value of the variable's type.
    bool get_var_from_string(const QString& text, tarn::KeyValue& value) const
    {
        return tarn::KeyValue::from_text(type(), text, value);
    }

    const char* class_name() const override { return "CTVar"; }
    void state_changed() override;

private:
    const tarn::VarState& var_state() const { return state<tarn::VarState>(); }

    CAnimationScene& m_scene;
};
