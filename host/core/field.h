#pragma once

#include "field_key.h"
#include "field_type.h"
#include "object_state.h"
#include "rare_data.h"

#include <functional>
#include <memory>
#include <vector>

namespace tarn {

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
/// Of a list of children, which is changed and saved with them.
inline FieldRules children()
{
    return {.read_only = true, .derived = true, .children = true};
}

/// One attribute of a state class. Everything generic (saving, loading, undo, automation, comparing) goes
/// through this interface; Field<> below supplies it from one line of a table.
class FieldBase {
public:
    FieldBase(FieldKey key, const char* name, FieldRules rules) : m_key(key), m_name(name), m_rules(rules) {}
    virtual ~FieldBase() = default;

    FieldKey key() const { return m_key; }
    const char* name() const { return m_name; }
    const FieldRules& rules() const { return m_rules; }

    virtual Value get(const ObjectState& state) const = 0;
    /// Stores `value` held to the rules; fails with a message when it is of another kind or not finite.
    virtual Status set(ObjectState& state, const Value& value) const = 0;
    virtual bool same(const ObjectState& a, const ObjectState& b) const = 0;
    virtual bool is_default(const ObjectState& state) const = 0;
    /// monostate for an attribute that is worked out and has none of its own.
    virtual Value default_value() const = 0;
    virtual void write(const ObjectState& state, JsonWriter& writer) const = 0;
    virtual Status read(ObjectState& state, JsonCursor& cursor) const = 0;
    /// Gives `to`, a state of the same class, what `from` has in this field.
    virtual void copy(const ObjectState& from, ObjectState& to) const = 0;
    /// About how many bytes of memory beside the state itself `kept` holds in this field and does not share with `other`,
    /// a state of the same class.
    virtual std::size_t kept_bytes(const ObjectState& kept, const ObjectState& other) const = 0;
    /// Whether a value may take memory beside the state.
    virtual bool has_heap() const = 0;
    /// Whether a value may lead to something else: to objects by id, to pictures or functions by name.
    virtual bool has_links() const = 0;

    /// The references to objects that this field holds; none when it is not of that kind.
    virtual void each_reference(const ObjectState& state, const std::function<void(ObjectRef)>& visit) const = 0;
    virtual void each_reference(ObjectState& state, const std::function<void(ObjectRef&)>& visit) const = 0;
    /// What this field names, empty names left out; nothing when the rules do not tell what it names.
    virtual QStringList names(const ObjectState& state) const = 0;
    /// Puts `renamed(name)` in the place of each of them.
    virtual void rename(ObjectState& state, const std::function<QString(const QString&)>& renamed) const = 0;

private:
    FieldKey m_key;
    const char* m_name;
    FieldRules m_rules;
};

namespace detail {

template <class T>
struct MemberOf;
template <class Owner, class T>
struct MemberOf<T Owner::*> {
    using Class = Owner;
    using Type = T;
};
template <auto member>
using MemberType = typename MemberOf<decltype(member)>::Type;

} // namespace detail

/// Where an attribute lives: in a member of the state.
template <class State, auto member>
struct MemberAccess {
    using Type = detail::MemberType<member>;
    Type default_value;

    const Type& get(const State& state) const { return state.*member; }
    void set(State& state, Type&& value) const { state.*member = std::move(value); }
    bool is_default(const State& state) const { return get(state) == default_value; }
};

/// In data that a state has only when it needs them. The default is what fresh data hold.
template <class State, auto data, auto member>
struct RareAccess {
    using Type = detail::MemberType<member>;
    using Data = typename detail::MemberOf<decltype(member)>::Class;

    const Type& get(const State& state) const { return (state.*data).get().*member; }
    void set(State& state, Type&& value) const
    {
        (state.*data).edit([&](Data& held) { held.*member = std::move(value); });
    }
    bool is_default(const State& state) const { return (state.*data).is_fresh() || get(state) == Data().*member; }
    static Type fresh_value() { return Data().*member; }
    /// The field's part of the data, which are on the heap themselves.
    std::size_t own_bytes(const State& kept, const State& other) const
    {
        return (kept.*data).is_shared_with(other.*data) ? 0 : sizeof(Type);
    }
};

/// The attribute that `access` reaches, and its rules. An access class has the members of MemberAccess; where a copy of
/// what get() gives is not all, it has copy(from, to), too.
template <class State, class Access>
class Field final : public FieldBase {
    using T = typename Access::Type;
    using Kind = FieldType<T>;
    using Part = typename Kind::Part;

public:
    Field(FieldKey key, const char* name, Access access, FieldRules rules)
        : FieldBase(key, name, rules), m_access(std::move(access))
    {
    }

    Value get(const ObjectState& state) const override { return Kind::to_value(m_access.get(cast(state))); }
    Status set(ObjectState& state, const Value& value) const override
    {
        T converted{};
        auto status = Kind::from_value(value, rules(), converted);
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
    Value default_value() const override
    {
        if constexpr (requires { m_access.default_value; })
            return Kind::to_value(m_access.default_value);
        else if constexpr (requires { m_access.fresh_value(); })
            return Kind::to_value(m_access.fresh_value());
        else
            return {};
    }
    void write(const ObjectState& state, JsonWriter& writer) const override
    {
        Kind::write(m_access.get(cast(state)), writer);
    }
    Status read(ObjectState& state, JsonCursor& cursor) const override
    {
        T value{};
        auto status = Kind::read(cursor, value);
        if (status) {
            const T given = value;
            Kind::hold(rules(), value);
            if (!(value == given))
                cursor.note_held(name(), Kind::to_value(given), Kind::to_value(value));
            m_access.set(cast(state), std::move(value));
        }
        return status;
    }
    void copy(const ObjectState& from, ObjectState& to) const override
    {
        if constexpr (requires { m_access.copy(cast(from), cast(to)); })
            m_access.copy(cast(from), cast(to));
        else
            m_access.set(cast(to), T(m_access.get(cast(from))));
    }
    std::size_t kept_bytes(const ObjectState& kept, const ObjectState& other) const override
    {
        std::size_t bytes = Kind::kept_bytes(m_access.get(cast(kept)), m_access.get(cast(other)));
        if constexpr (requires { m_access.own_bytes(cast(kept), cast(other)); })
            bytes += m_access.own_bytes(cast(kept), cast(other));
        return bytes;
    }
    bool has_heap() const override { return !std::is_trivially_copyable_v<T>; }
    bool has_links() const override { return std::is_same_v<Part, ObjectRef> || rules().picture || rules().function; }
    void each_reference(const ObjectState& state, const std::function<void(ObjectRef)>& visit) const override
    {
        if constexpr (std::is_same_v<Part, ObjectRef>)
            Kind::each_part(m_access.get(cast(state)), visit);
    }
    void each_reference(ObjectState& state, const std::function<void(ObjectRef&)>& visit) const override
    {
        if constexpr (std::is_same_v<Part, ObjectRef>)
            change_parts(state, visit);
    }
    QStringList names(const ObjectState& state) const override
    {
        QStringList names;
        if constexpr (std::is_same_v<Part, QString>)
            if (rules().picture || rules().function)
                Kind::each_part(m_access.get(cast(state)), [&](const QString& name) {
                    if (!name.isEmpty())
                        names.append(name);
                });
        return names;
    }
    void rename(ObjectState& state, const std::function<QString(const QString&)>& renamed) const override
    {
        if constexpr (std::is_same_v<Part, QString>)
            if ((rules().picture || rules().function) && !is_default(state))
                change_parts(state, [&](QString& name) {
                    if (!name.isEmpty())
                        name = renamed(name);
                });
    }

private:
    static const State& cast(const ObjectState& state) { return static_cast<const State&>(state); }
    static State& cast(ObjectState& state) { return static_cast<State&>(state); }

    template <class Change>
    void change_parts(ObjectState& state, const Change& change) const
    {
        T value = m_access.get(cast(state));
        Kind::each_part(value, change);
        Kind::hold(rules(), value);
        m_access.set(cast(state), std::move(value));
    }

    Access m_access;
};

/// `field<S, &S::x>("x", 0.f, range(-10, 10))`
template <class State, auto member>
std::unique_ptr<FieldBase> field(const char* name, detail::MemberType<member> default_value = {}, FieldRules rules = {})
{
    using Access = MemberAccess<State, member>;
    return std::make_unique<Field<State, Access>>(key<member>, name, Access{std::move(default_value)}, rules);
}

/// An attribute in the rare data `data` of the state.
template <class State, auto data, auto member>
std::unique_ptr<FieldBase> field(const char* name, FieldRules rules = {})
{
    using Access = RareAccess<State, data, member>;
    return std::make_unique<Field<State, Access>>(key<member>, name, Access{}, rules);
}

/// An attribute that is worked out by an access class of its own, one without members.
template <class State, class Access>
std::unique_ptr<FieldBase> computed_field(const char* name, FieldRules rules = {})
{
    return std::make_unique<Field<State, Access>>(key<Access{}>, name, Access{}, rules);
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
            m_keys = base->m_keys;
            m_heap_fields = base->m_heap_fields;
            m_link_fields = base->m_link_fields;
        }
        m_own.reserve(sizeof...(fields));
        (add(std::move(fields)), ...);
    }

    Fields::const_iterator begin() const { return m_fields.begin(); }
    Fields::const_iterator end() const { return m_fields.end(); }
    std::size_t size() const { return m_fields.size(); }
    const FieldBase* at(std::size_t index) const { return m_fields[index]; }
    /// Those whose values may take memory beside the state.
    const Fields& heap_fields() const { return m_heap_fields; }
    /// Those whose values may lead to something else.
    const Fields& link_fields() const { return m_link_fields; }
    /// The index of the field named `name`, looked for first at `hint` (the place after the last one found), or -1.
    int index_of(std::string_view name, int hint = 0) const;
    const FieldBase* find(std::string_view name) const;
    /// Null for an attribute that objects with this table do not have.
    const FieldBase* find(FieldKey key) const;

private:
    void add(std::unique_ptr<FieldBase> field);

    Fields m_fields;
    Fields m_heap_fields;
    Fields m_link_fields;
    std::vector<std::string_view> m_names;
    std::vector<FieldKey> m_keys;
    std::vector<std::unique_ptr<FieldBase>> m_own;
};

/// Writes `state` as one JSON object: fields that differ from their default in table order, then the unknown members.
void write_state(const ObjectState& state, JsonWriter& writer);

/// The members alone that differ from their default, without braces and unknown members.
void write_members(const ObjectState& state, JsonWriter& writer);

/// Reads one member into its field, or keeps it as an unknown one.
Status read_member(ObjectState& state, std::string_view key, JsonCursor& value);

/// Fills `state`, fresh with defaults, from a JSON object. Members that no field knows are kept.
Status read_state(ObjectState& state, JsonCursor& cursor);

} // namespace tarn
