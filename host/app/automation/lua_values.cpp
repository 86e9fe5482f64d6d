#include "lua_values.h"

#include <cmath>

namespace tarn::script {

namespace {

struct Push {
    lua_State* lua;

    void operator()(const ScriptValue& value) const { lua::push(lua, value); }
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
    void operator()(const Data::Several& several) const
    {
        lua_checkstack(lua, int(several.results.size()) + 8);
        for (const Data& data : several.results)
            data.push(lua);
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

} // namespace

int Data::push(lua_State* lua) const
{
    const int before = lua_gettop(lua);
    lua_checkstack(lua, 8);
    std::visit(Push{lua}, m_value);
    return lua_gettop(lua) - before;
}

bool take(const ScriptValue& given, double& out)
{
    if (qint64 whole = 0; take(given, whole)) {
        out = double(whole);
        return true;
    }
    return take<double>(given, out) && std::isfinite(out);
}

bool take(const ScriptValue& given, int& out)
{
    using Limits = std::numeric_limits<int>;
    double number = 0;
    if (!take(given, number) || number != std::trunc(number) || number < Limits::min() || number > Limits::max())
        return false;
    out = int(number);
    return true;
}

Status bad_argument(lua_State* lua, int index, QLatin1String name, const char* needed)
{
    if (QString deleted; !lua::object_at(lua, index, deleted) && !deleted.isNull())
        return Status::error(deleted);
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
        // A number must not become a text here: lua_next() would lose its place.
        const bool is_text = lua_type(m_lua, -1) == LUA_TSTRING;
        const QString name = is_text ? lua::read_text(m_lua, -1) : QStringLiteral("[?]");
        if (!names.contains(name))
            unknown = name;
    }
    return unknown.isNull() ? Status() : Status::error(QStringLiteral("there is no field \"%1\"").arg(unknown));
}

} // namespace tarn::script
