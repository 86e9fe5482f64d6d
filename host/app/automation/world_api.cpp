#include "api.h"
#include "engine/base_world.h"

namespace tarn::script {

namespace {

/// An object of the 3D world.
struct SceneObjectHandle {
    static constexpr const char* type_name = "studio.scene_object";
    static constexpr const char* needed = "a scene object";

    CGuid id;

    bool operator==(const SceneObjectHandle&) const = default;
};

const SceneObject* find_object(Automation& app, const CGuid& id)
{
    for (const auto& object : app.world().objects())
        if (object->id == id)
            return object.get();
    return nullptr;
}

Data objects(Automation& app)
{
    return list_of(app.world().objects(), [](const auto& object) { return to_lua(SceneObjectHandle{object->id}); });
}

Status select_objects(Automation& app, const std::vector<SceneObjectHandle*>& handles)
{
    app.world().selection().clear();
    for (const SceneObjectHandle* handle : handles)
        app.world().selection().add(find_object(app, handle->id));
    return {};
}

/// A scene object has no methods, but three attributes.
Result<Data> attribute(Automation& app, SceneObjectHandle* self, const QString& name)
{
    const SceneObject* object = find_object(app, self->id);
    if (!object)
        return Status::error(QStringLiteral("the scene object is gone"));
    if (name == QLatin1String("name"))
        return Data(object->name);
    if (name == QLatin1String("kind"))
        return Data(object->kind);
    return name == QLatin1String("id") ? Data(object->id.to_string()) : Data();
}

constexpr Binding functions[] = {
    {"objects", "", binding<objects>},
    {"select_objects", "object", binding<select_objects>},
};

constexpr Binding attribute_access[] = {{"__index", "self name", binding<attribute>}};

} // namespace

std::span<const Binding> world_functions()
{
    return functions;
}

void add_scene_object_type(lua_State* lua, Automation& app)
{
    add_type<SceneObjectHandle>(lua, app, {});
    luaL_getmetatable(lua, SceneObjectHandle::type_name);
    set_functions(lua, app, attribute_access);
    lua_pop(lua, 1);
}

} // namespace tarn::script
