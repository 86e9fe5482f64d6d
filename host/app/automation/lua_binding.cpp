#include "lua_binding.h"

namespace tarn::script {

namespace {

constexpr int upvalue_automation = 1;
constexpr int upvalue_arguments = 2;

} // namespace

void set_functions(lua_State* lua, Automation& app, std::span<const Binding> functions)
{
    for (const Binding& row : functions) {
        lua_pushlightuserdata(lua, &app);
        lua_pushstring(lua, row.arguments);
        lua_pushcclosure(lua, row.function, 2);
        lua_setfield(lua, -2, row.name);
    }
}

namespace detail {

QLatin1String argument_name(lua_State* lua, std::size_t i)
{
    const char* names = lua_tostring(lua, lua_upvalueindex(upvalue_arguments));
    return QLatin1String(names).tokenize(QLatin1Char(' ')).toContainer<QList<QLatin1String>>().value(qsizetype(i));
}

Automation& automation_of(lua_State* lua)
{
    return *static_cast<Automation*>(lua_touserdata(lua, lua_upvalueindex(upvalue_automation)));
}

int run(lua_State* lua, Result<Data> (*call)(lua_State*))
{
    const auto result = call(lua);
    const Status status = automation_of(lua).take_box_failure(result.status());
    if (status)
        return result.value().push(lua);
    lua::push_text(lua, status.message());
    return -1;
}

} // namespace detail

} // namespace tarn::script
