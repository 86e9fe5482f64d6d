#include "sandbox.h"

#include <algorithm>

// The table library on the tables' own elements: metamethods are not asked, since they could answer any length.

namespace tarn::scene_script {

namespace {

constexpr lua_Integer max_results = 10'000; ///< of unpack

lua_Integer length_of(lua_State* lua, int index)
{
    luaL_checktype(lua, index, LUA_TTABLE);
    return lua_Integer(lua_rawlen(lua, index));
}

/// Copies `count` elements, from the far end when the places overlap.
void shift(lua_State* lua, int from_table, lua_Integer from, int to_table, lua_Integer to, lua_Integer count)
{
    Sandbox& sandbox = Sandbox::of(lua);
    const bool backwards = to > from && from_table == to_table;
    for (lua_Integer i = 0; i < count; ++i) {
        const lua_Integer k = backwards ? count - 1 - i : i;
        sandbox.charge(lua, 2);
        lua_rawgeti(lua, from_table, from + k);
        lua_rawseti(lua, to_table, to + k);
    }
}

int insert(lua_State* lua)
{
    const lua_Integer end = length_of(lua, 1) + 1;
    const int arguments = lua_gettop(lua);
    if (arguments != 2 && arguments != 3)
        return luaL_error(lua, "wrong number of arguments to 'insert'");
    const lua_Integer place = arguments == 3 ? luaL_checkinteger(lua, 2) : end;
    luaL_argcheck(lua, place >= 1 && place <= end, 2, "position out of bounds");
    Sandbox::of(lua).charge(lua, 2);
    shift(lua, 1, place, 1, place + 1, end - place);
    lua_pushvalue(lua, arguments);
    lua_rawseti(lua, 1, place);
    return 0;
}

int remove(lua_State* lua)
{
    const lua_Integer size = length_of(lua, 1);
    const lua_Integer place = luaL_optinteger(lua, 2, size);
    luaL_argcheck(lua, size == 0 ? place == 0 || place == 1 : place >= 1 && place <= size + 1, 2,
                  "position out of bounds");
    Sandbox::of(lua).charge(lua, 2);
    lua_rawgeti(lua, 1, place);
    shift(lua, 1, place + 1, 1, place, size - place);
    if (place <= size) {
        lua_pushnil(lua);
        lua_rawseti(lua, 1, size);
    }
    return 1;
}

int move(lua_State* lua)
{
    luaL_checktype(lua, 1, LUA_TTABLE);
    const lua_Integer first = luaL_checkinteger(lua, 2);
    const lua_Integer last = luaL_checkinteger(lua, 3);
    const lua_Integer to = luaL_checkinteger(lua, 4);
    const int target = lua_isnoneornil(lua, 5) ? 1 : 5;
    luaL_checktype(lua, target, LUA_TTABLE);
    if (last >= first) {
        luaL_argcheck(lua, first > 0 || last < LUA_MAXINTEGER + first, 3, "too many elements to move");
        luaL_argcheck(lua, to <= LUA_MAXINTEGER - (last - first), 4, "destination wrap around");
        shift(lua, 1, first, lua_rawequal(lua, 1, target) ? 1 : target, to, last - first + 1);
    }
    lua_pushvalue(lua, target);
    return 1;
}

int unpack(lua_State* lua)
{
    luaL_checktype(lua, 1, LUA_TTABLE);
    const lua_Integer first = luaL_optinteger(lua, 2, 1);
    const lua_Integer last = lua_isnoneornil(lua, 3) ? lua_Integer(lua_rawlen(lua, 1)) : luaL_checkinteger(lua, 3);
    if (last < first)
        return 0;
    if (lua_Unsigned(last) - lua_Unsigned(first) >= lua_Unsigned(max_results))
        return luaL_error(lua, "too many results to unpack");
    const int count = int(last - first + 1);
    Sandbox::of(lua).charge(lua, std::size_t(count));
    luaL_checkstack(lua, count, "too many results to unpack");
    for (int i = 0; i < count; ++i)
        lua_rawgeti(lua, 1, first + i);
    return count;
}

int pack(lua_State* lua)
{
    const int count = lua_gettop(lua);
    Sandbox::of(lua).charge(lua, std::size_t(count));
    lua_createtable(lua, count, 1);
    lua_insert(lua, 1);
    for (int i = count; i >= 1; --i)
        lua_rawseti(lua, 1, i);
    lua_pushinteger(lua, count);
    lua_setfield(lua, 1, "n");
    return 1;
}

int concat(lua_State* lua)
{
    luaL_checktype(lua, 1, LUA_TTABLE);
    std::size_t separator_size = 0;
    const char* separator = luaL_optlstring(lua, 2, "", &separator_size);
    const lua_Integer first = luaL_optinteger(lua, 3, 1);
    const lua_Integer last = lua_isnoneornil(lua, 4) ? lua_Integer(lua_rawlen(lua, 1)) : luaL_checkinteger(lua, 4);
    Sandbox& sandbox = Sandbox::of(lua);
    luaL_Buffer buffer;
    luaL_buffinit(lua, &buffer);
    for (lua_Integer i = first; i <= last; ++i) {
        const int type = lua_rawgeti(lua, 1, i);
        if (type != LUA_TSTRING && type != LUA_TNUMBER)
            return luaL_error(lua, "invalid value (at index %I) in table for 'concat'", i);
        sandbox.charge(lua, 4 + (lua_rawlen(lua, -1) + separator_size) / 16);
        luaL_addvalue(&buffer);
        if (i == last)
            break;
        luaL_addlstring(&buffer, separator, separator_size);
    }
    luaL_pushresult(&buffer);
    return 1;
}

// Sorting -------------------------------------------------------------------------------------------------------------

/// Whether a < b, by the function at index 2 or, where that is nil, by Lua's order.
bool less(lua_State* lua, int a, int b)
{
    Sandbox& sandbox = Sandbox::of(lua);
    if (lua_isnil(lua, 2)) {
        const bool texts = lua_type(lua, a) == LUA_TSTRING && lua_type(lua, b) == LUA_TSTRING;
        sandbox.charge(lua, 4 + (texts ? std::min(lua_rawlen(lua, a), lua_rawlen(lua, b)) / 16 : 0));
        return lua_compare(lua, a, b, LUA_OPLT);
    }
    sandbox.charge(lua, 10);
    lua_pushvalue(lua, 2);
    lua_pushvalue(lua, a);
    lua_pushvalue(lua, b);
    lua_call(lua, 2, 1);
    const bool result = lua_toboolean(lua, -1);
    lua_pop(lua, 1);
    return result;
}

/// Heap sort: n log n with any comparison, also one that contradicts itself. The value on top sinks from `hole` into
/// the heap of `size` elements and is taken off the stack.
void sink(lua_State* lua, lua_Integer hole, lua_Integer size)
{
    const int value = lua_gettop(lua);
    while (2 * hole <= size) {
        lua_Integer child = 2 * hole;
        lua_rawgeti(lua, 1, child);
        if (child < size) {
            lua_rawgeti(lua, 1, child + 1);
            if (less(lua, value + 1, value + 2)) {
                lua_remove(lua, value + 1);
                ++child;
            } else {
                lua_pop(lua, 1);
            }
        }
        if (!less(lua, value, value + 1)) {
            lua_pop(lua, 1);
            break;
        }
        lua_rawseti(lua, 1, hole);
        hole = child;
    }
    lua_rawseti(lua, 1, hole);
}

int sort(lua_State* lua)
{
    const lua_Integer size = length_of(lua, 1);
    if (!lua_isnoneornil(lua, 2))
        luaL_checktype(lua, 2, LUA_TFUNCTION);
    lua_settop(lua, 2);
    for (lua_Integer i = size / 2; i >= 1; --i) {
        lua_rawgeti(lua, 1, i);
        sink(lua, i, size);
    }
    for (lua_Integer end = size; end > 1; --end) {
        lua_rawgeti(lua, 1, 1);
        lua_rawgeti(lua, 1, end);
        lua_insert(lua, -2);
        lua_rawseti(lua, 1, end);
        sink(lua, 1, end - 1);
    }
    return 0;
}

constexpr luaL_Reg functions[] = {{"insert", insert}, {"remove", remove}, {"move", move}, {"unpack", unpack},
                                  {"pack", pack},     {"concat", concat}, {"sort", sort}, {nullptr, nullptr}};

} // namespace

void open_tables(lua_State* lua)
{
    luaL_newlib(lua, functions);
    add_library(lua, "table");
}

} // namespace tarn::scene_script
