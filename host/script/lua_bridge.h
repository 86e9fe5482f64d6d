#pragma once

#include "script_api.h"

#include <lua.hpp>

#include <limits>
#include <optional>
#include <string_view>

// What passes between Lua and the program: plain values, and objects of the model as handles. Scene functions and
// automation share it; they differ in the objects they can find and in how they turn a failure into an error of Lua's.

namespace tarn::lua {

/// Bytes of text and numbers that values read from Lua may hold together. In Lua a thousand references to one text cost
/// little more than the text; outside each is a copy.
struct ReadBudget {
    std::size_t limit = std::numeric_limits<std::size_t>::max();
    std::size_t used = 0;
};

/// These may raise Lua's errors; what they are given must not stand on the stack below the protected call.
void push_text(lua_State* lua, const QString& text);
void push(lua_State* lua, const ScriptValue& value);

/// These raise nothing. What has no form outside (mixed tables, foreign userdata), or is over the budget, gives nullopt.
QString read_text(lua_State* lua, int index);         ///< of a text
std::string_view bytes_of(lua_State* lua, int index); ///< of a text, as long as that stays on the stack
std::optional<Value> read_plain(lua_State* lua, int index, ReadBudget& budget);
std::optional<ScriptValue> read(lua_State* lua, int index, ReadBudget& budget);

// Handles. One object has one handle as long as Lua holds it, so handles compare as their objects do.

/// Makes the type of handles, once for a Lua state, and pushes its metatable for what else belongs there. `reach` must
/// outlive the state.
void open_objects(lua_State* lua, const ScriptReach& reach);
/// Null where no handle stands, or where its object was deleted: then `message` says so.
ScriptObject object_at(lua_State* lua, int index, QString& message);
/// "button 12", or "deleted button 12".
QString describe_handle(lua_State* lua, int index);

// Fields. Failures name object and field.

QString called(const ScriptReach& reach, const ModelObject& object); ///< "button 12"
Status no_field(const ScriptReach& reach, const ModelObject& object, std::string_view name);
/// A reference reads as the object it refers to.
ScriptValue read_field(const ScriptReach& reach, const ModelObject& object, const FieldBase& field);
Status write_field(const ScriptReach& reach, ModelObject& object, std::string_view name, const ScriptValue& value);

} // namespace tarn::lua
