#pragma once

#include "lua_binding.h"

// The functions and types that a script finds, by the headings of the manual.
namespace tarn::script {

std::span<const Binding> program_functions();
std::span<const Binding> box_functions();
std::span<const Binding> page_functions();
std::span<const Binding> model_functions();
std::span<const Binding> world_functions();

void add_page_type(lua_State* lua, Automation& app);
void add_control_type(lua_State* lua, Automation& app);
void add_surface_type(lua_State* lua, Automation& app);
void add_object_type(lua_State* lua, Automation& app);
void push_view(lua_State* lua, Automation& app);
void push_timeline(lua_State* lua, Automation& app);

} // namespace tarn::script
