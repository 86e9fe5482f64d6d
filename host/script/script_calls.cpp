#include "core/language.h"
#include "script_machine.h"

// Calls of scene functions: each has a thread of Lua's to itself, so that it can wait.

namespace tarn::scene_script {

namespace {

constexpr int max_nested = 40; ///< calls inside verbs inside calls; each needs some of the program's own stack
constexpr std::size_t max_idle = 16;

/// Marks a thread that belongs to no call now; scripts cannot resume it either.
char no_call = 0;

} // namespace

/// While it lives, a call is under way. The outermost one starts with fresh limits.
class Machine::Running {
public:
    explicit Running(Machine& machine) : m_machine(machine), m_depth(machine.depth()), m_frames(machine.m_open_frames)
    {
        if (m_machine.m_nested++ == 0)
            m_machine.begin();
        m_machine.set_depth({});
    }
    ~Running()
    {
        --m_machine.m_nested;
        m_machine.set_depth(m_depth);
        while (m_machine.m_open_frames > m_frames) // an error jumped over their ends
            m_machine.close_frame();
    }

private:
    Machine& m_machine;
    Depth m_depth;
    std::size_t m_frames;
};

struct Machine::Start {
    int function;
    std::span<const ScriptValue> arguments;
};

int Machine::begin_call(lua_State* lua)
{
    const auto& start = *static_cast<const Start*>(lua_touserdata(lua, 1));
    lua_settop(lua, 0);
    luaL_checkstack(lua, int(start.arguments.size()) + 8, nullptr);
    lua_rawgeti(lua, LUA_REGISTRYINDEX, start.function);
    for (const ScriptValue& argument : start.arguments)
        lua::push(lua, argument);
    // With a continuation: the function may yield, and then lua_callk() does not come back here.
    lua_callk(lua, int(start.arguments.size()), 1, 0, [](lua_State*, int, lua_KContext) { return 1; });
    return 1;
}

bool Machine::take_thread(Call& call)
{
    if (!m_idle.empty()) {
        std::tie(call.thread, call.reference) = m_idle.back();
        m_idle.pop_back();
    } else {
        auto make = [&call](lua_State* lua) {
            call.thread = lua_newthread(lua);
            base_of(call.thread) = &no_call;
            call.reference = luaL_ref(lua, LUA_REGISTRYINDEX);
        };
        if (protect(main(), make) != LUA_OK) {
            lua_pop(main(), 1);
            return false;
        }
    }
    base_of(call.thread) = &call;
    return true;
}

void Machine::give_back(Call& call, bool usable)
{
    base_of(call.thread) = &no_call;
    // A thread in which an error passed is never closed: after a stop no hook would fire in what that runs.
    if (usable && m_idle.size() < max_idle)
        m_idle.emplace_back(call.thread, call.reference);
    else
        luaL_unref(main(), LUA_REGISTRYINDEX, call.reference);
}

ScriptResult Machine::call(const QString& name, std::span<const ScriptValue> arguments, const ScriptObject& owner)
{
    return run_call(
        name, [&](ScriptError& error) { return compiled(name, error); }, arguments, owner);
}

ScriptResult Machine::call_text(const QString& name, const QString& text, std::span<const ScriptValue> arguments,
                                const ScriptObject& owner)
{
    return run_call(
        name, [&](ScriptError& error) { return compiled_text(name, text, error); }, arguments, owner);
}

ScriptResult Machine::run_call(const QString& name, const Compile& compile, std::span<const ScriptValue> arguments,
                               const ScriptObject& owner)
{
    const auto failed = [&](const QString& message) {
        return ScriptResult{.error = ScriptError{.function = name, .message = message, .stopped = stopped()}};
    };
    if (!main())
        return failed(lang(u"内存不足，脚本无法运行", u"there is no memory to run scripts"));
    if (m_nested >= max_nested)
        return failed(lang(u"脚本互相触发的层次过深", u"scripts set each other off too deeply"));
    const Running running(*this);
    if (stopped())
        return failed(lang(u"脚本已被停止", u"the script was stopped"));
    ScriptError error;
    const auto function = compile(error);
    if (!function)
        return {.error = error};
    auto call = std::make_unique<Call>(
        Call{.name = name, .number = m_runtime->take_call_number(), .has_owner = owner != nullptr, .owner = owner});
    if (!take_thread(*call))
        return failed(lang(u"内存不足，脚本无法运行", u"there is no memory to run scripts"));
    Start start{function.value(), arguments};
    return resume(std::move(call), &start);
}

ScriptResult Machine::resume(std::unique_ptr<Call> call, Start* start)
{
    lua_State* thread = call->thread;
    int arguments = 0;
    if (start) {
        lua_pushcfunction(thread, begin_call);
        lua_pushlightuserdata(thread, start);
        arguments = 1;
    }
    set_depth(call->depth);
    lua_State* before = enter(thread);
    int results = 0;
    // The main thread stands under protection meanwhile: Lua would end the program where it finds no other.
    int status = LUA_OK;
    auto run = [&](lua_State* lua) { status = lua_resume(thread, before ? before : lua, arguments, &results); };
    if (const int outer = protect(main(), run); outer != LUA_OK) {
        lua_pop(main(), 1);
        status = outer;
    }
    enter(before);
    if (status == LUA_YIELD && !stopped()) {
        lua_pop(thread, results);
        const quint64 number = call->number;
        suspend(std::move(call));
        return {.suspended = true, .call = number};
    }
    ScriptResult result;
    if (status == LUA_OK && !stopped())
        if (auto value = read(thread, -1); value && std::holds_alternative<Value>(*value))
            result.value = std::get<Value>(std::move(*value));
    if (status != LUA_OK || stopped())
        result.error = error_of(*call, status);
    else
        lua_settop(thread, 0);
    give_back(*call, status == LUA_OK);
    return result;
}

void Machine::suspend(std::unique_ptr<Call> call)
{
    call->depth = depth();
    m_waiting.emplace(m_runtime->now() + call->wait_seconds, std::move(call));
}

/// What is due is taken out first: a function that waits no time at all would otherwise be due again in the same tick,
/// without end.
void Machine::tick(double now)
{
    if (m_nested > 0)
        return; // A verb that ticks must not go on with scripts inside of another.
    const auto self = shared_from_this();
    const Running running(*this);
    while (!m_waiting.empty() && m_waiting.begin()->first <= now)
        m_due.insert(m_waiting.extract(m_waiting.begin()));
    const double end = processor_seconds() + limits().processor_seconds;
    while (m_runtime && !m_due.empty() && processor_seconds() < end) {
        auto call = std::move(m_due.begin()->second);
        m_due.erase(m_due.begin());
        go_on(std::move(call));
    }
    m_waiting.merge(m_due); // The rest of them, when this tick's time is used up.
}

void Machine::go_on(std::unique_ptr<Call> call)
{
    const quint64 number = call->number;
    if (const auto owner = call->owner.lock(); call->has_owner && !(owner && owner->is_attached())) {
        give_back(*call, false);
        return tell_end(number, {.suspended = true});
    }
    begin();
    m_resumed = number;
    const auto result = resume(std::move(call), nullptr);
    m_resumed = 0;
    if (result.error && m_runtime && m_runtime->on_error)
        m_runtime->on_error(*result.error);
    if (!result.suspended)
        tell_end(number, result);
}

void Machine::tell_end(quint64 call, const ScriptResult& result) const
{
    if (m_runtime && m_runtime->on_ended)
        m_runtime->on_ended(call, result);
}

std::vector<quint64> Machine::suspended_calls() const
{
    std::vector<quint64> calls;
    for (const auto* list : {&m_waiting, &m_due})
        for (const auto& [time, call] : *list)
            calls.push_back(call->number);
    if (m_resumed)
        calls.push_back(m_resumed);
    return calls;
}

} // namespace tarn::scene_script
