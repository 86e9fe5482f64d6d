// Scene functions: what a call costs from outside, and what the calls of the host cost inside, beside the bare
// interpreter.

#include "script/config_scene.h"
#include "script/script_runtime.h"

#include <lua.hpp>

#include <benchmark/benchmark.h>

namespace {

using namespace tarn;

constexpr int calls_inside = 1000;
constexpr const char* loop = "for i = 1, 1000 do add(i, 1) end";

ScriptApi api()
{
    const auto add = [](ScriptCall& call) -> Result<ScriptValue> {
        return ScriptValue(Value(call.number(0) + call.number(1)));
    };
    return {{{"add", {{"a", ScriptType::Number}, {"b", ScriptType::Number}}, {}, add}}, nullptr};
}

void run_function(benchmark::State& state, const char* text, int calls)
{
    Document document;
    CConfigScene functions(document);
    const auto name = QStringLiteral("f");
    if (!functions.set_function(name, QString::fromLatin1(text)))
        state.SkipWithError("the function cannot be added");
    ScriptRuntime runtime(functions, api());
    for (auto _ : state)
        if (!runtime.call(name).ok())
            state.SkipWithError("the function fails");
    state.SetItemsProcessed(state.iterations() * calls);
}

void call_function_tarn(benchmark::State& state)
{
    run_function(state, "return 1", 1);
}

void call_verb_tarn(benchmark::State& state)
{
    run_function(state, loop, calls_inside);
}

void run_lua(benchmark::State& state, const char* text, int calls)
{
    lua_State* lua = luaL_newstate();
    lua_register(lua, "add", [](lua_State* l) {
        lua_pushnumber(l, luaL_checknumber(l, 1) + luaL_checknumber(l, 2));
        return 1;
    });
    if (luaL_loadstring(lua, text) != LUA_OK)
        state.SkipWithError("the text cannot be compiled");
    for (auto _ : state) {
        lua_pushvalue(lua, 1);
        lua_call(lua, 0, 0);
    }
    lua_close(lua);
    state.SetItemsProcessed(state.iterations() * calls);
}

void call_function_lua(benchmark::State& state)
{
    run_lua(state, "return 1", 1);
}

void call_verb_lua(benchmark::State& state)
{
    run_lua(state, loop, calls_inside);
}

BENCHMARK(call_function_tarn)->Name("script_call/tarn")->Arg(1);
BENCHMARK(call_function_lua)->Name("script_call/bare_Lua")->Arg(1);
BENCHMARK(call_verb_tarn)->Name("script_verb/tarn")->Arg(calls_inside);
BENCHMARK(call_verb_lua)->Name("script_verb/bare_Lua")->Arg(calls_inside);

} // namespace
