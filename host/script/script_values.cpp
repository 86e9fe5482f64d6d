#include "script_values.h"

#include <QStringEncoder>

namespace tarn::scene_script {

namespace {

struct Push {
    lua_State* lua;

    void operator()(std::monostate) const { lua_pushnil(lua); }
    void operator()(bool flag) const { lua_pushboolean(lua, flag); }
    void operator()(qint64 number) const { lua_pushinteger(lua, number); }
    void operator()(double number) const { lua_pushnumber(lua, number); }
    void operator()(const QString& text) const { push_text(lua, text); }
    template <class T>
    void operator()(const QList<T>& list) const
    {
        luaL_checkstack(lua, 4, nullptr);
        lua_createtable(lua, int(list.size()), 0);
        for (qsizetype i = 0; i < list.size(); ++i) {
            (*this)(list[i]);
            lua_rawseti(lua, -2, i + 1);
        }
    }
    void operator()(ObjectRef reference) const { lua_pushinteger(lua, reference.id); }
    template <class T>
    void operator()(const QMap<QString, T>& map) const
    {
        luaL_checkstack(lua, 4, nullptr);
        lua_createtable(lua, 0, int(map.size()));
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            push_text(lua, entry.key());
            (*this)(*entry);
            lua_rawset(lua, -3);
        }
    }
};

/// The table at `index` when all its elements are texts. What it says of its length is no measure of what it holds.
std::optional<Value> read_list(lua_State* lua, int index, std::size_t limit, std::size_t& bytes)
{
    QStringList list;
    const lua_Unsigned count = lua_rawlen(lua, index);
    for (lua_Unsigned i = 1; i <= count; ++i) {
        const bool is_text = lua_rawgeti(lua, index, lua_Integer(i)) == LUA_TSTRING;
        if (is_text)
            bytes += lua_rawlen(lua, -1);
        const bool fits = is_text && bytes <= limit;
        if (fits)
            list.append(read_text(lua, -1));
        lua_pop(lua, 1);
        if (!fits)
            return std::nullopt;
    }
    return Value(std::move(list));
}

/// The table at `index`, which is no list, when its keys are texts and its elements all texts or all numbers.
std::optional<Value> read_map(lua_State* lua, int index, std::size_t limit, std::size_t& bytes)
{
    TextMap texts;
    NumberMap numbers;
    lua_pushnil(lua);
    while (lua_next(lua, index)) {
        const bool is_text = lua_type(lua, -1) == LUA_TSTRING;
        bool fits = lua_type(lua, -2) == LUA_TSTRING && (is_text || lua_type(lua, -1) == LUA_TNUMBER);
        if (fits)
            bytes += lua_rawlen(lua, -2) + (is_text ? lua_rawlen(lua, -1) : sizeof(double));
        fits = fits && bytes <= limit && (is_text ? numbers.isEmpty() : texts.isEmpty());
        if (!fits) {
            lua_pop(lua, 2);
            return std::nullopt;
        }
        if (is_text)
            texts.insert(read_text(lua, -2), read_text(lua, -1));
        else
            numbers.insert(read_text(lua, -2), lua_tonumber(lua, -1));
        lua_pop(lua, 1);
    }
    if (!numbers.isEmpty())
        return Value(std::move(numbers));
    return texts.isEmpty() ? Value(QStringList()) : Value(std::move(texts));
}

} // namespace

void push_text(lua_State* lua, const QString& text)
{
    constexpr qsizetype short_text = 80;
    constexpr qsizetype bytes_per_unit = 3;
    char bytes[short_text * bytes_per_unit];
    luaL_Buffer buffer;
    const bool is_short = text.size() <= short_text;
    char* const begin = is_short ? bytes : luaL_buffinitsize(lua, &buffer, std::size_t(text.size() * bytes_per_unit));
    char* end = begin;
    {
        QStringEncoder encoder(QStringEncoder::Utf8);
        end = encoder.appendToBuffer(begin, text);
    }
    if (is_short)
        lua_pushlstring(lua, begin, std::size_t(end - begin));
    else
        luaL_pushresultsize(&buffer, std::size_t(end - begin));
}

void push_value(lua_State* lua, const Value& value)
{
    std::visit(Push{lua}, value);
}

QString read_text(lua_State* lua, int index)
{
    std::size_t size = 0;
    const char* bytes = lua_tolstring(lua, index, &size);
    return QString::fromUtf8(bytes, qsizetype(size));
}

std::optional<Value> read_value(lua_State* lua, int index, std::size_t limit, std::size_t& bytes)
{
    switch (lua_type(lua, index)) {
    case LUA_TNIL:
    case LUA_TNONE: return Value();
    case LUA_TBOOLEAN: return Value(lua_toboolean(lua, index) != 0);
    case LUA_TNUMBER:
        if (lua_isinteger(lua, index))
            return Value(qint64(lua_tointeger(lua, index)));
        return Value(double(lua_tonumber(lua, index)));
    case LUA_TSTRING: bytes += lua_rawlen(lua, index); return Value(read_text(lua, index));
    case LUA_TTABLE:
        if (!lua_checkstack(lua, 3))
            return std::nullopt;
        index = lua_absindex(lua, index);
        return lua_rawlen(lua, index) == 0 ? read_map(lua, index, limit, bytes) : read_list(lua, index, limit, bytes);
    default: return std::nullopt;
    }
}

} // namespace tarn::scene_script
