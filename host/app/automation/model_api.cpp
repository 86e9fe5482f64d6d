#include "api.h"
#include "core/language.h"
#include "core/model_object.h"
#include "engine/base_world.h"
#include "script/config_scene.h"
#include "studio.h"

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

Data dialogs(SceneModel& model)
{
    return list_of(model.dialogs());
}

Data root_dialog(SceneModel& model)
{
    return model.root_dialog();
}

Data controls(SceneModel& model, const std::optional<ScriptObject>& dialog)
{
    return list_of(dialog ? model.controls_of(**dialog) : model.controls());
}

Data menus(SceneModel& model)
{
    return list_of(model.menus());
}

struct NameAndRect {
    QString name;
    QRectF rect;
};

Result<NameAndRect> read_place(const Fields& fields)
{
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
    return NameAndRect{name.value().value_or(QString()), QRectF(numbers[0], numbers[1], numbers[2], numbers[3])};
}

Result<Data> made(Automation& app, const Result<ModelObject*>& object)
{
    app.settle();
    return object ? Result<Data>(object.value()) : object.status();
}

Result<Data> create_dialog(Automation& app, const Fields& fields)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    if (auto status = fields.allow_only(QStringLiteral("name x y w h").split(u' ')); !status)
        return status;
    const auto place = read_place(fields);
    return place ? made(app, model.value()->create_dialog(place.value().name, place.value().rect)) : place.status();
}

Result<Data> create_control(Automation& app, const Fields& fields)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    if (auto status = fields.allow_only(QStringLiteral("type dialog name x y w h").split(u' ')); !status)
        return status;
    const auto place = read_place(fields);
    const auto type = fields.get<int>("type");
    const auto dialog = fields.get<ScriptObject>("dialog");
    for (const Status& status : {place.status(), type.status(), dialog.status()})
        if (!status)
            return status;
    if (!type.value())
        return Status::error(QStringLiteral("the field \"type\" is missing"));
    ModelObject& owner = dialog.value() ? **dialog.value() : *model.value()->root_dialog();
    return made(app, model.value()->create_control(*type.value(), owner, place.value().name, place.value().rect));
}

Result<Data> create_menu(Automation& app, const Fields& fields)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    if (auto status = fields.allow_only({QStringLiteral("name")}); !status)
        return status;
    const auto name = fields.get<QString>("name");
    return name ? made(app, model.value()->create_menu(name.value().value_or(QString()))) : name.status();
}

Result<Data> items(Automation& app, const ScriptObject& self)
{
    const auto model = app.model();
    return model ? Result<Data>(list_of(model.value()->items_of(*self))) : model.status();
}

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
    CConfigScene& functions = app.world().config_scene();
    if (const FuncPtr function = functions.find_function(name))
        return function->set_text(text);
    return functions.add_function(IFunc::create_func(name), false, text);
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
    {"selection", "", binding<selection>},
    {"select", "object", binding<select>},
    {"functions", "", binding<scene_functions>},
    {"function_text", "name", binding<function_text>},
    {"set_function_text", "name text", binding<set_function_text>},
    {"events", "", binding<events>},
};

constexpr Binding methods[] = {
    {"get", "self property", binding<get>},
    {"shown", "self property", binding<shown>},
    {"set", "self property value", binding<set>},
    {"properties", "self", binding<properties>},
    {"type", "self", binding<type>},
    {"items", "self", binding<items>},
};

} // namespace

std::span<const Binding> model_functions()
{
    return functions;
}

void add_object_type(lua_State* lua, Automation& app)
{
    lua::open_objects(lua, app.reach());
    lua_newtable(lua);
    set_functions(lua, app, methods);
    lua_setfield(lua, -2, "__index");
    lua_pop(lua, 1);
}

} // namespace tarn::script
