#include "core/language.h"
#include "script_machine.h"

// Objects of the model in scene functions: an object's fields are read and written as the handle's fields, and the
// verbs of its classes are its methods.

namespace tarn::scene_script {

namespace {

/// The object that a member's access is about; null when the frame has the message. The name is at 2.
ScriptObject subject(lua_State* lua, Frame& frame)
{
    ScriptObject object = lua::object_at(lua, 1, frame.message);
    if (!object && frame.message.isNull())
        frame.message = lang(u"需要一个对象", u"an object is needed");
    if (object && lua_type(lua, 2) != LUA_TSTRING) {
        frame.message = lang(u"属性的名称必须是文本", u"the name of a property is a text");
        return nullptr;
    }
    return object;
}

enum class Methods { Left, Found };

template <Methods methods>
bool read_member(Machine& machine, lua_State* lua, Frame& frame)
{
    const ScriptObject object = subject(lua, frame);
    if (!object)
        return false;
    const std::string_view name = lua::bytes_of(lua, 2);
    if (const FieldBase* field = object->fields().find(name))
        frame.result = lua::read_field(machine.reach(), *object, *field);
    else if (methods == Methods::Found && machine.push_method(lua, *object, 2))
        frame.on_stack = true;
    else
        frame.message = lua::no_field(machine.reach(), *object, name).message();
    return frame.message.isNull();
}

bool write_member(Machine& machine, lua_State* lua, Frame& frame)
{
    const ScriptObject object = subject(lua, frame);
    if (!object)
        return false;
    // What has no form outside is refused like a function.
    const ScriptValue value = machine.read(lua, 3).value_or(ScriptFunction{3});
    const Status status = lua::write_field(machine.reach(), *object, lua::bytes_of(lua, 2), value);
    frame.message = status.message();
    return status.ok();
}

bool describe(Machine&, lua_State* lua, Frame& frame)
{
    frame.result = Value(lua::describe_handle(lua, 1));
    return true;
}

template <auto work>
int framed(lua_State* lua)
{
    return Machine::run_frame(lua, work);
}

} // namespace

void Machine::open_objects(lua_State* lua)
{
    static constexpr luaL_Reg events[] = {{"__index", framed<read_member<Methods::Found>>},
                                          {"__newindex", framed<write_member>},
                                          {"__tostring", framed<describe>},
                                          {nullptr, nullptr}};
    lua::open_objects(lua, m_reach);
    luaL_setfuncs(lua, events, 0);
    lua_pop(lua, 1);

    // Every object has these two.
    static constexpr luaL_Reg methods[] = {
        {"get", framed<read_member<Methods::Left>>}, {"set", framed<write_member>}, {nullptr, nullptr}};
    lua_rawgeti(lua, LUA_REGISTRYINDEX, m_methods.at("object"));
    luaL_setfuncs(lua, methods, 0);
    lua_pop(lua, 1);
}

bool Machine::push_method(lua_State* lua, const ModelObject& object, int key) const
{
    const auto push_from = [&](std::string_view of) {
        const auto table = m_methods.find(of);
        if (table == m_methods.end())
            return false;
        lua_rawgeti(lua, LUA_REGISTRYINDEX, table->second);
        lua_pushvalue(lua, key);
        if (lua_rawget(lua, -2) != LUA_TNIL)
            return true;
        lua_pop(lua, 2);
        return false;
    };
    if (m_objects)
        for (const char* of : m_objects->classes_of(object))
            if (push_from(of))
                return true;
    return push_from("object");
}

} // namespace tarn::scene_script
