#pragma once

#include "core/value.h"

#include <lua.hpp>

#include <optional>

namespace tarn::scene_script {

/// These may raise Lua's errors; what they are given must not stand on the stack below the protected call.
void push_text(lua_State* lua, const QString& text);
void push_value(lua_State* lua, const Value& value);

/// These raise nothing. What has no form as a Value (functions, mixed tables, handles) gives nullopt.
QString read_text(lua_State* lua, int index); ///< of a text
/// `bytes` are counted up by the texts that are read. A list that takes them over `limit` gives nullopt: in Lua, a
/// thousand references to one text cost little more than the text.
std::optional<Value> read_value(lua_State* lua, int index, std::size_t limit, std::size_t& bytes);

} // namespace tarn::scene_script
