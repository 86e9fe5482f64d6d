#include "sandbox.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>

namespace tarn::scene_script {

namespace {

constexpr int hook_interval = 64; ///< instructions; some of them work through a whole text
constexpr int steps_between_looks = 2048;
constexpr auto look_interval = std::chrono::microseconds(500);
constexpr std::size_t reserve = 256 * 1024; ///< for small blocks, so that Lua itself never runs out
constexpr std::size_t small_block = 4096;
constexpr std::size_t text_header = 64;
/// The compiler's time grows with the square of the jumps in one block.
constexpr int max_jumps = 2000;
constexpr std::size_t piece = 256; ///< bytes the compiler gets at a time; the clock is looked at between them

int count_of(const char* text, std::size_t size, const char* word)
{
    int count = 0;
    const char* end = text + size;
    const std::size_t length = std::strlen(word);
    for (const char* at = text; (at = std::search(at, end, word, word + length)) != end; at += length)
        ++count;
    return count;
}

struct Source {
    const char* at;
    std::size_t left;
    double deadline;

    static const char* read(lua_State* lua, void* data, std::size_t* size)
    {
        auto& source = *static_cast<Source*>(data);
        if (Sandbox::processor_seconds() > source.deadline)
            luaL_error(lua, "the text takes too long to compile");
        *size = std::min(piece, source.left);
        const char* text = source.at;
        source.at += *size;
        source.left -= *size;
        return text;
    }
};

} // namespace

double Sandbox::processor_seconds()
{
#ifdef CLOCK_THREAD_CPUTIME_ID
    // Of this thread: a busy machine must not stop scripts that did little.
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
#else
    return double(std::clock()) / CLOCKS_PER_SEC;
#endif
}

Sandbox::Sandbox(const ScriptLimits& limits) : m_limits(limits)
{
    m_lua = lua_newstate(allocate, this);
    if (!m_lua)
        return;
    base_of(m_lua) = nullptr;
    auto open = [](lua_State* lua) {
        open_base_library(lua);
        open_coroutines(lua);
        open_tables(lua);
        open_strings(lua);
        open_plain_libraries(lua);
    };
    if (protect(m_lua, open) != LUA_OK) {
        lua_close(m_lua);
        m_lua = nullptr;
        return;
    }
    lua_sethook(m_lua, hook, LUA_MASKCOUNT, hook_interval); // threads inherit it
    m_open = true;
}

Sandbox::~Sandbox()
{
    if (m_lua)
        lua_close(m_lua);
}

Sandbox& Sandbox::of(lua_State* lua)
{
    void* sandbox = nullptr;
    lua_getallocf(lua, &sandbox);
    return *static_cast<Sandbox*>(sandbox);
}

/// Every byte of Lua's passes here. Nothing may be raised from an allocator, so a refusal is a null pointer, whose reason is
/// kept until someone may raise it (after_failure), and whatever takes long is left to the next hook (look_soon).
void* Sandbox::allocate(void* sandbox, void* block, std::size_t old_size, std::size_t size)
{
    auto& self = *static_cast<Sandbox*>(sandbox);
    const std::size_t before = block ? old_size : 0;
    if (size == 0) {
        std::free(block);
        self.m_memory -= before;
        return nullptr;
    }
    // For a new block the "old size" tells what it is for.
    if (size > before && !self.may_grow(size - before, size, !block && old_size == LUA_TSTRING))
        return nullptr;
    void* grown = std::realloc(block, size);
    if (grown)
        self.m_memory = self.m_memory - before + size;
    return grown;
}

bool Sandbox::may_grow(std::size_t by, std::size_t size, bool is_text)
{
    if (!m_open)
        return true;
    // Two limits. Large blocks stop at the lower one; what Lua needs to go on at all (frames, errors, short texts) has
    // the reserve above it, and before that is used up a hook has collected the garbage or stopped the script.
    const std::size_t soft = m_limits.memory - reserve;
    const std::size_t then = m_memory + by;
    if (is_text && size > m_limits.text + text_header)
        m_refused = Stop::Text;
    else if (size > m_limits.block)
        m_refused = Stop::Block;
    else if (then > (size > small_block ? soft : m_limits.memory))
        m_refused = Stop::Memory;
    else {
        if (then > soft)
            look_soon();
        return true;
    }
    // Lua now collects all garbage and asks once more. That takes long, so it must not happen often.
    look_soon();
    return false;
}

/// A count of one makes the hook fire at the next instruction, which is the first place where an error may be raised. The
/// hook sets the usual count again.
void Sandbox::look_soon()
{
    m_look = true;
    if (m_running)
        lua_sethook(m_running, hook, LUA_MASKCOUNT, 1);
}

void Sandbox::request_stop(Stop reason)
{
    if (m_stop == Stop::None)
        m_stop = reason;
    if (m_running)
        lua_sethook(m_running, hook, LUA_MASKCOUNT, 1);
}

lua_State* Sandbox::enter(lua_State* thread)
{
    return std::exchange(m_running, thread);
}

void Sandbox::begin()
{
    m_steps = m_limits.steps;
    m_charged = 0;
    m_deadline = processor_seconds() + m_limits.processor_seconds;
    m_last_look = Clock::now();
    m_stop = Stop::None;
    m_place = {};
    m_look = false;
}

void Sandbox::raise(lua_State* lua)
{
    lua_pushliteral(lua, "stopped");
    lua_error(lua);
    std::abort(); // lua_error() does not return
}

void Sandbox::stop(lua_State* lua, Stop reason)
{
    m_stop = reason;
    lua_Debug at{};
    // The innermost level may be a C function, which has no line: the script that called it is blamed.
    for (int level = 0; level < 4 && m_place.line == 0 && lua_getstack(lua, level, &at); ++level) {
        lua_getinfo(lua, "Sl", &at);
        if (at.currentline <= 0)
            continue;
        std::copy(std::begin(at.short_src), std::end(at.short_src), m_place.chunk);
        m_place.line = at.currentline;
    }
    // What still runs (variables that are closed) gets one instruction each.
    lua_sethook(lua, hook, LUA_MASKCOUNT, 1);
    raise(lua);
}

void Sandbox::hook(lua_State* lua, lua_Debug*)
{
    Sandbox& self = of(lua);
    // A script can catch the error of a stop; it is raised again at every instruction that follows.
    if (self.stopped())
        self.m_place.line ? raise(lua) : self.stop(lua, self.m_stop);
    if (lua_gethookcount(lua) != hook_interval)
        lua_sethook(lua, hook, LUA_MASKCOUNT, hook_interval);
    self.m_steps -= hook_interval;
    if (self.m_steps < 0)
        self.stop(lua, Stop::Steps);
    if (self.m_look)
        self.look_at_memory(lua);
    self.look_at_clock(lua);
}

void Sandbox::look_at_clock(lua_State* lua)
{
    const auto now = Clock::now();
    if (now - m_last_look < look_interval)
        return;
    m_last_look = now;
    if (out_of_time())
        stop(lua, Stop::Time);
}

void Sandbox::look_at_memory(lua_State* lua)
{
    m_look = false;
    if (out_of_time())
        stop(lua, Stop::Time);
    if (m_memory <= m_limits.memory - reserve)
        return;
    lua_gc(lua, LUA_GCCOLLECT);
    if (m_memory > m_limits.memory - reserve)
        stop(lua, Stop::Memory);
}

void Sandbox::charge(lua_State* lua, std::size_t steps)
{
    if (stopped())
        m_place.line ? raise(lua) : stop(lua, m_stop);
    charge_quietly(steps);
    if (m_steps < 0)
        stop(lua, Stop::Steps);
    if (m_look)
        look_at_memory(lua);
    if (m_charged > steps_between_looks) {
        m_charged = 0;
        look_at_clock(lua);
    }
}

void Sandbox::charge_quietly(std::size_t steps)
{
    const auto work = static_cast<long long>(std::min<std::size_t>(steps, 1U << 30));
    m_steps -= work;
    m_charged += work;
}

void Sandbox::after_failure(lua_State* lua, int status)
{
    if (stopped())
        lua_error(lua);
    if (status == LUA_ERRMEM)
        stop(lua, m_refused);
    look_at_clock(lua);
}

int Sandbox::load(lua_State* lua, const char* text, std::size_t size, const char* label)
{
    if (count_of(text, size, "goto") + count_of(text, size, "break") + count_of(text, size, "::") > max_jumps) {
        lua_pushliteral(lua, "there are too many jumps in it");
        return LUA_ERRSYNTAX;
    }
    Source source{text, size, processor_seconds() + m_limits.compile_seconds};
    return lua_load(lua, Source::read, &source, label, "t");
}

} // namespace tarn::scene_script
