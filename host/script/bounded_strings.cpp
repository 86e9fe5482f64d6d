#include "pattern_matcher.h"
#include "sandbox.h"

#include <algorithm>
#include <cstring>

// The string library: what works on a whole text is charged for its length, and matching goes through a matcher of our
// own. Packing of binary data and access to bytecode are left out.

namespace tarn::scene_script {

namespace {

constexpr auto bytes_per_step = Sandbox::bytes_per_step;

/// Lua's own function, charged for the length of all its texts.
int charged(lua_State* lua)
{
    const int arguments = lua_gettop(lua);
    std::size_t cost = std::size_t(arguments);
    for (int i = 1; i <= arguments; ++i)
        if (lua_type(lua, i) == LUA_TSTRING)
            cost += lua_rawlen(lua, i) / bytes_per_step;
    Sandbox::of(lua).charge(lua, cost);
    return lua_tocfunction(lua, lua_upvalueindex(1))(lua);
}

int repeat(lua_State* lua)
{
    std::size_t size = 0;
    std::size_t separator_size = 0;
    const char* text = luaL_checklstring(lua, 1, &size);
    const lua_Integer count = luaL_checkinteger(lua, 2);
    const char* separator = luaL_optlstring(lua, 3, "", &separator_size);
    Sandbox& sandbox = Sandbox::of(lua);
    const std::size_t each = size + separator_size;
    if (count <= 0 || each == 0) {
        lua_pushliteral(lua, "");
        return 1;
    }
    const std::size_t limit = sandbox.limits().text;
    if (each > 2 * limit || std::size_t(count) > 1 + limit / each)
        return luaL_error(lua, "resulting string too large");
    sandbox.charge(lua, std::size_t(count) + each * std::size_t(count) / bytes_per_step);
    luaL_Buffer buffer;
    char* to = luaL_buffinitsize(lua, &buffer, each * std::size_t(count));
    const char* begin = to;
    for (lua_Integer i = 0; i < count; ++i) {
        to = std::copy_n(text, size, to);
        if (i + 1 < count)
            to = std::copy_n(separator, separator_size, to);
    }
    luaL_pushresultsize(&buffer, std::size_t(to - begin));
    return 1;
}

// Searching -----------------------------------------------------------------------------------------------------------

/// A start position as the library counts them, from 0 and at most `size` + 1.
std::size_t start_of(lua_Integer position, std::size_t size)
{
    if (position > 0)
        return std::min(std::size_t(position) - 1, size + 1);
    if (position == 0 || position < -lua_Integer(size))
        return 0;
    return std::size_t(lua_Integer(size) + position);
}

const char* find_plain(lua_State* lua, const char* text, const char* end, const char* word, std::size_t size)
{
    Sandbox& sandbox = Sandbox::of(lua);
    if (size == 0)
        return text;
    while (std::size_t(end - text) >= size) {
        const std::size_t places = std::size_t(end - text) - size + 1;
        const char* candidate = static_cast<const char*>(std::memchr(text, *word, places));
        sandbox.charge(lua, 1 + std::size_t((candidate ? candidate : text + places) - text) / 16 + size / 16);
        if (!candidate)
            return nullptr;
        if (std::memcmp(candidate, word, size) == 0)
            return candidate;
        text = candidate + 1;
    }
    return nullptr;
}

bool has_specials(const char* pattern, std::size_t size)
{
    constexpr const char specials[] = "^$*+?.([%-";
    return std::find_first_of(pattern, pattern + size, specials, specials + sizeof specials - 1) != pattern + size;
}

int search(lua_State* lua, bool find)
{
    std::size_t size = 0;
    std::size_t pattern_size = 0;
    const char* text = luaL_checklstring(lua, 1, &size);
    const char* pattern = luaL_checklstring(lua, 2, &pattern_size);
    const std::size_t start = start_of(luaL_optinteger(lua, 3, 1), size);
    Sandbox::of(lua).charge(lua, 4 + pattern_size / bytes_per_step);
    if (start > size) {
        lua_pushnil(lua);
        return 1;
    }
    if (find && (lua_toboolean(lua, 4) || !has_specials(pattern, pattern_size))) {
        const char* found = find_plain(lua, text + start, text + size, pattern, pattern_size);
        if (!found) {
            lua_pushnil(lua);
            return 1;
        }
        lua_pushinteger(lua, found - text + 1);
        lua_pushinteger(lua, found - text + lua_Integer(pattern_size));
        return 2;
    }
    const bool anchored = pattern_size > 0 && *pattern == '^';
    PatternMatcher matcher(lua, text, size, pattern + anchored, pattern_size - anchored);
    for (const char* at = text + start;; ++at) {
        if (const char* end = matcher.match(at)) {
            if (!find)
                return matcher.push_captures(at, end);
            lua_pushinteger(lua, at - text + 1);
            lua_pushinteger(lua, end - text);
            return 2 + matcher.push_captures(nullptr, nullptr);
        }
        if (anchored || at == text + size)
            break;
    }
    lua_pushnil(lua);
    return 1;
}

int find(lua_State* lua)
{
    return search(lua, true);
}

int match(lua_State* lua)
{
    return search(lua, false);
}

/// Upvalues: text, pattern, where to go on, end of the last match (-1: none).
int next_match(lua_State* lua)
{
    std::size_t size = 0;
    std::size_t pattern_size = 0;
    const char* text = lua_tolstring(lua, lua_upvalueindex(1), &size);
    const char* pattern = lua_tolstring(lua, lua_upvalueindex(2), &pattern_size);
    const lua_Integer last = lua_tointeger(lua, lua_upvalueindex(4));
    Sandbox::of(lua).charge(lua, 4);
    PatternMatcher matcher(lua, text, size, pattern, pattern_size);
    for (const char* at = text + lua_tointeger(lua, lua_upvalueindex(3)); at <= text + size; ++at) {
        const char* end = matcher.match(at);
        if (!end || end - text == last)
            continue;
        lua_pushinteger(lua, end - text);
        lua_copy(lua, -1, lua_upvalueindex(3));
        lua_replace(lua, lua_upvalueindex(4));
        return matcher.push_captures(at, end);
    }
    lua_pushinteger(lua, lua_Integer(size) + 1);
    lua_replace(lua, lua_upvalueindex(3));
    return 0;
}

int each_match(lua_State* lua)
{
    std::size_t size = 0;
    luaL_checklstring(lua, 1, &size);
    luaL_checkstring(lua, 2);
    const std::size_t start = start_of(luaL_optinteger(lua, 3, 1), size);
    lua_settop(lua, 2);
    lua_pushinteger(lua, lua_Integer(start));
    lua_pushinteger(lua, -1);
    lua_pushcclosure(lua, next_match, 4);
    return 1;
}

// Replacing -----------------------------------------------------------------------------------------------------------

void add_template(lua_State* lua, luaL_Buffer* buffer, PatternMatcher& matcher, const char* begin, const char* end)
{
    std::size_t size = 0;
    const char* text = lua_tolstring(lua, 3, &size);
    const char* text_end = text + size;
    Sandbox::of(lua).charge(lua, size / bytes_per_step);
    while (const char* at = static_cast<const char*>(std::memchr(text, '%', std::size_t(text_end - text)))) {
        luaL_addlstring(buffer, text, std::size_t(at - text));
        const char c = at + 1 == text_end ? '\0' : at[1];
        if (c == '%') {
            luaL_addchar(buffer, '%');
        } else if (c == '0') {
            luaL_addlstring(buffer, begin, std::size_t(end - begin));
        } else if (c >= '1' && c <= '9') {
            matcher.push_capture(c - '1', begin, end);
            luaL_tolstring(lua, -1, nullptr);
            lua_remove(lua, -2);
            luaL_addvalue(buffer);
        } else {
            luaL_error(lua, "invalid use of '%%' in replacement string");
        }
        text = at + 2;
    }
    luaL_addlstring(buffer, text, std::size_t(text_end - text));
}

/// Adds what takes the match's place: by a text, a table or a function.
void add_replacement(lua_State* lua, luaL_Buffer* buffer, PatternMatcher& matcher, const char* begin, const char* end)
{
    const int type = lua_type(lua, 3);
    if (type == LUA_TFUNCTION) {
        lua_pushvalue(lua, 3);
        const int count = matcher.push_captures(begin, end);
        lua_call(lua, count, 1);
    } else if (type == LUA_TTABLE) {
        matcher.push_capture(0, begin, end);
        lua_gettable(lua, 3);
    } else {
        add_template(lua, buffer, matcher, begin, end);
        return;
    }
    if (!lua_toboolean(lua, -1)) {
        lua_pop(lua, 1);
        luaL_addlstring(buffer, begin, std::size_t(end - begin));
    } else if (!lua_isstring(lua, -1)) {
        luaL_error(lua, "invalid replacement value (a %s)", luaL_typename(lua, -1));
    } else {
        luaL_addvalue(buffer);
    }
}

int replace(lua_State* lua)
{
    std::size_t size = 0;
    std::size_t pattern_size = 0;
    const char* text = luaL_checklstring(lua, 1, &size);
    const char* pattern = luaL_checklstring(lua, 2, &pattern_size);
    const int type = lua_type(lua, 3);
    luaL_argexpected(lua, type == LUA_TNUMBER || type == LUA_TSTRING || type == LUA_TFUNCTION || type == LUA_TTABLE, 3,
                     "string/function/table");
    const lua_Integer most = luaL_optinteger(lua, 4, lua_Integer(size) + 1);
    const bool anchored = pattern_size > 0 && *pattern == '^';
    Sandbox& sandbox = Sandbox::of(lua);
    PatternMatcher matcher(lua, text, size, pattern + anchored, pattern_size - anchored);
    luaL_Buffer buffer;
    luaL_buffinit(lua, &buffer);
    const char* at = text;
    const char* last = nullptr;
    lua_Integer count = 0;
    while (count < most) {
        sandbox.charge(lua, 2);
        const char* end = matcher.match(at);
        if (end && end != last) {
            ++count;
            add_replacement(lua, &buffer, matcher, at, end);
            at = last = end;
        } else if (at < text + size) {
            luaL_addchar(&buffer, *at++);
        } else {
            break;
        }
        if (anchored)
            break;
    }
    luaL_addlstring(&buffer, at, std::size_t(text + size - at));
    luaL_pushresult(&buffer);
    lua_pushinteger(lua, count);
    return 2;
}

constexpr const char* charged_functions[] = {"byte", "char", "format", "len", "lower", "reverse", "sub", "upper"};

constexpr const char* arithmetic[] = {"__add", "__sub", "__mul", "__mod", "__pow", "__div", "__idiv", "__unm"};

constexpr luaL_Reg own_functions[] = {{"rep", repeat},        {"find", find},    {"match", match},
                                      {"gmatch", each_match}, {"gsub", replace}, {nullptr, nullptr}};

} // namespace

void open_strings(lua_State* lua)
{
    lua_pushcfunction(lua, luaopen_string); // gives texts a metatable
    lua_call(lua, 0, 1);
    luaL_newlib(lua, own_functions);
    for (const char* name : charged_functions) {
        lua_getfield(lua, -2, name);
        lua_pushcclosure(lua, charged, 1);
        lua_setfield(lua, -2, name);
    }
    lua_pushliteral(lua, "");
    lua_getmetatable(lua, -1);
    for (const char* name : arithmetic) { // reads whole texts as numbers
        lua_getfield(lua, -1, name);
        lua_pushcclosure(lua, charged, 1);
        lua_setfield(lua, -2, name);
    }
    lua_pushvalue(lua, -3);
    lua_setfield(lua, -2, "__index");
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_pop(lua, 2);
    add_library(lua, "string");
}

} // namespace tarn::scene_script
