#pragma once

#include "script_limits.h"

#include <lua.hpp>

#include <chrono>

namespace tarn::scene_script {

/// Why a script was stopped.
enum class Stop { None, Steps, Time, Memory, Text, List, Block, Reset };

/// Where a script is: the label of its chunk and the line, 0 when it is nowhere.
struct Place {
    char chunk[LUA_IDSIZE] = "";
    int line = 0;
};

/// A Lua state that holds to limits. Nothing in it can go on once it was stopped: protected calls and coroutines hand
/// the stop on, and no library function works longer than it is charged for.
///
/// Lua's errors leave by longjmp. Functions that Lua calls keep no C++ objects on the stack where an error may pass.
class Sandbox {
public:
    static constexpr std::size_t bytes_per_step = 8; ///< of texts that are worked through

    explicit Sandbox(const ScriptLimits& limits);
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    static Sandbox& of(lua_State* lua);
    /// The main thread; no script runs on it. Null when there was no memory for it.
    lua_State* main() const { return m_lua; }
    const ScriptLimits& limits() const { return m_limits; }
    std::size_t memory() const { return m_memory; }

    /// A call begins: steps and time start anew.
    void begin();
    bool stopped() const { return m_stop != Stop::None; }
    Stop reason() const { return m_stop; }
    /// Why the last allocation that failed was refused.
    Stop refusal() const { return m_refused; }
    const Place& place() const { return m_place; }
    /// Stops what runs at its next instruction.
    void request_stop(Stop reason);

    /// Takes `steps` off what the call may use; raises the stop when they are used up.
    void charge(lua_State* lua, std::size_t steps);
    /// The same where no error may be raised: what comes next raises it.
    void charge_quietly(std::size_t steps);
    /// After something failed under protection: raises the error on top again if the script was stopped.
    void after_failure(lua_State* lua, int status);
    /// The call's processor time is used up.
    bool out_of_time() const { return processor_seconds() > m_deadline; }

    /// The thread that runs from now on; answers the one before.
    lua_State* enter(lua_State* thread);
    /// How many are open inside each other now. Whoever counts one up puts back what was, errors may jump over that.
    struct Depth {
        int calls = 0;           ///< of functions of the scene by each other
        int protected_calls = 0; ///< pcall and xpcall
    };
    Depth depth() const { return m_depth; }
    void set_depth(Depth depth) { m_depth = depth; }

    /// Loads source text as a function onto the stack, or an error's message: also for a text that is slow to compile.
    int load(lua_State* lua, const char* text, std::size_t size, const char* label);

    static double processor_seconds();

private:
    using Clock = std::chrono::steady_clock;

    static void* allocate(void* sandbox, void* block, std::size_t old_size, std::size_t size);
    static void hook(lua_State* lua, lua_Debug* at);
    bool may_grow(std::size_t by, std::size_t size, bool is_text);
    void look_soon();
    void look_at_clock(lua_State* lua);
    void look_at_memory(lua_State* lua);
    [[noreturn]] void stop(lua_State* lua, Stop reason);
    [[noreturn]] static void raise(lua_State* lua);

    ScriptLimits m_limits;
    lua_State* m_lua = nullptr;
    lua_State* m_running = nullptr;
    std::size_t m_memory = 0;
    bool m_open = false;           ///< the libraries are in place, limits hold
    bool m_look = false;           ///< an allocation asks for a look at memory and time
    Stop m_refused = Stop::Memory; ///< why the last allocation was refused
    long long m_steps = 0;
    long long m_charged = 0; ///< since the clock was looked at
    double m_deadline = 0;   ///< in processor_seconds()
    Clock::time_point m_last_look;
    Stop m_stop = Stop::None;
    Place m_place;
    Depth m_depth;
};

/// Protected call of a function object on `lua`. Objects with destructors must stand outside of it. Answers Lua's
/// status; the error's value is left on the stack.
template <class Function>
int protect(lua_State* lua, Function& function)
{
    if (!lua_checkstack(lua, 8))
        return LUA_ERRMEM;
    lua_pushcfunction(lua, [](lua_State* state) {
        (*static_cast<Function*>(lua_touserdata(state, 1)))(state);
        return 0;
    });
    lua_pushlightuserdata(lua, &function);
    const int status = lua_pcall(lua, 1, 0, 0);
    return status;
}

/// The base of a call, as opposed to a coroutine that a script made: what is kept of it, or null.
inline void*& base_of(lua_State* thread)
{
    return *static_cast<void**>(lua_getextraspace(thread));
}

/// Makes the table of globals and the libraries.
void open_base_library(lua_State* lua);
void open_coroutines(lua_State* lua);
void open_tables(lua_State* lua);
void open_strings(lua_State* lua);
void open_plain_libraries(lua_State* lua);
/// Puts the table on top away as the library `name`, which scripts can read but not change.
void add_library(lua_State* lua, const char* name);

} // namespace tarn::scene_script
