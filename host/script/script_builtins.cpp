#include "core/language.h"
#include "script_machine.h"

#include <QRandomGenerator>

#include <cmath>

// What scripts have without any scene.

namespace tarn::scene_script {

namespace {

Result<ScriptValue> random_number(ScriptCall& call, QRandomGenerator& generator)
{
    if (!call.has(0))
        return ScriptValue(Value(generator.generateDouble()));
    const qint64 low = call.has(1) ? call.integer(0) : 1;
    const qint64 high = call.integer(call.has(1) ? 1 : 0);
    constexpr qint64 most = 1LL << 53;
    if (low > high || low < -most || high > most)
        return Status::error(lang(u"random 的范围无效", u"random needs a range that is not empty"));
    const double span = double(high - low) + 1;
    return ScriptValue(Value(low + qint64(std::floor(generator.generateDouble() * span))));
}

// print and time ----------------------------------------------------------------------------------------------------

bool tell(Machine& machine, lua_State* lua, Frame&)
{
    if (machine.runtime() && machine.runtime()->on_print)
        machine.runtime()->on_print(lua::read_text(lua, 1));
    return true;
}

int print(lua_State* lua)
{
    const int count = lua_gettop(lua);
    luaL_Buffer buffer;
    luaL_buffinit(lua, &buffer);
    for (int i = 1; i <= count; ++i) {
        if (i > 1)
            luaL_addchar(&buffer, '\t');
        luaL_tolstring(lua, i, nullptr);
        luaL_addvalue(&buffer);
    }
    luaL_pushresult(&buffer);
    Machine::of(lua).charge(lua, lua_rawlen(lua, -1) / 8);
    lua_insert(lua, 1);
    lua_settop(lua, 1);
    Machine::run_frame(lua, tell);
    return 0;
}

bool read_clock(Machine& machine, lua_State*, Frame& frame)
{
    frame.result = Value(machine.runtime() ? machine.runtime()->now() : 0.0);
    return true;
}

int time(lua_State* lua)
{
    return Machine::run_frame(lua, read_clock);
}

// wait and call ------------------------------------------------------------------------------------------------------

bool prepare_wait(Machine& machine, lua_State* lua, Frame& frame)
{
    auto* call = static_cast<Call*>(base_of(lua));
    const bool is_number = lua_type(lua, 1) == LUA_TNUMBER;
    const double seconds = is_number ? lua_tonumber(lua, 1) : -1;
    if (!(seconds >= 0) || seconds > machine.limits().wait_seconds)
        frame.message = lang(u"wait 需要 0 到 %1 之间的秒数", u"wait needs a number of seconds from 0 to %1")
                            .arg(machine.limits().wait_seconds);
    else if (!call || !lua_isyieldable(lua))
        frame.message = lang(u"此处不能使用 wait（协程、排序、替换或回调之中）",
                             u"wait cannot be used here (inside a coroutine, a sort, a replacement or a callback)");
    else if (machine.suspended() >= machine.limits().suspended)
        frame.message = lang(u"等待中的脚本过多（最多 %1 个）", u"too many scripts are waiting (at most %1)")
                            .arg(machine.limits().suspended);
    else
        call->wait_seconds = seconds;
    return frame.message.isNull();
}

int wait(lua_State* lua)
{
    Machine::run_frame(lua, prepare_wait);
    return lua_yield(lua, 0);
}

int finish_call(lua_State* lua, int, lua_KContext calls)
{
    Machine& machine = Machine::of(lua);
    machine.set_depth({int(calls), machine.depth().protected_calls});
    return lua_gettop(lua);
}

bool prepare_call(Machine& machine, lua_State* lua, Frame& frame)
{
    if (lua_type(lua, 1) != LUA_TSTRING) {
        frame.message = lang(u"call 需要函数的名称", u"call needs the name of a function");
    } else if (machine.depth().calls >= machine.limits().call_depth) {
        frame.message = lang(u"脚本函数互相调用的层次过深（最多 %1 层）",
                             u"functions of the scene call each other too deeply (at most %1 levels)")
                            .arg(machine.limits().call_depth);
    } else {
        ScriptError error;
        const auto function = machine.compiled(lua::read_text(lua, 1), error);
        if (function)
            lua_rawgeti(lua, LUA_REGISTRYINDEX, function.value());
        else
            frame.message = error.line > 0 ? error.text() : error.message;
        frame.on_stack = function.ok();
    }
    return frame.on_stack;
}

/// call(name, ...)
int call_function(lua_State* lua)
{
    Machine& machine = Machine::of(lua);
    Machine::run_frame(lua, prepare_call);
    lua_replace(lua, 1);
    const auto [calls, protected_calls] = machine.depth();
    machine.set_depth({calls + 1, protected_calls});
    lua_callk(lua, lua_gettop(lua) - 1, LUA_MULTRET, calls, finish_call);
    return finish_call(lua, LUA_OK, calls);
}

constexpr luaL_Reg own_verbs[]
    = {{"print", print}, {"time", time}, {"wait", wait}, {"call", call_function}, {nullptr, nullptr}};

Result<ScriptValue> find(ScriptCall& call, const ScriptObjects& objects, const char* kind)
{
    const Value& wanted = call.value(0);
    const QLatin1String name(kind);
    if (const auto* text = std::get_if<QString>(&wanted))
        return ScriptValue(objects.find(name, *text));
    const double number = call.number(0);
    if (!(number >= 0 && number <= 4294967295.0))
        return ScriptValue(ScriptObject());
    return ScriptValue(objects.find(name, quint32(number)));
}

} // namespace

std::vector<ScriptVerb> builtin_verbs(const ScriptObjects* objects, const std::shared_ptr<QRandomGenerator>& random)
{
    const ScriptParameter property{"property", ScriptType::Text, {u"属性的名称", u"the property's name"}};
    const ScriptParameter value{"value", ScriptType::Any, {u"新的值", u"its new value"}};
    std::vector<ScriptVerb> verbs{
        {.name = "print", .parameters = {}, .about = {u"写入日志", u"writes into the log"}, .more = true},
        {"time", {}, {u"场景的时间，以秒为单位", u"the scene's clock, in seconds"}},
        {"wait",
         {{"seconds", ScriptType::Number, {u"秒数", u"how long, in seconds"}}},
         {u"暂停此脚本，稍后继续", u"pauses this script and goes on later"}},
        {.name = "call",
         .parameters = {{"name", ScriptType::Text, {u"函数的名称", u"the function's name"}}},
         .about = {u"调用场景中的另一个脚本函数，返回其结果",
                   u"calls another function of the scene and returns its results"},
         .more = true},
        {"random",
         {{"low", ScriptType::Integer, {u"下限；只有一个参数时为上限", u"least; alone, the greatest number"}, true},
          {"high", ScriptType::Integer, {u"上限", u"greatest number"}, true}},
         {u"随机数：0 到 1 之间，或范围内的整数", u"a random number: from 0 to 1, or a whole one of a range"},
         [random](ScriptCall& call) { return random_number(call, *random); }},
        {"get", {property}, {u"读取属性", u"reads a property"}, {}, "object"},
        {"set", {property, value}, {u"修改属性", u"changes a property"}, {}, "object"},
    };
    if (!objects)
        return verbs;
    for (const ScriptObjects::Kind& kind : objects->kinds())
        verbs.push_back({kind.name,
                         {{"name", ScriptType::TextOrNumber, {u"名称或编号", u"its name or id"}}},
                         kind.about,
                         [objects, name = kind.name](ScriptCall& call) { return find(call, *objects, name); }});
    return verbs;
}

void open_builtins(lua_State* lua)
{
    luaL_setfuncs(lua, own_verbs, 0);
}

} // namespace tarn::scene_script
