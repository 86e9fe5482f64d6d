#pragma once

#include "json_reader.h"
#include "json_writer.h"
#include "object_state.h"
#include "rare_data.h"
#include "status.h"
#include "value.h"

#include <functional>
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
    bool picture = false;                             ///< a text, or a list of texts, that names pictures of the scene
    bool derived = false;                             ///< follows from other fields and is not saved
    int slots = 0; ///< of a list whose elements have fixed places: how many; empty ones at its end are left out
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
inline FieldRules slots(int count)
{
    return {.slots = count};
}

/// `text` cut to at most `units` UTF-16 units, never inside a character (surrogates and combining marks included).
QString cut_text(const QString& text, int units);

/// One attribute of a state class. Everything generic (saving, loading, undo, automation, comparing) goes
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
    /// The reference kept in this field; null when the field is none.
    virtual ObjectRef* reference(ObjectState&) const { return nullptr; }

    /// The pictures that this field names; none when it is not of that kind.
    QStringList pictures(const ObjectState& state) const;
    /// Puts `renamed(name)` in the place of each of them.
    void rename_pictures(ObjectState& state, const std::function<QString(const QString&)>& renamed) const;

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
Value to_value(const QList<quint32>& value);
Value to_value(ObjectRef value);

Status from_value(const Value& value, const FieldRules& rules, bool& out);
Status from_value(const Value& value, const FieldRules& rules, int& out);
Status from_value(const Value& value, const FieldRules& rules, quint32& out);
Status from_value(const Value& value, const FieldRules& rules, float& out);
Status from_value(const Value& value, const FieldRules& rules, QString& out);
Status from_value(const Value& value, const FieldRules& rules, QStringList& out);
Status from_value(const Value& value, const FieldRules& rules, QList<quint32>& out);
Status from_value(const Value& value, const FieldRules& rules, ObjectRef& out);

template <class T>
void hold_to_slots(const FieldRules& rules, QList<T>& list)
{
    if (!rules.slots)
        return;
    if (list.size() > rules.slots)
        list.resize(rules.slots);
    while (!list.isEmpty() && list.back() == T())
        list.removeLast();
}

template <class T>
void hold_to_rules(const FieldRules& rules, T& value)
{
    if constexpr (std::is_same_v<T, QString>) {
        if (value.size() > rules.max_length)
            value = cut_text(value, rules.max_length);
    } else if constexpr (std::is_same_v<T, QStringList>) {
        for (QString& text : value)
            hold_to_rules(rules, text);
        hold_to_slots(rules, value);
    } else if constexpr (std::is_same_v<T, QList<quint32>>) {
        hold_to_slots(rules, value);
    } else if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) {
        if (static_cast<double>(value) < rules.minimum)
            value = static_cast<T>(rules.minimum);
        else if (static_cast<double>(value) > rules.maximum)
            value = static_cast<T>(rules.maximum);
    }
}

} // namespace detail

/// Where an attribute lives: in a member of the state.
template <class State, class T>
struct MemberAccess {
    using Type = T;
    T State::*member;
    T default_value;

    const T& get(const State& state) const { return state.*member; }
    T& get(State& state) const { return state.*member; }
    void set(State& state, T&& value) const { state.*member = std::move(value); }
    bool is_default(const State& state) const { return get(state) == default_value; }
};

/// In data that a state has only when it needs them. The default is what fresh data hold.
template <class State, class Data, class T>
struct RareAccess {
    using Type = T;
    RareData<Data> State::*data;
    T Data::*member;

    const T& get(const State& state) const { return (state.*data).get().*member; }
    void set(State& state, T&& value) const
    {
        (state.*data).edit([&](Data& held) { held.*member = std::move(value); });
    }
    bool is_default(const State& state) const { return (state.*data).is_fresh() || get(state) == Data().*member; }
};

/// The attribute that `access` reaches, and its rules.
template <class State, class Access>
class Field final : public FieldBase {
    using T = typename Access::Type;

public:
    Field(const char* name, Access access, FieldRules rules) : FieldBase(name, rules), m_access(std::move(access)) {}

    Value get(const ObjectState& state) const override { return detail::to_value(m_access.get(cast(state))); }
    Status set(ObjectState& state, const Value& value) const override
    {
        T converted{};
        auto status = detail::from_value(value, rules(), converted);
        if (status)
            m_access.set(cast(state), std::move(converted));
        return status;
    }
    bool same(const ObjectState& a, const ObjectState& b) const override
    {
        return m_access.get(cast(a)) == m_access.get(cast(b))
            && m_access.is_default(cast(a)) == m_access.is_default(cast(b));
    }
    bool is_default(const ObjectState& state) const override { return m_access.is_default(cast(state)); }
    void write(const ObjectState& state, JsonWriter& writer) const override
    {
        if constexpr (std::is_same_v<T, ObjectRef>)
            writer.value(m_access.get(cast(state)).id);
        else
            writer.value(m_access.get(cast(state)));
    }
    Status read(ObjectState& state, JsonCursor& cursor) const override
    {
        T value{};
        Status status;
        if constexpr (std::is_same_v<T, ObjectRef>) {
            status = cursor.read(value.id);
        } else {
            status = cursor.read(value);
            const T given = value;
            detail::hold_to_rules(rules(), value);
            if (status && !rules().slots && !(value == given))
                cursor.note_held(name(), detail::to_value(given), detail::to_value(value));
        }
        if (status)
            m_access.set(cast(state), std::move(value));
        return status;
    }
    ObjectRef* reference(ObjectState& state) const override
    {
        if constexpr (std::is_same_v<T, ObjectRef>)
            return &m_access.get(cast(state));
        else
            return nullptr;
    }

private:
    static const State& cast(const ObjectState& state) { return static_cast<const State&>(state); }
    static State& cast(ObjectState& state) { return static_cast<State&>(state); }

    Access m_access;
};

template <class State, class Owner, class T, class Default = T>
std::unique_ptr<FieldBase> field(const char* name, T Owner::*member, Default default_value = {}, FieldRules rules = {})
{
    using Access = MemberAccess<State, T>;
    return std::make_unique<Field<State, Access>>(
        name, Access{static_cast<T State::*>(member), T(std::move(default_value))}, rules);
}

/// An attribute in the rare data `data` of the state.
template <class State, class Data, class T>
std::unique_ptr<FieldBase> field(const char* name, RareData<Data> State::*data, T Data::*member, FieldRules rules = {})
{
    using Access = RareAccess<State, Data, T>;
    return std::make_unique<Field<State, Access>>(name, Access{data, member}, rules);
}

/// An attribute that is worked out by an access class of its own.
template <class State, class Access>
std::unique_ptr<FieldBase> computed_field(const char* name, FieldRules rules = {})
{
    return std::make_unique<Field<State, Access>>(name, Access{}, rules);
}

/// The attributes of one state class in declaration order, those of its base class first.
class FieldTable {
public:
    using Fields = std::vector<const FieldBase*>;

    template <class... Field>
    explicit FieldTable(const FieldTable* base, Field... fields)
    {
        if (base) {
            m_fields = base->m_fields;
            m_names = base->m_names;
        }
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
    std::vector<std::string_view> m_names;
    std::vector<std::unique_ptr<FieldBase>> m_own;
};

/// Writes `state` as one JSON object: fields that differ from their default in table order, then the unknown members.
void write_state(const ObjectState& state, JsonWriter& writer);

/// Fills `state`, fresh with defaults, from a JSON object. Members that no field knows are kept.
Status read_state(ObjectState& state, JsonCursor& cursor);

} // namespace tarn
