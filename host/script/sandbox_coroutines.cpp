#include "sandbox.h"

// Coroutines: Lua's own library with a stop that passes through, and with the threads of calls out of reach.

namespace tarn::scene_script {

namespace {

constexpr int resume_cost = 50;
constexpr int create_cost = 200;

lua_State* thread_argument(lua_State* lua)
{
    lua_State* thread = lua_tothread(lua, 1);
    luaL_argexpected(lua, thread, 1, "coroutine");
    return thread;
}

/// Answers the number of results, which are on the stack of `lua`, or -1 with the error's value on it.
int resume(lua_State* lua, lua_State* thread, int arguments)
{
    Sandbox& sandbox = Sandbox::of(lua);
    sandbox.charge(lua, resume_cost);
    // The thread of a call of the host's goes on when its wait is over. A script that got hold of it (running() gives it
    // away) must not resume it in between.
    if (base_of(thread)) {
        lua_pushliteral(lua, "cannot resume non-suspended coroutine");
        return -1;
    }
    if (!lua_checkstack(thread, arguments)) {
        lua_pushliteral(lua, "too many arguments to resume");
        return -1;
    }
    lua_xmove(lua, thread, arguments);
    // A coroutine that yields, or fails, leaves calls under way whose ends are never reached: their counts go with it.
    const auto depth = sandbox.depth();
    lua_State* before = sandbox.enter(thread);
    int results = 0;
    const int status = lua_resume(thread, lua, arguments, &results);
    sandbox.enter(before);
    sandbox.set_depth(depth);
    if (status != LUA_OK && status != LUA_YIELD) {
        lua_xmove(thread, lua, 1);
        sandbox.after_failure(lua, status);
        return -1;
    }
    if (!lua_checkstack(lua, results + 1)) {
        lua_pop(thread, results);
        lua_pushliteral(lua, "too many results to resume");
        return -1;
    }
    lua_xmove(thread, lua, results);
    return results;
}

int create(lua_State* lua)
{
    luaL_checktype(lua, 1, LUA_TFUNCTION);
    Sandbox::of(lua).charge(lua, create_cost);
    lua_State* thread = lua_newthread(lua);
    lua_pushvalue(lua, 1);
    lua_xmove(lua, thread, 1);
    return 1;
}

int resume_protected(lua_State* lua)
{
    const int results = resume(lua, thread_argument(lua), lua_gettop(lua) - 1);
    lua_pushboolean(lua, results >= 0);
    lua_insert(lua, results >= 0 ? -results - 1 : -2);
    return results >= 0 ? results + 1 : 2;
}

int resume_wrapped(lua_State* lua)
{
    const int results = resume(lua, lua_tothread(lua, lua_upvalueindex(1)), lua_gettop(lua));
    return results >= 0 ? results : lua_error(lua);
}

int wrap(lua_State* lua)
{
    create(lua);
    lua_pushcclosure(lua, resume_wrapped, 1);
    return 1;
}

int yield(lua_State* lua)
{
    if (base_of(lua))
        return luaL_error(lua, "attempt to yield from outside a coroutine");
    return lua_yield(lua, lua_gettop(lua));
}

const char* status_name(lua_State* lua, lua_State* thread)
{
    if (thread == lua)
        return "running";
    if (base_of(thread))
        return "normal";
    if (lua_status(thread) == LUA_YIELD)
        return "suspended";
    if (lua_status(thread) != LUA_OK)
        return "dead";
    // It neither yielded nor failed: with a frame it is resuming another one, without one it has not begun or is done.
    lua_Debug at;
    if (lua_getstack(thread, 0, &at))
        return "normal";
    return lua_gettop(thread) == 0 ? "dead" : "suspended";
}

int status(lua_State* lua)
{
    lua_pushstring(lua, status_name(lua, thread_argument(lua)));
    return 1;
}

int close(lua_State* lua)
{
    lua_State* thread = thread_argument(lua);
    Sandbox& sandbox = Sandbox::of(lua);
    sandbox.charge(lua, resume_cost);
    const char* name = status_name(lua, thread);
    if (*name != 's' && *name != 'd')
        return luaL_error(lua, "cannot close a %s coroutine", name);
    if (lua_status(thread) != LUA_OK && lua_status(thread) != LUA_YIELD) {
        // It may have been stopped by our hook, and then no hook would fire in what closing it runs.
        lua_pushboolean(lua, 0);
        lua_pushliteral(lua, "the coroutine failed");
        return 2;
    }
    // Lua does not count the levels of these calls.
    const auto depth = sandbox.depth();
    if (depth.calls >= sandbox.limits().call_depth)
        return luaL_error(lua, "coroutines are closed inside each other too deeply");
    sandbox.set_depth({depth.calls + 1, depth.protected_calls});
    lua_State* before = sandbox.enter(thread);
    const int result = lua_resetthread(thread);
    sandbox.enter(before);
    sandbox.set_depth(depth);
    lua_pushboolean(lua, result == LUA_OK);
    if (result == LUA_OK)
        return 1;
    lua_xmove(thread, lua, 1);
    sandbox.after_failure(lua, result);
    return 2;
}

int running(lua_State* lua)
{
    lua_pushthread(lua);
    lua_pushboolean(lua, base_of(lua) != nullptr);
    return 2;
}

int is_yieldable(lua_State* lua)
{
    lua_pushboolean(lua, lua_isyieldable(lua) && !base_of(lua));
    return 1;
}

constexpr luaL_Reg functions[] = {{"create", create},   {"resume", resume_protected},
                                  {"wrap", wrap},       {"yield", yield},
                                  {"status", status},   {"close", close},
                                  {"running", running}, {"isyieldable", is_yieldable},
                                  {nullptr, nullptr}};

} // namespace

void open_coroutines(lua_State* lua)
{
    luaL_newlib(lua, functions);
    add_library(lua, "coroutine");
}

} // namespace tarn::scene_script
