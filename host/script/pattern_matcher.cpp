#include "pattern_matcher.h"

#include "sandbox.h"

#include <cctype>
#include <cstring>

namespace tarn::scene_script {

namespace {

constexpr char escape = '%';
constexpr int steps_at_a_time = 256;

bool is_in_class(int c, int name)
{
    bool in = false;
    switch (std::tolower(name)) {
    case 'a': in = std::isalpha(c); break;
    case 'c': in = std::iscntrl(c); break;
    case 'd': in = std::isdigit(c); break;
    case 'g': in = std::isgraph(c); break;
    case 'l': in = std::islower(c); break;
    case 'p': in = std::ispunct(c); break;
    case 's': in = std::isspace(c); break;
    case 'u': in = std::isupper(c); break;
    case 'w': in = std::isalnum(c); break;
    case 'x': in = std::isxdigit(c); break;
    default: return name == c;
    }
    return in != bool(std::isupper(name));
}

int byte(const char* at)
{
    return static_cast<unsigned char>(*at);
}

} // namespace

PatternMatcher::PatternMatcher(lua_State* lua, const char* text, std::size_t text_size, const char* pattern,
                               std::size_t pattern_size)
    : m_lua(lua),
      m_sandbox(Sandbox::of(lua)),
      m_text(text),
      m_text_end(text + text_size),
      m_pattern_begin(pattern),
      m_pattern_end(pattern + pattern_size)
{
}

void PatternMatcher::step()
{
    if (++m_steps < steps_at_a_time)
        return;
    m_steps = 0;
    m_sandbox.charge(m_lua, steps_at_a_time);
}

const char* PatternMatcher::match(const char* at)
{
    m_level = 0;
    m_depth = 0;
    return match_here(at, m_pattern_begin);
}

/// Where one item follows the other this loops; it calls itself only where there is a choice, and those calls are what
/// max_depth counts. Every path passes step(): patterns with several repetitions take exponential time, and no hook of Lua's
/// fires in here.
const char* PatternMatcher::match_here(const char* s, const char* p)
{
    if (++m_depth > max_depth)
        luaL_error(m_lua, "pattern too complex");
    while (s && p != m_pattern_end) {
        step();
        if (*p == '(') {
            const bool position = p + 1 != m_pattern_end && p[1] == ')';
            s = match_capture_start(s, p + (position ? 2 : 1), position ? position_capture : open_capture);
            break;
        }
        if (*p == ')') {
            s = match_capture_end(s, p + 1);
            break;
        }
        if (*p == '$' && p + 1 == m_pattern_end) {
            s = s == m_text_end ? s : nullptr;
            break;
        }
        if (*p == escape && p + 1 != m_pattern_end) {
            if (p[1] == 'b') {
                s = match_balance(s, p + 2);
                p += 4;
                continue;
            }
            if (p[1] == 'f') {
                p += 2;
                s = match_frontier(s, p);
                continue;
            }
            if (std::isdigit(byte(p + 1))) {
                s = match_back_reference(s, byte(p + 1));
                p += 2;
                continue;
            }
        }
        const char* item_end = end_of_item(p);
        const char suffix = item_end == m_pattern_end ? '\0' : *item_end;
        if (suffix == '?') {
            if (is_single(s, p, item_end)) {
                if (const char* end = match_here(s + 1, item_end + 1)) {
                    s = end;
                    break;
                }
            }
            p = item_end + 1;
            continue;
        }
        if (suffix == '*' || suffix == '+' || suffix == '-') {
            if (suffix == '+')
                s = is_single(s, p, item_end) ? expand_most(s + 1, p, item_end) : nullptr;
            else
                s = suffix == '*' ? expand_most(s, p, item_end) : expand_least(s, p, item_end);
            break;
        }
        s = is_single(s, p, item_end) ? s + 1 : nullptr;
        p = item_end;
    }
    --m_depth;
    return s;
}

const char* PatternMatcher::expand_most(const char* s, const char* p, const char* item_end)
{
    std::ptrdiff_t count = 0;
    while (is_single(s + count, p, item_end)) {
        step();
        ++count;
    }
    // First as many as there are, then one less each time until the rest fits too.
    for (; count >= 0; --count) {
        step();
        if (const char* end = match_here(s + count, item_end + 1))
            return end;
    }
    return nullptr;
}

const char* PatternMatcher::expand_least(const char* s, const char* p, const char* item_end)
{
    for (;; ++s) {
        step();
        if (const char* end = match_here(s, item_end + 1))
            return end;
        if (!is_single(s, p, item_end))
            return nullptr;
    }
}

const char* PatternMatcher::match_capture_start(const char* s, const char* p, std::ptrdiff_t kind)
{
    if (m_level >= max_captures)
        luaL_error(m_lua, "too many captures");
    m_captures[m_level++] = {s, kind};
    const char* end = match_here(s, p);
    if (!end)
        --m_level;
    return end;
}

const char* PatternMatcher::match_capture_end(const char* s, const char* p)
{
    int open = m_level - 1;
    while (open >= 0 && m_captures[open].size != open_capture)
        --open;
    if (open < 0)
        luaL_error(m_lua, "invalid pattern capture");
    // A capture is closed for what follows it. When that does not fit it is open again: another way may close it later.
    m_captures[open].size = s - m_captures[open].begin;
    const char* end = match_here(s, p);
    if (!end)
        m_captures[open].size = open_capture;
    return end;
}

const char* PatternMatcher::match_balance(const char* s, const char* p)
{
    if (m_pattern_end - p < 2)
        luaL_error(m_lua, "missing arguments to '%%b'");
    if (s == m_text_end || *s != p[0])
        return nullptr;
    int open = 1;
    for (++s; s != m_text_end; ++s) {
        step();
        if (*s == p[1]) {
            if (--open == 0)
                return s + 1;
        } else if (*s == p[0]) {
            ++open;
        }
    }
    return nullptr;
}

const char* PatternMatcher::match_frontier(const char* s, const char*& p)
{
    if (p == m_pattern_end || *p != '[')
        luaL_error(m_lua, "missing '[' after '%%f' in pattern");
    const char* set = p;
    p = end_of_item(set);
    // Both ends of the text count as a zero byte.
    const int before = s == m_text ? 0 : byte(s - 1);
    const int here = s == m_text_end ? 0 : byte(s);
    return !is_in_set(before, set, p - 1) && is_in_set(here, set, p - 1) ? s : nullptr;
}

const char* PatternMatcher::match_back_reference(const char* s, int digit)
{
    const int i = digit - '1';
    if (i < 0 || i >= m_level || m_captures[i].size == open_capture)
        luaL_error(m_lua, "invalid capture index %%%d", i + 1);
    const std::ptrdiff_t size = m_captures[i].size < 0 ? 0 : m_captures[i].size;
    m_sandbox.charge(m_lua, std::size_t(size) / 16);
    const bool same = m_text_end - s >= size && std::memcmp(m_captures[i].begin, s, std::size_t(size)) == 0;
    return same ? s + size : nullptr;
}

const char* PatternMatcher::end_of_item(const char* p)
{
    const char first = *p++;
    if (first == escape) {
        if (p == m_pattern_end)
            luaL_error(m_lua, "malformed pattern (ends with '%%')");
        return p + 1;
    }
    if (first != '[')
        return p;
    if (p != m_pattern_end && *p == '^')
        ++p;
    do { // a ']' in the first place stands for itself
        step();
        if (p == m_pattern_end)
            luaL_error(m_lua, "malformed pattern (missing ']')");
        if (*p++ == escape && p != m_pattern_end)
            ++p;
    } while (p == m_pattern_end || *p != ']');
    return p + 1;
}

bool PatternMatcher::is_single(const char* s, const char* p, const char* item_end)
{
    if (s >= m_text_end)
        return false;
    switch (*p) {
    case '.': return true;
    case escape: return is_in_class(byte(s), byte(p + 1));
    case '[': return is_in_set(byte(s), p, item_end - 1);
    default: return *p == *s;
    }
}

/// `p` is at the '[', `end` at the ']'.
bool PatternMatcher::is_in_set(int c, const char* p, const char* end)
{
    bool in = true;
    if (p[1] == '^') {
        in = false;
        ++p;
    }
    while (++p < end) {
        step();
        if (*p == escape) {
            ++p;
            if (is_in_class(c, byte(p)))
                return in;
        } else if (end - p > 2 && p[1] == '-') {
            if (byte(p) <= c && c <= byte(p + 2))
                return in;
            p += 2;
        } else if (byte(p) == c) {
            return in;
        }
    }
    return !in;
}

void PatternMatcher::push_capture(int i, const char* begin, const char* end)
{
    if (i >= m_level) {
        if (i != 0)
            luaL_error(m_lua, "invalid capture index %%%d", i + 1);
        lua_pushlstring(m_lua, begin, std::size_t(end - begin));
        return;
    }
    if (m_captures[i].size == open_capture)
        luaL_error(m_lua, "unfinished capture");
    if (m_captures[i].size == position_capture)
        lua_pushinteger(m_lua, m_captures[i].begin - m_text + 1);
    else
        lua_pushlstring(m_lua, m_captures[i].begin, std::size_t(m_captures[i].size));
}

int PatternMatcher::push_captures(const char* begin, const char* end)
{
    const int count = m_level == 0 && begin ? 1 : m_level;
    luaL_checkstack(m_lua, count, "too many captures");
    for (int i = 0; i < count; ++i)
        push_capture(i, begin, end);
    return count;
}

} // namespace tarn::scene_script
