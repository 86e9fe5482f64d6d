#pragma once

#include "core/model_object.h"
#include "script/lua_bridge.h"

#include <concepts>
#include <functional>

namespace tarn::script {

/// What a binding answers, on its way to Lua.
class Data {
public:
    using List = std::vector<Data>;
    using Record = std::vector<std::pair<const char*, Data>>;
    /// Several results of one call, or none.
    struct Several {
        List results{};
    };
    using Pusher = std::function<void(lua_State*)>;

    Data() = default; ///< nil
    template <class Plain>
        requires std::constructible_from<Value, Plain> Data(Plain plain) : m_value(ScriptValue(Value(std::move(plain))))
        {
        }
        Data(ScriptValue value) : m_value(std::move(value)) {}
        Data(ModelObject* object) : m_value(ScriptValue(object ? object->shared_from_this() : ScriptObject())) {}
        Data(List list) : m_value(std::move(list)) {}
        Data(Record record) : m_value(std::move(record)) {}
        Data(Several results) : m_value(std::move(results)) {}
        /// Something that puts itself onto Lua's stack: a handle.
        Data(Pusher pusher) : m_value(std::move(pusher)) {}

        /// Answers how many values it pushed.
        int push(lua_State* lua) const;

    private:
        std::variant<ScriptValue, List, Record, Several, Pusher> m_value;
};

template <class Items, class Convert>
Data::List list_of(const Items& items, Convert convert)
{
    Data::List list;
    for (const auto& item : items)
        list.push_back(convert(item));
    return list;
}

template <class Items>
Data::List list_of(const Items& items)
{
    return Data::List(items.begin(), items.end());
}

/// "bad argument "w": a whole number is needed, not a string"; of an object that was deleted, that it was.
Status bad_argument(lua_State* lua, int index, QLatin1String name, const char* needed);

/// Whether `given` is a T, which goes into `out`. Nothing here converts: a text is no number and 0 is not false.
bool take(const ScriptValue& given, int& out);
bool take(const ScriptValue& given, double& out);
template <class T>
bool take(const ScriptValue& given, T& out)
{
    if constexpr (std::same_as<T, ScriptValue>) {
        out = given;
        return true;
    } else if constexpr (std::same_as<T, ScriptObject>) {
        const auto* object = std::get_if<ScriptObject>(&given);
        return object && (out = *object);
    } else {
        const auto* plain = std::get_if<Value>(&given);
        const auto* value = plain ? std::get_if<T>(plain) : nullptr;
        if (value)
            out = *value;
        return value;
    }
}

/// What messages call a T.
template <class T>
inline constexpr const char* needed_for = "true, false, a number, a text, an object or a list of texts or of numbers";
template <>
inline constexpr const char* needed_for<bool> = "true or false";
template <>
inline constexpr const char* needed_for<int> = "a whole number";
template <>
inline constexpr const char* needed_for<double> = "a number";
template <>
inline constexpr const char* needed_for<QString> = "a text";
template <>
inline constexpr const char* needed_for<ScriptObject> = "a dialog or control";

/// How the argument `name` of type T is read. `index` counts from the stack's bottom.
template <class T>
struct Argument {
    static Result<T> read(lua_State* lua, int index, QLatin1String name)
    {
        lua::ReadBudget unbounded;
        const auto given = lua::read(lua, index, unbounded);
        T value{};
        if (given && take(*given, value))
            return value;
        return bad_argument(lua, index, name, needed_for<T>);
    }
};

/// An argument that may be left out.
template <class T>
struct Argument<std::optional<T>> {
    static Result<std::optional<T>> read(lua_State* lua, int index, QLatin1String name)
    {
        if (lua_isnoneornil(lua, index))
            return std::optional<T>();
        auto value = Argument<T>::read(lua, index, name);
        return value ? Result<std::optional<T>>(std::move(value.value())) : value.status();
    }
};

/// All arguments from here on.
template <class T>
struct Argument<std::vector<T>> {
    static Result<std::vector<T>> read(lua_State* lua, int index, QLatin1String name)
    {
        std::vector<T> values;
        for (; index <= lua_gettop(lua); ++index) {
            auto value = Argument<T>::read(lua, index, name);
            if (!value)
                return value.status();
            values.push_back(std::move(value.value()));
        }
        return values;
    }
};

/// A table of named fields as the one argument of a call: {name=..., x=...}.
class Fields {
public:
    Fields(lua_State* lua, int index) : m_lua(lua), m_index(index) {}

    /// Fails with the name of a field that is not among `names`.
    Status allow_only(const QStringList& names) const;
    template <class T>
    Result<std::optional<T>> get(const char* name) const
    {
        lua_pushstring(m_lua, name);
        lua_rawget(m_lua, m_index);
        auto value = Argument<std::optional<T>>::read(m_lua, lua_gettop(m_lua), QLatin1String(name));
        lua_pop(m_lua, 1);
        return value;
    }

private:
    lua_State* m_lua;
    int m_index;
};

template <>
struct Argument<Fields> {
    static Result<Fields> read(lua_State* lua, int index, QLatin1String name)
    {
        if (lua_istable(lua, index))
            return Fields(lua, index);
        return bad_argument(lua, index, name, "a table of fields");
    }
};

} // namespace tarn::script
