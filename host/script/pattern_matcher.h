#pragma once

#include <cstddef>

struct lua_State;

namespace tarn::scene_script {

class Sandbox;

/// Lua's patterns, matched with every step charged to the sandbox: a few characters of pattern can ask for more steps
/// than the world has seconds. Errors and stops leave by longjmp.
class PatternMatcher {
public:
    static constexpr int max_captures = 32;

    PatternMatcher(lua_State* lua, const char* text, std::size_t text_size, const char* pattern,
                   std::size_t pattern_size);

    /// The end of the match that starts at `at`; null when there is none.
    const char* match(const char* at);
    /// Pushes all captures, or the whole match [begin, end) when there are none or `begin` asks for one; answers how
    /// many.
    int push_captures(const char* begin, const char* end);
    /// Pushes capture number `i`, from 0; with no captures 0 is the whole match.
    void push_capture(int i, const char* begin, const char* end);
    int captures() const { return m_level; }

private:
    static constexpr int max_depth = 200;
    static constexpr std::ptrdiff_t open_capture = -1;
    static constexpr std::ptrdiff_t position_capture = -2;

    const char* match_here(const char* s, const char* p);
    const char* match_item(const char* s, const char* p, const char* item_end);
    const char* match_capture_start(const char* s, const char* p, std::ptrdiff_t kind);
    const char* match_capture_end(const char* s, const char* p);
    const char* match_balance(const char* s, const char* p);
    const char* match_frontier(const char* s, const char*& p);
    const char* match_back_reference(const char* s, int digit);
    const char* expand_most(const char* s, const char* p, const char* item_end);
    const char* expand_least(const char* s, const char* p, const char* item_end);
    const char* end_of_item(const char* p);
    bool is_single(const char* s, const char* p, const char* item_end);
    bool is_in_set(int c, const char* p, const char* end);
    void step();

    lua_State* m_lua;
    Sandbox& m_sandbox;
    const char* m_text;
    const char* m_text_end;
    const char* m_pattern_begin;
    const char* m_pattern_end;
    int m_steps = 0;
    int m_depth = 0;
    int m_level = 0;
    struct {
        const char* begin;
        std::ptrdiff_t size;
    } m_captures[max_captures];
};

} // namespace tarn::scene_script
