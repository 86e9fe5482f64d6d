#include "sandbox.h"

// The base library: what Lua has, without loading code and handling the collector, and such that a script's protected
// calls do not hold up its stop.

namespace tarn::scene_script {

namespace {

constexpr int small_cost = 4;
constexpr int call_cost = 30;

// Protected calls -----------------------------------------------------------------------------------------------------

/// Lua unwinds them one by one and looks at the whole stack each time, so there must not be many inside each other.
constexpr int max_protected = 150;

/// What was open when a protected call began, and in the last bit whether a handler stands below its results.
lua_KContext enter_protected(lua_State* lua, bool handler)
{
    Sandbox& sandbox = Sandbox::of(lua);
    sandbox.charge(lua, call_cost);
    const auto [calls, protected_calls] = sandbox.depth();
    if (protected_calls >= max_protected)
        luaL_error(lua, "protected calls are nested too deeply");
    sandbox.set_depth({calls, protected_calls + 1});
    return (((lua_KContext(protected_calls) << 16) + calls) << 1) + handler;
}

int finish_protected(lua_State* lua, int status, lua_KContext context)
{
    Sandbox& sandbox = Sandbox::of(lua);
    sandbox.set_depth({int(context >> 1) & 0xffff, int(context >> 17)});
    if (status == LUA_OK || status == LUA_YIELD)
        return lua_gettop(lua) - ((context & 1) ? 2 : 0);
    sandbox.after_failure(lua, status);
    lua_pushboolean(lua, 0);
    lua_pushvalue(lua, -2);
    return 2;
}

int protected_call(lua_State* lua)
{
    luaL_checkany(lua, 1);
    const lua_KContext context = enter_protected(lua, false);
    lua_pushboolean(lua, 1);
    lua_insert(lua, 1);
    const int status = lua_pcallk(lua, lua_gettop(lua) - 2, LUA_MULTRET, 0, context, finish_protected);
    return finish_protected(lua, status, context);
}

/// Lua calls the handler where the error is raised, and inside our hook no hook fires. So a stop never reaches the
/// script's own handler.
int handle_error(lua_State* lua)
{
    if (Sandbox::of(lua).stopped())
        return 1;
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_insert(lua, 1);
    lua_call(lua, lua_gettop(lua) - 1, 1);
    return 1;
}

int protected_call_with_handler(lua_State* lua)
{
    const int count = lua_gettop(lua);
    luaL_checktype(lua, 2, LUA_TFUNCTION);
    const lua_KContext context = enter_protected(lua, true);
    lua_pushvalue(lua, 2);
    lua_pushcclosure(lua, handle_error, 1);
    lua_replace(lua, 2);
    lua_pushboolean(lua, 1);
    lua_pushvalue(lua, 1);
    lua_rotate(lua, 3, 2);
    const int status = lua_pcallk(lua, count - 2, LUA_MULTRET, 2, context, finish_protected);
    return finish_protected(lua, status, context);
}

// Metatables ----------------------------------------------------------------------------------------------------------

// What a table really gets is a copy of the metatable, kept inside it under a key that scripts cannot see. So nobody
// can put "__gc" (Lua runs finalizers without our hook) or "__mode" (a collection over chained weak keys takes quadratic
// time) into a metatable that is in use.
const char copy_key = 0;
const char original_key = 0;

constexpr const char* events[] = {"__index",     "__newindex", "__call", "__tostring", "__name",   "__pairs", "__close",
                                  "__metatable", "__eq",       "__lt",   "__le",       "__concat", "__len",   "__unm",
                                  "__bnot",      "__add",      "__sub",  "__mul",      "__div",    "__mod",   "__pow",
                                  "__idiv",      "__band",     "__bor",  "__bxor",     "__shl",    "__shr"};

/// Stands for an __index that is given to a metatable only after it was set.
int late_index(lua_State* lua)
{
    Sandbox::of(lua).charge(lua, small_cost);
    lua_pushliteral(lua, "__index");
    lua_rawget(lua, lua_upvalueindex(1));
    if (lua_isnil(lua, -1))
        return 1;
    if (lua_isfunction(lua, -1)) {
        lua_insert(lua, 1);
        lua_call(lua, 2, 1);
        return 1;
    }
    lua_pushvalue(lua, 2);
    lua_gettable(lua, -2);
    return 1;
}

/// Pushes the up-to-date copy of the metatable at `index`.
void push_copy(lua_State* lua, int index)
{
    if (lua_rawgetp(lua, index, &copy_key) != LUA_TTABLE) {
        lua_pop(lua, 1);
        lua_newtable(lua);
        lua_pushvalue(lua, index);
        lua_rawsetp(lua, -2, &original_key);
        lua_pushvalue(lua, -1);
        lua_rawsetp(lua, index, &copy_key);
    }
    for (const char* event : events) {
        lua_pushstring(lua, event);
        lua_pushvalue(lua, -1);
        if (lua_rawget(lua, index) == LUA_TNIL && event == events[0]) {
            lua_pop(lua, 1);
            lua_pushvalue(lua, index);
            lua_pushcclosure(lua, late_index, 1);
        }
        lua_rawset(lua, -3);
    }
}

int set_metatable(lua_State* lua)
{
    luaL_checktype(lua, 1, LUA_TTABLE);
    luaL_argexpected(lua, lua_isnil(lua, 2) || lua_istable(lua, 2), 2, "nil or table");
    Sandbox::of(lua).charge(lua, 40);
    if (luaL_getmetafield(lua, 1, "__metatable") != LUA_TNIL)
        return luaL_error(lua, "cannot change a protected metatable");
    lua_settop(lua, 2);
    if (lua_istable(lua, 2)) {
        for (const char* refused : {"__gc", "__mode"}) {
            lua_pushstring(lua, refused);
            if (lua_rawget(lua, 2) != LUA_TNIL)
                return luaL_error(lua, "scripts cannot use '%s'", refused);
            lua_pop(lua, 1);
        }
        push_copy(lua, 2);
    }
    lua_setmetatable(lua, 1);
    lua_settop(lua, 1);
    return 1;
}

int get_metatable(lua_State* lua)
{
    luaL_checkany(lua, 1);
    if (luaL_getmetafield(lua, 1, "__metatable") != LUA_TNIL || !lua_getmetatable(lua, 1))
        return 1;
    lua_rawgetp(lua, -1, &original_key);
    return 1;
}

int next_entry(lua_State* lua)
{
    luaL_checktype(lua, 1, LUA_TTABLE);
    Sandbox::of(lua).charge(lua, small_cost);
    lua_settop(lua, 2);
    while (lua_next(lua, 1)) {
        if (!lua_islightuserdata(lua, -2))
            return 2;
        lua_pop(lua, 1);
    }
    lua_pushnil(lua);
    return 1;
}

int pairs(lua_State* lua)
{
    luaL_checkany(lua, 1);
    Sandbox::of(lua).charge(lua, small_cost);
    if (luaL_getmetafield(lua, 1, "__pairs") == LUA_TNIL) {
        lua_pushcfunction(lua, next_entry);
        lua_pushvalue(lua, 1);
        lua_pushnil(lua);
        return 3;
    }
    lua_pushvalue(lua, 1);
    lua_callk(lua, 1, 3, 0, [](lua_State*, int, lua_KContext) { return 3; });
    return 3;
}

// Libraries ----------------------------------------------------------------------------------------------------------

/// Lua's own function, charged for the length of its texts and the number of its arguments.
int charged(lua_State* lua)
{
    std::size_t cost = std::size_t(lua_gettop(lua));
    for (int i = 1; i <= lua_gettop(lua) && i <= 3; ++i)
        if (lua_type(lua, i) == LUA_TSTRING)
            cost += lua_rawlen(lua, i) / 8;
    Sandbox::of(lua).charge(lua, cost);
    return lua_tocfunction(lua, lua_upvalueindex(1))(lua);
}

constexpr const char* base_functions[] = {"assert", "error",  "ipairs",   "rawequal", "rawget", "rawlen",
                                          "rawset", "select", "tonumber", "tostring", "type"};

constexpr luaL_Reg own_functions[] = {{"pcall", protected_call},
                                      {"xpcall", protected_call_with_handler},
                                      {"setmetatable", set_metatable},
                                      {"getmetatable", get_metatable},
                                      {"next", next_entry},
                                      {"pairs", pairs},
                                      {nullptr, nullptr}};

/// Copies functions of the library at `from` into the table on top.
template <std::size_t count>
void take_charged(lua_State* lua, int from, const char* const (&names)[count])
{
    for (const char* name : names) {
        lua_getfield(lua, from, name);
        lua_pushcclosure(lua, charged, 1);
        lua_setfield(lua, -2, name);
    }
}

int refuse_change(lua_State* lua)
{
    return luaL_error(lua, "the functions of the program cannot be changed");
}

} // namespace

void open_base_library(lua_State* lua)
{
    lua_pushcfunction(lua, luaopen_base); // fills the present table of globals, which scripts never see
    lua_call(lua, 0, 1);
    lua_newtable(lua);
    take_charged(lua, lua_gettop(lua) - 1, base_functions);
    luaL_setfuncs(lua, own_functions, 0);
    lua_pushliteral(lua, "Lua 5.4");
    lua_setfield(lua, -2, "_VERSION");
    lua_setfield(lua, LUA_REGISTRYINDEX, "builtins");

    // The globals: a table of the scripts' own in front of what the program gives.
    lua_newtable(lua);
    lua_newtable(lua);
    lua_getfield(lua, LUA_REGISTRYINDEX, "builtins");
    lua_setfield(lua, -2, "__index");
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_setmetatable(lua, -2);
    lua_pushvalue(lua, -1);
    lua_setfield(lua, -2, "_G");
    lua_rawseti(lua, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
}

void add_library(lua_State* lua, const char* name)
{
    lua_getfield(lua, LUA_REGISTRYINDEX, "builtins");
    lua_newtable(lua);
    lua_createtable(lua, 0, 3);
    lua_pushvalue(lua, -4);
    lua_setfield(lua, -2, "__index");
    lua_pushcfunction(lua, refuse_change);
    lua_setfield(lua, -2, "__newindex");
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_setmetatable(lua, -2);
    lua_setfield(lua, -2, name);
    lua_pop(lua, 2);
}

void open_plain_libraries(lua_State* lua)
{
    static constexpr const char* utf8[] = {"char", "codepoint", "codes", "len", "offset"};
    lua_pushcfunction(lua, luaopen_utf8);
    lua_call(lua, 0, 1);
    lua_newtable(lua);
    take_charged(lua, lua_gettop(lua) - 1, utf8);
    lua_getfield(lua, -2, "charpattern");
    lua_setfield(lua, -2, "charpattern");
    add_library(lua, "utf8");

    lua_pushcfunction(lua, luaopen_math);
    lua_call(lua, 0, 1);
    add_library(lua, "math");
}

} // namespace tarn::scene_script
