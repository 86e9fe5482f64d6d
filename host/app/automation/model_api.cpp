#include "api.h"
#include "core/language.h"
#include "core/model_object.h"
#include "engine/base_world.h"
#include "script/config_scene.h"
#include "studio.h"

#include <algorithm>

namespace tarn::script {

namespace {

/// A dialog or control.
struct ObjectHandle {
    static constexpr const char* type_name = "studio.object";
    static constexpr const char* needed = "a dialog or control";

    std::weak_ptr<ModelObject> object;
    QString called; ///< "dialog 5", also when it is gone

    bool operator==(const ObjectHandle& other) const
    {
        return !object.owner_before(other.object) && !other.object.owner_before(object);
    }
};

Data handle_of(ModelObject* object)
{
    if (!object)
        return {};
    // What lies in a dialog is a control.
    const char* kind = object->fields().find("dialog") ? "control" : "dialog";
    return to_lua(
        ObjectHandle{object->weak_from_this(), QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(object->id())});
}

Data handles_of(const std::vector<ModelObject*>& objects)
{
    return list_of(objects, handle_of);
}

Result<ModelObject*> alive(const ObjectHandle& handle)
{
    // The shared pointer may go at once: the model keeps what is part of the scene.
    const auto object = handle.object.lock();
    if (!object || !object->is_attached())
        return Status::error(QStringLiteral("%1 was deleted").arg(handle.called));
    return object.get();
}

/// What `read` answers of the model.
template <class Read>
Result<Data> from_model(Automation& app, Read read)
{
    const auto model = app.model();
    return model ? Result<Data>(read(*model.value())) : model.status();
}

// Objects -------------------------------------------------------------------------------------------------------------

Result<const FieldBase*> field_of(const ModelObject& object, const ObjectHandle& handle, const QString& name)
{
    if (const FieldBase* field = object.fields().find(name.toStdString()))
        return field;
    return Status::error(QStringLiteral("%1 has no property \"%2\"").arg(handle.called, name));
}

/// The object that a reference names; nil when it names none.
Result<Data> referred(Automation& app, quint32 id)
{
    return from_model(app, [id](SceneModel& model) {
        auto objects = model.dialogs();
        objects.push_back(model.root_dialog());
        const auto found = std::find_if(objects.begin(), objects.end(),
                                        [id](const ModelObject* each) { return each->id() == id; });
        return found == objects.end() ? Data() : handle_of(*found);
    });
}

Result<Data> get(Automation& app, ObjectHandle* self, const QString& property)
{
    const auto object = alive(*self);
    if (!object)
        return object.status();
    const auto field = field_of(*object.value(), *self, property);
    if (!field)
        return field.status();
    const Value value = object.value()->property(*field.value());
    if (const auto* reference = std::get_if<ObjectRef>(&value))
        return referred(app, reference->id);
    return Data(value);
}

Status set(Automation& app, ObjectHandle* self, const QString& property, const Value& value)
{
    const auto object = alive(*self);
    if (!object)
        return object.status();
    const auto field = field_of(*object.value(), *self, property);
    if (!field)
        return field.status();
    const auto about = [&](const QString& what) {
        return Status::error(QStringLiteral("%1, property \"%2\": %3").arg(self->called, property, what));
    };
    if (field.value()->rules().read_only)
        return about(QStringLiteral("it can only be read"));
    const UserAction action(app.studio().scene()->journal(), lang(u"脚本", u"Script"));
    const auto status = object.value()->set_property(*field.value(), value);
    return status ? status : about(status.message());
}

Result<Data> properties(Automation&, ObjectHandle* self)
{
    const auto object = alive(*self);
    if (!object)
        return object.status();
    return Data(list_of(object.value()->fields(),
                        [](const FieldBase* field) { return Data(QString::fromLatin1(field->name())); }));
}

Result<Data> type(Automation&, ObjectHandle* self)
{
    const auto object = alive(*self);
    return object ? Result<Data>(QString::fromLatin1(object.value()->class_name())) : object.status();
}

// The scene -----------------------------------------------------------------------------------------------------------

Result<Data> dialogs(Automation& app)
{
    return from_model(app, [](SceneModel& model) { return handles_of(model.dialogs()); });
}

Result<Data> root_dialog(Automation& app)
{
    return from_model(app, [](SceneModel& model) { return handle_of(model.root_dialog()); });
}

Result<Data> controls(Automation& app, std::optional<ObjectHandle*> dialog)
{
    if (!dialog)
        return from_model(app, [](SceneModel& model) { return handles_of(model.controls()); });
    const auto owner = alive(**dialog);
    if (!owner)
        return owner.status();
    return from_model(app, [&](SceneModel& model) { return handles_of(model.controls_of(*owner.value())); });
}

struct NameAndRect {
    QString name;
    QRectF rect;
};

Result<NameAndRect> read_place(const Fields& fields)
{
    const auto name = fields.get<QString>("name", {});
    if (!name)
        return name.status();
    static constexpr const char* names[] = {"x", "y", "w", "h"};
    double numbers[] = {0, 0, -1, -1};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto number = fields.get<double>(names[i], numbers[i]);
        if (!number)
            return number.status();
        numbers[i] = number.value();
    }
    return NameAndRect{name.value(), QRectF(numbers[0], numbers[1], numbers[2], numbers[3])};
}

Result<Data> made(Automation& app, const Result<ModelObject*>& object)
{
    app.settle();
    return object ? Result<Data>(handle_of(object.value())) : object.status();
}

Result<Data> create_dialog(Automation& app, Fields fields)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    if (auto status = fields.allow_only(QStringLiteral("name x y w h").split(u' ')); !status)
        return status;
    const auto place = read_place(fields);
    if (!place)
        return place.status();
    return made(app, model.value()->create_dialog(place.value().name, place.value().rect));
}

Result<Data> create_control(Automation& app, Fields fields)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    if (auto status = fields.allow_only(QStringLiteral("type dialog name x y w h").split(u' ')); !status)
        return status;
    const auto place = read_place(fields);
    const auto type = fields.get<std::optional<int>>("type", {});
    const auto dialog = fields.get<ObjectHandle*>("dialog", nullptr);
    if (!place)
        return place.status();
    if (!type)
        return type.status();
    if (!dialog)
        return dialog.status();
    if (!type.value())
        return Status::error(QStringLiteral("the field \"type\" is missing"));
    const auto owner = dialog.value() ? alive(*dialog.value()) : Result<ModelObject*>(model.value()->root_dialog());
    if (!owner)
        return owner.status();
    return made(app,
                model.value()->create_control(*type.value(), *owner.value(), place.value().name, place.value().rect));
}

Result<Data> selection(Automation& app)
{
    return from_model(app, [](SceneModel& model) {
        const SceneModel::Selection now = model.selection();
        return Data(Data::Record{{"editing", now.editing},
                                 {"controls_selected", now.controls_selected},
                                 {"menu_editing", now.menu_editing},
                                 {"dialog", handle_of(now.dialog)},
                                 {"control", handle_of(now.control)},
                                 {"dialogs", handles_of(now.dialogs)},
                                 {"controls", handles_of(now.controls)}});
    });
}

Status select(Automation& app, Rest rest)
{
    const auto model = app.model();
    if (!model)
        return model.status();
    const auto handles = all_of<ObjectHandle*>(rest, QLatin1String("object"));
    if (!handles)
        return handles.status();
    std::vector<ModelObject*> objects;
    for (const ObjectHandle* handle : handles.value()) {
        const auto object = alive(*handle);
        if (!object)
            return object.status();
        objects.push_back(object.value());
    }
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

Result<Data> events(Automation& app)
{
    return from_model(app, [](SceneModel& model) {
        return list_of(model.events(), [](const SceneModel::Event& event) {
            return Data(Data::Record{
                {"control", handle_of(event.control)}, {"type", qint64(event.type)}, {"name", event.function}});
        });
    });
}

constexpr Binding functions[] = {
    {"dialogs", "", binding<dialogs>},
    {"root_dialog", "", binding<root_dialog>},
    {"controls", "dialog", binding<controls>},
    {"create_dialog", "fields", binding<create_dialog>},
    {"create_control", "fields", binding<create_control>},
    {"selection", "", binding<selection>},
    {"select", "object", binding<select>},
    {"functions", "", binding<scene_functions>},
    {"function_text", "name", binding<function_text>},
    {"set_function_text", "name text", binding<set_function_text>},
    {"events", "", binding<events>},
};

constexpr Binding methods[] = {
    {"get", "self property", binding<get>},
    {"set", "self property value", binding<set>},
    {"properties", "self", binding<properties>},
    {"type", "self", binding<type>},
};

} // namespace

std::span<const Binding> model_functions()
{
    return functions;
}

void add_object_type(lua_State* lua, Automation& app)
{
    add_type<ObjectHandle>(lua, app, methods);
}

} // namespace tarn::script
