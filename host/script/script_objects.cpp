#include "core/language.h"
#include "script_machine.h"
#include "script_values.h"

#include <new>

// Handles: objects of the model in scripts. An object's fields are read and written as the handle's fields.

namespace tarn::scene_script {

namespace {

const char handle_type = 0;  ///< registry: the metatable of handles
const char handle_cache = 0; ///< registry: handles by their objects, as long as scripts hold them

struct Handle {
    std::weak_ptr<ModelObject> object;
    quint32 id;
};

Handle* handle_at(lua_State* lua, int index)
{
    if (lua_type(lua, index) != LUA_TUSERDATA || !lua_getmetatable(lua, index))
        return nullptr;
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &handle_type);
    const bool is_handle = lua_rawequal(lua, -1, -2);
    lua_pop(lua, 2);
    return is_handle ? static_cast<Handle*>(lua_touserdata(lua, index)) : nullptr;
}

QString no_field(const Machine& machine, const ModelObject& object, const QString& name)
{
    return lang(u"%1 没有属性“%2”", u"%1 has no property \"%2\"").arg(machine.called(object), name);
}

/// The object and the field's name that a member's access is about; null when the frame has the message.
ScriptObject subject(Machine& machine, lua_State* lua, Frame& frame)
{
    ScriptObject object = machine.object_at(lua, 1, frame.message);
    if (!object && frame.message.isNull())
        frame.message = lang(u"需要一个对象", u"an object is needed");
    if (object && lua_type(lua, 2) != LUA_TSTRING) {
        frame.message = lang(u"属性的名称必须是文本", u"the name of a property is a text");
        return nullptr;
    }
    return object;
}

const FieldBase* field_at(lua_State* lua, int index, const ModelObject& object)
{
    std::size_t size = 0;
    const char* name = lua_tolstring(lua, index, &size);
    return object.fields().find(std::string_view(name, size));
}

ScriptValue value_of(const Machine& machine, const ModelObject& object, const FieldBase& field)
{
    Value value = object.property(field);
    const auto* reference = std::get_if<ObjectRef>(&value);
    if (!reference)
        return value;
    return machine.objects() ? machine.objects()->find(reference->id) : ScriptObject();
}

bool read_field(Machine& machine, lua_State* lua, Frame& frame)
{
    const ScriptObject object = subject(machine, lua, frame);
    if (!object)
        return false;
    const FieldBase* field = field_at(lua, 2, *object);
    if (field)
        frame.result = value_of(machine, *object, *field);
    else
        frame.message = no_field(machine, *object, read_text(lua, 2));
    return field;
}

bool read_member(Machine& machine, lua_State* lua, Frame& frame)
{
    const ScriptObject object = subject(machine, lua, frame);
    if (!object)
        return false;
    if (const FieldBase* field = field_at(lua, 2, *object)) {
        frame.result = value_of(machine, *object, *field);
        return true;
    }
    frame.on_stack = machine.push_method(lua, *object, 2);
    if (!frame.on_stack)
        frame.message = no_field(machine, *object, read_text(lua, 2));
    return frame.on_stack;
}

bool write_field(Machine& machine, lua_State* lua, Frame& frame)
{
    const ScriptObject object = subject(machine, lua, frame);
    if (!object)
        return false;
    const FieldBase* field = field_at(lua, 2, *object);
    if (!field) {
        frame.message = no_field(machine, *object, read_text(lua, 2));
        return false;
    }
    const auto about = [&](const QString& what) {
        frame.message = lang(u"%1 的属性“%2”：%3", u"%1, property \"%2\": %3")
                            .arg(machine.called(*object), QString::fromLatin1(field->name()), what);
        return false;
    };
    const auto given = machine.read(lua, 3);
    Value value;
    if (!given || !(std::holds_alternative<Value>(*given) || std::holds_alternative<ScriptObject>(*given)))
        return about(lang(u"不能接受这种值（%1）", u"it cannot take such a value (a %1)")
                         .arg(QLatin1String(luaL_typename(lua, 3))));
    if (const auto* referred = std::get_if<ScriptObject>(&*given))
        value = qint64((*referred)->id());
    else
        value = std::get<Value>(*given);
    const auto status = object->set_property(*field, value);
    return status ? true : about(status.message());
}

bool describe(Machine& machine, lua_State* lua, Frame& frame)
{
    const Handle* handle = handle_at(lua, 1);
    const ScriptObject object = machine.object_at(lua, 1, frame.message);
    frame.result = Value(object       ? machine.called(*object)
                             : handle ? lang(u"已删除的对象 %1", u"deleted object %1").arg(handle->id)
                                      : QString());
    return true;
}

template <auto work>
int framed(lua_State* lua)
{
    return Machine::run_frame(lua, work);
}

int destroy(lua_State* lua)
{
    static_cast<Handle*>(lua_touserdata(lua, 1))->~Handle();
    return 0;
}

} // namespace

void Machine::open_objects(lua_State* lua)
{
    static constexpr luaL_Reg events[] = {{"__index", framed<read_member>},
                                          {"__newindex", framed<write_field>},
                                          {"__tostring", framed<describe>},
                                          {"__gc", destroy},
                                          {nullptr, nullptr}};
    luaL_newlib(lua, events);
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_pushliteral(lua, "object");
    lua_setfield(lua, -2, "__name");
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &handle_type);

    lua_newtable(lua);
    lua_newtable(lua);
    lua_pushliteral(lua, "v");
    lua_setfield(lua, -2, "__mode");
    lua_setmetatable(lua, -2);
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &handle_cache);

    // Every object has these two.
    static constexpr luaL_Reg methods[] = {
        {"get", framed<read_field>}, {"set", framed<write_field>}, {nullptr, nullptr}};
    lua_rawgeti(lua, LUA_REGISTRYINDEX, m_methods.at("object"));
    luaL_setfuncs(lua, methods, 0);
    lua_pop(lua, 1);
}

void Machine::push_object(lua_State* lua, const ScriptObject& object)
{
    if (!object) {
        lua_pushnil(lua);
        return;
    }
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &handle_cache);
    if (lua_rawgetp(lua, -1, object.get()) == LUA_TUSERDATA) {
        // The place in memory may have been another object's.
        const auto* known = static_cast<const Handle*>(lua_touserdata(lua, -1));
        if (!known->object.owner_before(object) && !object.owner_before(known->object)) {
            lua_remove(lua, -2);
            return;
        }
    }
    lua_pop(lua, 1);
    new (lua_newuserdatauv(lua, sizeof(Handle), 0)) Handle{object, object->id()};
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &handle_type);
    lua_setmetatable(lua, -2);
    lua_pushvalue(lua, -1);
    lua_rawsetp(lua, -3, object.get());
    lua_remove(lua, -2);
}

ScriptObject Machine::object_at(lua_State* lua, int index, QString& message) const
{
    const Handle* handle = handle_at(lua, index);
    if (!handle)
        return nullptr;
    ScriptObject object = handle->object.lock();
    if (object && object->is_attached())
        return object;
    message = lang(u"对象 %1 已被删除", u"the object %1 was deleted").arg(handle->id);
    return nullptr;
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

QString Machine::called(const ModelObject& object) const
{
    const auto classes = m_objects ? m_objects->classes_of(object) : std::vector<const char*>();
    return QStringLiteral("%1 %2")
        .arg(QLatin1String(classes.empty() ? object.class_name() : classes.front()))
        .arg(object.id());
}

} // namespace tarn::scene_script
