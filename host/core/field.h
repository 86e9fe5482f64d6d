#pragma once

#include "json_reader.h"
#include "json_writer.h"
#include "object_state.h"
#include "status.h"
#include "value.h"

#include <limits>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

namespace tarn {

/// What may be stored in a field beyond its type. The defaults allow everything.
struct FieldRules {
    double minimum = std::numeric_limits<double>::lowest();
    double maximum = std::numeric_limits<double>::max();
    int max_length = std::numeric_limits<int>::max(); ///< of a text or of each text of a list, in UTF-16 units
    bool read_only = false;                           ///< set by the object itself only
    bool picture = false;                             ///< a text that names one of the scene's pictures
};

inline FieldRules range(double minimum, double maximum)
{
    return {.minimum = minimum, .maximum = maximum};
}
inline FieldRules max_length(int units)
{
    return {.max_length = units};
}
inline FieldRules picture_name()
{
    return {.picture = true};
}
inline FieldRules read_only()
{
    return {.read_only = true};
}

/// `text` cut to at most `units` UTF-16 units, never inside a character (surrogates and combining marks included).
QString cut_text(const QString& text, int units);

/// One attribute of a state class. Everything generic (saving, loading, undo, automation, copying, comparing) goes
/// through this interface; Field<> below supplies it from one line of a table.
class FieldBase {
public:
    FieldBase(const char* name, FieldRules rules) : m_name(name), m_rules(rules) {}
    virtual ~FieldBase() = default;

    const char* name() const { return m_name; }
    const FieldRules& rules() const { return m_rules; }

    virtual Value get(const ObjectState& state) const = 0;
    /// Stores `value` held to the rules; fails with a message when it is of another kind or not finite.
    virtual Status set(ObjectState& state, const Value& value) const = 0;
    virtual bool same(const ObjectState& a, const ObjectState& b) const = 0;
    virtual bool is_default(const ObjectState& state) const = 0;
    virtual void write(const ObjectState& state, JsonWriter& writer) const = 0;
    virtual Status read(ObjectState& state, JsonCursor& cursor) const = 0;
    virtual void copy(const ObjectState& from, ObjectState& to) const = 0;
    /// The reference kept in this field; null when the field is none.
    virtual ObjectRef* reference(ObjectState&) const { return nullptr; }

private:
    const char* m_name;
    FieldRules m_rules;
};

namespace detail {

Value to_value(bool value);
Value to_value(int value);
Value to_value(quint32 value);
Value to_value(float value);
Value to_value(const QString& value);
Value to_value(const QStringList& value);
Value to_value(ObjectRef value);

Status from_value(const Value& value, const FieldRules& rules, bool& out);
Status from_value(const Value& value, const FieldRules& rules, int& out);
Status from_value(const Value& value, const FieldRules& rules, quint32& out);
Status from_value(const Value& value, const FieldRules& rules, float& out);
Status from_value(const Value& value, const FieldRules& rules, QString& out);
Status from_value(const Value& value, const FieldRules& rules, QStringList& out);
Status from_value(const Value& value, const FieldRules& rules, ObjectRef& out);

template <class T>
void hold_to_rules(const FieldRules& rules, T& value)
{
    if constexpr (std::is_same_v<T, QString>) {
        if (value.size() > rules.max_length)
            value = cut_text(value, rules.max_length);
    } else if constexpr (std::is_same_v<T, QStringList>) {
        for (QString& text : value)
            hold_to_rules(rules, text);
    } else if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) {
        if (static_cast<double>(value) < rules.minimum)
            value = static_cast<T>(rules.minimum);
        else if (static_cast<double>(value) > rules.maximum)
            value = static_cast<T>(rules.maximum);
    }
}

} // namespace detail

/// The attribute `member` of State, its default (which is not saved) and its rules.
template <class State, class T>
class Field final : public FieldBase {
public:
    Field(const char* name, T State::*member, T default_value, FieldRules rules = {})
        : FieldBase(name, rules), m_member(member), m_default(std::move(default_value))
    {
    }

    Value get(const ObjectState& state) const override { return detail::to_value(of(state)); }
    Status set(ObjectState& state, const Value& value) const override
    {
        T converted{};
        auto status = detail::from_value(value, rules(), converted);
        if (status)
            of(state) = std::move(converted);
        return status;
    }
    bool same(const ObjectState& a, const ObjectState& b) const override { return of(a) == of(b); }
    bool is_default(const ObjectState& state) const override { return of(state) == m_default; }
    void write(const ObjectState& state, JsonWriter& writer) const override
    {
        if constexpr (std::is_same_v<T, ObjectRef>)
            writer.value(of(state).id);
        else
            writer.value(of(state));
    }
    Status read(ObjectState& state, JsonCursor& cursor) const override
    {
        if constexpr (std::is_same_v<T, ObjectRef>) {
            return cursor.read(of(state).id);
        } else {
            auto status = cursor.read(of(state));
            detail::hold_to_rules(rules(), of(state));
            return status;
        }
    }
    void copy(const ObjectState& from, ObjectState& to) const override { of(to) = of(from); }
    ObjectRef* reference(ObjectState& state) const override
    {
        if constexpr (std::is_same_v<T, ObjectRef>)
            return &of(state);
        else
            return nullptr;
    }

private:
    const T& of(const ObjectState& state) const { return static_cast<const State&>(state).*m_member; }
    T& of(ObjectState& state) const { return static_cast<State&>(state).*m_member; }

    T State::*m_member;
    T m_default;
};

template <class State, class Owner, class T, class Default = T>
std::unique_ptr<FieldBase> field(const char* name, T Owner::*member, Default default_value = {}, FieldRules rules = {})
{
    return std::make_unique<Field<State, T>>(name, static_cast<T State::*>(member), T(std::move(default_value)), rules);
}

/// The attributes of one state class in declaration order, those of its base class first.
class FieldTable {
public:
    using Fields = std::vector<const FieldBase*>;

    template <class... Field>
    explicit FieldTable(const FieldTable* base, Field... fields)
    {
        if (base)
            m_fields = base->m_fields;
        m_own.reserve(sizeof...(fields));
        (add(std::move(fields)), ...);
    }

    Fields::const_iterator begin() const { return m_fields.begin(); }
    Fields::const_iterator end() const { return m_fields.end(); }
    std::size_t size() const { return m_fields.size(); }
    const FieldBase* at(std::size_t index) const { return m_fields[index]; }
    /// The index of the field named `name`, looked for first at `hint` (the place after the last one found), or -1.
    int index_of(std::string_view name, int hint = 0) const;
    const FieldBase* find(std::string_view name) const;

private:
    void add(std::unique_ptr<FieldBase> field);

    Fields m_fields;
    std::vector<std::unique_ptr<FieldBase>> m_own;
};

/// Writes `state` as one JSON object: fields that differ from their default in table order, then the unknown members.
void write_state(const ObjectState& state, JsonWriter& writer);

/// Fills `state`, fresh with defaults, from a JSON object. Members that no field knows are kept.
Status read_state(ObjectState& state, JsonCursor& cursor);

} // namespace tarn
