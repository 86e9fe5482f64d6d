#include "lua_values.h"

#include <cmath>
#include <limits>

namespace tarn::script {

namespace {

void push_text(lua_State* lua, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    lua_pushlstring(lua, bytes.constData(), std::size_t(bytes.size()));
}

struct Push {
    lua_State* lua;

    void operator()(std::monostate) const { lua_pushnil(lua); }
    void operator()(bool flag) const { lua_pushboolean(lua, flag); }
    void operator()(qint64 number) const { lua_pushinteger(lua, number); }
    void operator()(double number) const { lua_pushnumber(lua, number); }
    void operator()(const QString& text) const { push_text(lua, text); }
    void operator()(const Data::Pusher& pusher) const { pusher(lua); }
    void operator()(const Data::List& list) const
    {
        lua_createtable(lua, int(list.size()), 0);
        lua_Integer place = 0;
        for (const Data& item : list) {
            item.push(lua);
            lua_rawseti(lua, -2, ++place);
        }
    }
    void operator()(const Data::Record& record) const
    {
        lua_createtable(lua, 0, int(record.size()));
        for (const auto& [name, value] : record) {
            lua_pushstring(lua, name);
            value.push(lua);
            lua_rawset(lua, -3);
        }
    }
};

/// An array of which every element is a T.
template <class T>
std::optional<QList<T>> read_array(lua_State* lua, int index)
{
    QList<T> items;
    const auto count = lua_rawlen(lua, index);
    for (lua_Unsigned i = 1; i <= count; ++i) {
        lua_rawgeti(lua, index, lua_Integer(i));
        const auto item = Argument<T>::read(lua, lua_gettop(lua));
        lua_pop(lua, 1);
        if (!item)
            return std::nullopt;
        items.append(*item);
    }
    return items;
}

/// The table at `index` when all its keys are texts and all its elements T.
template <class T>
std::optional<QMap<QString, T>> read_map(lua_State* lua, int index)
{
    QMap<QString, T> map;
    lua_pushnil(lua);
    while (lua_next(lua, index)) {
        const auto name = Argument<QString>::read(lua, lua_gettop(lua) - 1);
        const auto item = Argument<T>::read(lua, lua_gettop(lua));
        lua_pop(lua, 1);
        if (!name || !item) {
            lua_pop(lua, 1);
            return std::nullopt;
        }
        map.insert(*name, *item);
    }
    return map;
}

template <class T>
Data::Pusher table_pusher(const QMap<QString, T>& map)
{
    return [map](lua_State* lua) {
        lua_createtable(lua, 0, int(map.size()));
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            push_text(lua, entry.key());
            Data(*entry).push(lua);
            lua_rawset(lua, -3);
        }
    };
}

} // namespace

Data::Data(const QStringList& texts) : m_value(list_of(texts, [](const QString& text) { return Data(text); })) {}

Data::Data(const Value& value)
{
    const auto take = [this](const auto& held) {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, QStringList>)
            *this = Data(held);
        else if constexpr (std::is_same_v<Held, NumberList>)
            *this = Data(list_of(held, [](double number) { return Data(number); }));
        else if constexpr (std::is_same_v<Held, ObjectRef>)
            *this = Data(held.id);
        else if constexpr (std::is_same_v<Held, IdList>)
            *this = Data(list_of(held, [](ObjectRef reference) { return Data(reference.id); }));
        else if constexpr (std::is_same_v<Held, TextMap> || std::is_same_v<Held, NumberMap>)
            *this = Data(table_pusher(held));
        else
            m_value = held;
    };
    std::visit(take, value);
}

void Data::push(lua_State* lua) const
{
    lua_checkstack(lua, 4);
    std::visit(Push{lua}, m_value);
}

std::optional<bool> Argument<bool>::read(lua_State* lua, int index)
{
    return lua_isboolean(lua, index) ? std::optional(lua_toboolean(lua, index) != 0) : std::nullopt;
}

std::optional<int> Argument<int>::read(lua_State* lua, int index)
{
    int is_whole = 0;
    const lua_Integer number = lua_type(lua, index) == LUA_TNUMBER ? lua_tointegerx(lua, index, &is_whole) : 0;
    using Limits = std::numeric_limits<int>;
    if (!is_whole || number < Limits::min() || number > Limits::max())
        return std::nullopt;
    return int(number);
}

std::optional<double> Argument<double>::read(lua_State* lua, int index)
{
    if (lua_type(lua, index) != LUA_TNUMBER || !std::isfinite(lua_tonumber(lua, index)))
        return std::nullopt;
    return lua_tonumber(lua, index);
}

std::optional<QString> Argument<QString>::read(lua_State* lua, int index)
{
    // lua_tolstring() would turn a number on the stack into a text.
    if (lua_type(lua, index) != LUA_TSTRING)
        return std::nullopt;
    std::size_t length = 0;
    const char* bytes = lua_tolstring(lua, index, &length);
    return QString::fromUtf8(bytes, qsizetype(length));
}

std::optional<Value> Argument<Value>::read(lua_State* lua, int index)
{
    switch (lua_type(lua, index)) {
    case LUA_TBOOLEAN: return Value(lua_toboolean(lua, index) != 0);
    case LUA_TNUMBER:
        if (lua_isinteger(lua, index))
            return Value(qint64(lua_tointeger(lua, index)));
        return Value(double(lua_tonumber(lua, index)));
    case LUA_TSTRING: return Value(*Argument<QString>::read(lua, index));
    case LUA_TTABLE:
        index = lua_absindex(lua, index);
        if (lua_rawlen(lua, index) == 0) {
            if (auto texts = read_map<QString>(lua, index))
                return texts->isEmpty() ? Value(QStringList()) : Value(std::move(*texts));
            if (auto numbers = read_map<double>(lua, index))
                return Value(std::move(*numbers));
            return std::nullopt;
        }
        if (auto texts = read_array<QString>(lua, index))
            return Value(QStringList(std::move(*texts)));
        if (auto numbers = read_array<double>(lua, index))
            return Value(std::move(*numbers));
        return std::nullopt;
    default: return std::nullopt;
    }
}

Status bad_argument(lua_State* lua, int index, QLatin1String name, const char* needed)
{
    const char* given = lua_isnone(lua, index) ? "nothing" : luaL_typename(lua, index);
    return Status::error(QStringLiteral("bad argument \"%1\": %2 is needed, not %3")
                             .arg(name, QLatin1String(needed), QLatin1String(given)));
}

Status Fields::allow_only(const QStringList& names) const
{
    QString unknown;
    lua_pushnil(m_lua);
    while (lua_next(m_lua, m_index)) {
        lua_pop(m_lua, 1);
        const QString name = Argument<QString>::read(m_lua, lua_gettop(m_lua)).value_or(QStringLiteral("[?]"));
        if (!names.contains(name))
            unknown = name;
    }
    return unknown.isNull() ? Status() : Status::error(QStringLiteral("there is no field \"%1\"").arg(unknown));
}

} // namespace tarn::script
