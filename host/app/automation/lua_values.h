#pragma once

#include "core/status.h"
#include "core/value.h"

#include <lua.hpp>

#include <concepts>
#include <functional>
#include <optional>
#include <variant>
#include <vector>

namespace tarn::script {

/// What a binding answers, on its way to Lua.
class Data {
public:
    using List = std::vector<Data>;
    using Record = std::vector<std::pair<const char*, Data>>;
    using Pusher = std::function<void(lua_State*)>;

    Data() = default; ///< nil
    template <std::same_as<bool> Flag>
    Data(Flag flag) : m_value(flag)
    {
    }
    template <std::integral Number>
        requires(!std::same_as<Number, bool>)
    Data(Number number) : m_value(qint64(number)) {}
    Data(double number) : m_value(number) {}
    Data(const QString& text) : m_value(text) {}
    Data(List list) : m_value(std::move(list)) {}
    Data(Record record) : m_value(std::move(record)) {}
    /// Something that puts itself onto Lua's stack: a handle.
    Data(Pusher pusher) : m_value(std::move(pusher)) {}
    Data(const QStringList& texts);
    Data(const Value& value);

    void push(lua_State* lua) const;

private:
    std::variant<std::monostate, bool, qint64, double, QString, List, Record, Pusher> m_value;
};

/// Several results of one call.
using Several = std::vector<Data>;

template <class Items, class Convert>
Data::List list_of(const Items& items, Convert convert)
{
    Data::List list;
    for (const auto& item : items)
        list.push_back(convert(item));
    return list;
}

/// How an argument of type T is read. Nothing here converts: a text is no number and 0 is not false.
template <class T>
struct Argument;

template <>
struct Argument<bool> {
    static constexpr const char* needed = "true or false";
    static std::optional<bool> read(lua_State* lua, int index);
};

template <>
struct Argument<int> {
    static constexpr const char* needed = "a whole number";
    static std::optional<int> read(lua_State* lua, int index);
};

template <>
struct Argument<double> {
    static constexpr const char* needed = "a number";
    static std::optional<double> read(lua_State* lua, int index);
};

template <>
struct Argument<QString> {
    static constexpr const char* needed = "a text";
    static std::optional<QString> read(lua_State* lua, int index);
};

template <>
struct Argument<Value> {
    static constexpr const char* needed = "true, false, a number, a text, or a list or table of texts or of numbers";
    static std::optional<Value> read(lua_State* lua, int index);
};

/// An argument that may be left out.
template <class T>
struct Argument<std::optional<T>> {
    static constexpr const char* needed = Argument<T>::needed;
    static std::optional<std::optional<T>> read(lua_State* lua, int index)
    {
        if (lua_isnoneornil(lua, index))
            return std::optional<T>();
        auto value = Argument<T>::read(lua, index);
        return value ? std::optional<std::optional<T>>(std::move(value)) : std::nullopt;
    }
};

/// All arguments from here on.
struct Rest {
    lua_State* lua;
    int first;
    int count() const { return std::max(0, lua_gettop(lua) - first + 1); }
    int index(int i) const { return first + i; }
};

template <>
struct Argument<Rest> {
    static constexpr const char* needed = "";
    static std::optional<Rest> read(lua_State* lua, int index) { return Rest{lua, index}; }
};

/// "bad argument "w": a whole number is needed, not a string"
Status bad_argument(lua_State* lua, int index, QLatin1String name, const char* needed);

template <class T>
Result<T> argument(lua_State* lua, int index, QLatin1String name)
{
    if (auto value = Argument<T>::read(lua, index))
        return std::move(*value);
    return bad_argument(lua, index, name, Argument<T>::needed);
}

/// Every argument of `rest`, all of type T.
template <class T>
Result<std::vector<T>> all_of(const Rest& rest, QLatin1String name)
{
    std::vector<T> values;
    for (int i = 0; i < rest.count(); ++i) {
        auto value = argument<T>(rest.lua, rest.index(i), name);
        if (!value)
            return value.status();
        values.push_back(std::move(value.value()));
    }
    return values;
}

/// A table of named fields as the one argument of a call: {name=..., x=...}.
class Fields {
public:
    Fields(lua_State* lua, int index) : m_lua(lua), m_index(index) {}

    /// Fails with the name of a field that is not among `names`.
    Status allow_only(const QStringList& names) const;
    /// The field, or `otherwise` when it is missing.
    template <class T>
    Result<T> get(const char* name, T otherwise) const
    {
        lua_pushstring(m_lua, name);
        lua_rawget(m_lua, m_index);
        auto value = lua_isnil(m_lua, -1) ? Result<T>(std::move(otherwise))
                                          : argument<T>(m_lua, lua_gettop(m_lua), QLatin1String(name));
        lua_pop(m_lua, 1);
        return value;
    }

private:
    lua_State* m_lua;
    int m_index;
};

template <>
struct Argument<Fields> {
    static constexpr const char* needed = "a table of fields";
    static std::optional<Fields> read(lua_State* lua, int index)
    {
        return lua_istable(lua, index) ? std::optional(Fields(lua, index)) : std::nullopt;
    }
};

} // namespace tarn::script
