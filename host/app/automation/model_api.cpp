#include "api.h"
#include "core/language.h"
#include "core/model_object.h"
#include "engine/base_world.h"
#include "script/config_scene.h"
#include "studio.h"
#include "world/world_object.h"

#include <algorithm>

namespace tarn::script {

namespace {

// Objects -------------------------------------------------------------------------------------------------------------

Result<Data> read(const ScriptReach& reach, const ModelObject& object, const QString& property)
{
    const std::string name = property.toStdString();
    if (const FieldBase* field = object.fields().find(name))
        return Data(lua::read_field(reach, object, *field));
    return lua::no_field(reach, object, name);
}

Result<Data> get(Automation& app, const ScriptObject& self, const QString& property)
{
    return read(app.reach(), *self, property);
}

Result<Data> shown(Automation& app, const ScriptObject& self, const QString& property)
{
    ScriptReach reach = app.reach();
    reach.reads_authored = false;
    return read(reach, *self, property);
}

Status set(Automation& app, const ScriptObject& self, const QString& property, const ScriptValue& value)
{
    const UserAction action(self->journal(), lang(u"脚本", u"Script"));
    return lua::write_field(app.reach(), *self, property.toStdString(), value);
}

Data properties(Automation&, const ScriptObject& self)
{
    return list_of(self->fields(), [](const FieldBase* field) { return Data(QString::fromLatin1(field->name())); });
}

Data type(Automation&, const ScriptObject& self)
{
    return QString::fromLatin1(self->class_name());
}

// The scene -----------------------------------------------------------------------------------------------------------

std::vector<ModelObject*> objects_of(Automation& app, const char* kind)
{
    const Document& document = app.world().document();
    const ObjectKind* row = document.kind(kind);
    return row ? document.objects_of(*row) : std::vector<ModelObject*>();
}

Data dialogs(Automation& app)
{
    return list_of(objects_of(app, "dialogs"));
}

Data root_dialog(Automation& app)
{
    const auto roots = objects_of(app, "root");
    return roots.empty() ? nullptr : roots.front();
}

Data menus(Automation& app)
{
    return list_of(objects_of(app, "menus"));
}

/// All in the order in which they were made, or a dialog's, the top layer last.
Data controls(Automation& app, const std::optional<ScriptObject>& dialog)
{
    auto controls = objects_of(app, "controls");
    if (dialog)
        std::erase_if(controls, [&](const ModelObject* control) { return control->parent() != dialog->get(); });
    else
        std::sort(controls.begin(), controls.end(),
                  [](const ModelObject* a, const ModelObject* b) { return a->id() < b->id(); });
    return list_of(controls);
}

Result<SceneModel::Making> read_making(const Fields& fields, const QStringList& allowed)
{
    if (auto status = fields.allow_only(allowed); !status)
        return status;
    const auto name = fields.get<QString>("name");
    if (!name)
        return name.status();
    static constexpr const char* names[] = {"x", "y", "w", "h"};
    double numbers[] = {0, 0, -1, -1};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto number = fields.get<double>(names[i]);
        if (!number)
            return number.status();
        numbers[i] = number.value().value_or(numbers[i]);
    }
    SceneModel::Making making;
    making.name = name.value().value_or(QString());
    making.rect = {numbers[0], numbers[1], numbers[2], numbers[3]};
    return making;
}

Result<Data> create(Automation& app, const char* kind, const SceneModel::Making& making)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    const auto object = model.value()->create(*app.world().document().kind(kind), making);
    app.settle();
    return object ? Result<Data>(object.value()) : object.status();
}

Result<Data> create_dialog(Automation& app, const Fields& fields)
{
    const auto making = read_making(fields, QStringLiteral("name x y w h").split(u' '));
    return making ? create(app, "dialogs", making.value()) : making.status();
}

Result<Data> create_control(Automation& app, const Fields& fields)
{
    auto making = read_making(fields, QStringLiteral("type dialog name x y w h").split(u' '));
    const auto type = fields.get<int>("type");
    const auto dialog = fields.get<ScriptObject>("dialog");
    for (const Status& status : {making.status(), type.status(), dialog.status()})
        if (!status)
            return status;
    if (!type.value())
        return Status::error(QStringLiteral("the field \"type\" is missing"));
    making.value().type = *type.value();
    if (dialog.value())
        making.value().parent = dialog.value()->get();
    return create(app, "controls", making.value());
}

Status remove(Automation& app, const ScriptObject& object)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    auto status = model.value()->remove(*object);
    app.settle();
    return status;
}

Result<Data> create_menu(Automation& app, const Fields& fields)
{
    const auto making = read_making(fields, {QStringLiteral("name")});
    return making ? create(app, "menus", making.value()) : making.status();
}

std::vector<ModelObject*> children_of(Automation& app, const ScriptObject& parent, const char* kind)
{
    auto children = objects_of(app, kind);
    std::erase_if(children, [&](const ModelObject* child) { return child->parent() != parent.get(); });
    return children;
}

Data items(Automation& app, const ScriptObject& self)
{
    return list_of(children_of(app, self, "menu_items"));
}

// Timebars -----------------------------------------------------------------------------------------------------------

Data timebars(Automation& app)
{
    return list_of(objects_of(app, "timebars"));
}

Data current_timebar(SceneModel& model)
{
    return model.current(nullptr);
}

Result<Data> create_timebar(Automation& app, const Fields& fields)
{
    auto making = read_making(fields, QStringLiteral("name total_length").split(u' '));
    const auto length = fields.get<double>("total_length");
    for (const Status& status : {making.status(), length.status()})
        if (!status)
            return status;
    making.value().length = length.value().value_or(making.value().length);
    return create(app, "timebars", making.value());
}

Data timer_objects(Automation& app, const ScriptObject& self)
{
    return list_of(children_of(app, self, "timer_objects"));
}

Data script_keys(Automation& app, const ScriptObject& self)
{
    std::vector<double> times;
    for (const ModelObject* script_key : children_of(app, self, "script_keys"))
        times.push_back(std::get<double>(script_key->property(*script_key->fields().find("time"))));
    std::sort(times.begin(), times.end());
    return list_of(times, [](double time) { return Data(time); });
}

Data current_child(SceneModel& model, const ScriptObject& self)
{
    return model.current(self.get());
}

Data variables(Automation& app, const ScriptObject& self)
{
    return list_of(children_of(app, self, "variables"));
}

/// Null when it is gone.
Result<Data> target(Automation& app, const ScriptObject& self)
{
    return read(app.reach(), *self, QStringLiteral("target"));
}

Status set_target(Automation& app, const ScriptObject& self, const ScriptObject& object)
{
    return set(app, self, QStringLiteral("target"), object);
}

Data keys(SceneModel& model, const ScriptObject& self)
{
    return list_of(model.keys(*self), [](const SceneModel::KeyRow& key) {
        return Data(Data::Record{{"time", double(key.time)}, {"value", key.value}, {"ease", double(key.ease)}});
    });
}

// Selection ----------------------------------------------------------------------------------------------------------

Data selection(SceneModel& model)
{
    const SceneModel::Selection now = model.selection();
    return Data::Record{{"editing", now.editing},           {"controls_selected", now.controls_selected},
                        {"menu_editing", now.menu_editing}, {"dialog", now.dialog},
                        {"control", now.control},           {"menu", now.menu},
                        {"dialogs", list_of(now.dialogs)},  {"controls", list_of(now.controls)}};
}

Status select(Automation& app, const std::vector<ScriptObject>& handles)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    std::vector<ModelObject*> objects;
    for (const ScriptObject& handle : handles)
        objects.push_back(handle.get());
    if (auto status = model.value()->select(objects); !status)
        return status;
    app.world().broadcast(ui_selection_changed);
    app.world().update_all_views();
    app.settle();
    return {};
}

// Functions and events -----------------------------------------------------------------------------------------------

Data scene_functions(Automation& app)
{
    return list_of(app.world().config_scene().functions(),
                   [](const FuncPtr& function) { return Data(function->name()); });
}

Result<Data> function_text(Automation& app, const QString& name)
{
    const FuncPtr function = app.world().config_scene().find_function(name);
    return function ? Result<Data>(function->text())
                    : Status::error(QStringLiteral("there is no function \"%1\"").arg(name));
}

Status set_function_text(Automation& app, const QString& name, const QString& text)
{
    return app.world().config_scene().set_function(name, text);
}

Status delete_function(Automation& app, const QString& name)
{
    return app.world().config_scene().del_function(name)
        ? Status()
        : Status::error(QStringLiteral("there is no function \"%1\"").arg(name));
}

Data events(SceneModel& model)
{
    return list_of(model.events(), [](const SceneModel::Event& event) {
        return Data(Data::Record{{"control", event.control}, {"type", qint64(event.type)}, {"name", event.function}});
    });
}

constexpr Binding functions[] = {
    {"dialogs", "", binding<dialogs>},
    {"root_dialog", "", binding<root_dialog>},
    {"controls", "dialog", binding<controls>},
    {"create_dialog", "fields", binding<create_dialog>},
    {"create_control", "fields", binding<create_control>},
    {"menus", "", binding<menus>},
    {"create_menu", "fields", binding<create_menu>},
    {"delete", "object", binding<remove>},
    {"timebars", "", binding<timebars>},
    {"current_timebar", "", binding<current_timebar>},
    {"create_timebar", "fields", binding<create_timebar>},
    {"selection", "", binding<selection>},
    {"select", "object", binding<select>},
    {"functions", "", binding<scene_functions>},
    {"function_text", "name", binding<function_text>},
    {"set_function_text", "name text", binding<set_function_text>},
    {"delete_function", "name", binding<delete_function>},
    {"events", "", binding<events>},
};

constexpr Binding methods[] = {
    {"get", "self property", binding<get>},
    {"shown", "self property", binding<shown>},
    {"set", "self property value", binding<set>},
    {"properties", "self", binding<properties>},
    {"type", "self", binding<type>},
    {"items", "self", binding<items>},
    {"objects", "self", binding<timer_objects>},
    {"script_keys", "self", binding<script_keys>},
    {"current_object", "self", binding<current_child>},
    {"variables", "self", binding<variables>},
    {"current_variable", "self", binding<current_child>},
    {"target", "self", binding<target>},
    {"set_target", "self object", binding<set_target>},
    {"keys", "self", binding<keys>},
};

/// What can be read of an object of the world like a member.
Result<Data> attribute(Automation& app, const ScriptObject& self, const QString& name)
{
    const auto* object = dynamic_cast<const WorldObject*>(self.get());
    if (object && name == QLatin1String("kind"))
        return Data(QString::fromLatin1(row_of(object->type()).kind));
    const bool is_member = name == QLatin1String("name") || name == QLatin1String("id");
    return object && is_member ? read(app.reach(), *self, name) : Data();
}

constexpr Binding attribute_access[] = {{"__index", "self name", binding<attribute>}};

/// A method (they are in upvalue 1), or what `attribute` (upvalue 2) gives.
int member(lua_State* lua)
{
    lua_pushvalue(lua, 2);
    if (lua_rawget(lua, lua_upvalueindex(1)) != LUA_TNIL)
        return 1;
    lua_settop(lua, 2);
    lua_pushvalue(lua, lua_upvalueindex(2));
    lua_insert(lua, 1);
    lua_call(lua, 2, 1);
    return 1;
}

} // namespace

std::span<const Binding> model_functions()
{
    return functions;
}

void add_object_type(lua_State* lua, Automation& app)
{
    lua::open_objects(lua, app.reach());
    set_functions(lua, app, attribute_access);
    lua_newtable(lua);
    set_functions(lua, app, methods);
    lua_getfield(lua, -2, "__index");
    lua_pushcclosure(lua, member, 2);
    lua_setfield(lua, -2, "__index");
    lua_pop(lua, 1);
}

} // namespace tarn::script
