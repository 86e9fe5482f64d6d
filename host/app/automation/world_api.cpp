#include "api.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "world/world_scene.h"

#include <algorithm>
#include <cmath>

namespace tarn::script {

using Points = QList<QVector3D>;

/// A table of tables {x, y, z}.
template <>
struct Argument<Points> {
    static Result<Points> read(lua_State* lua, int index, QLatin1String name)
    {
        const auto refused = [&] { return bad_argument(lua, index, name, "a table of points {x, y, z}"); };
        Points points;
        if (!lua_istable(lua, index))
            return refused();
        const auto count = lua_Integer(std::min<lua_Unsigned>(lua_rawlen(lua, index), PathState::max_points));
        for (lua_Integer i = 1; i <= count; ++i) {
            lua_rawgeti(lua, index, i);
            const bool is_point = read_point(lua, points.emplaceBack());
            lua_pop(lua, 1);
            if (!is_point)
                return refused();
        }
        return points;
    }

private:
    /// Of the table on top of the stack.
    static bool read_point(lua_State* lua, QVector3D& point)
    {
        if (!lua_istable(lua, -1) || lua_rawlen(lua, -1) != 3)
            return false;
        bool is_point = true;
        for (int part = 0; part < 3; ++part) {
            lua_rawgeti(lua, -1, part + 1);
            const double number = lua_tonumber(lua, -1);
            is_point &= lua_type(lua, -1) == LUA_TNUMBER && std::isfinite(number);
            point[part] = float(number);
            lua_pop(lua, 1);
        }
        return is_point;
    }
};

namespace {

Data objects(Automation& app)
{
    return list_of(app.world().objects().objects());
}

Status select_objects(Automation& app, const std::vector<ScriptObject>& objects)
{
    std::vector<const WorldObject*> selected;
    for (const ScriptObject& object : objects) {
        selected.push_back(dynamic_cast<const WorldObject*>(object.get()));
        if (!selected.back())
            return Status::error(
                QStringLiteral("a %1 is no object of the world").arg(QLatin1String(object->class_name())));
    }
    CSelection& selection = app.world().selection();
    selection.clear();
    for (const WorldObject* object : selected)
        selection.add(object);
    app.world().broadcast(ui_world_selection_changed);
    app.world().update_all_views();
    app.settle();
    return {};
}

Result<QVector3D> place_in(const Fields& fields)
{
    QVector3D place;
    for (int part = 0; part < 3; ++part) {
        static constexpr const char* names[] = {"x", "y", "z"};
        const auto number = fields.get<double>(names[part]);
        if (!number)
            return number.status();
        place[part] = float(number.value().value_or(0));
    }
    return place;
}

Result<WorldObject*> create(CBaseWorld& world, const WorldTypeRow& row, const QString& file, const QVector3D& place)
{
    if (row.type <= WorldType::Skeleton) {
        auto object = add_world_model(world, file, place, {});
        if (object && object.value()->type() != row.type)
            return Status::error(
                QStringLiteral("\"%1\" is no %2 but %3")
                    .arg(file, QLatin1String(row.kind), QLatin1String(row_of(object.value()->type()).kind)));
        return object;
    }
    WorldObject* object = world.objects().create(row.type);
    if (!object)
        return Status::error(QStringLiteral("there is no room for more objects"));
    object->set_place(place);
    return object;
}

Result<Data> create_object(Automation& app, const Fields& fields)
{
    if (auto status = fields.allow_only(QStringLiteral("kind name file x y z points").split(u' ')); !status)
        return status;
    const auto kind = fields.get<QString>("kind");
    const auto name = fields.get<QString>("name");
    const auto file = fields.get<QString>("file");
    const auto points = fields.get<Points>("points");
    const auto place = place_in(fields);
    for (const Status& status : {kind.status(), name.status(), file.status(), points.status(), place.status()})
        if (!status)
            return status;
    const WorldTypeRow* row = world_type_named(kind.value().value_or(QString()));
    if (!row)
        return Status::error(
            QStringLiteral("there is no kind of objects \"%1\"").arg(kind.value().value_or(QString())));
    const UserAction action(app.world().document().journal(), lang(u"添加物体", u"Add Object"));
    auto object = create(app.world(), *row, file.value().value_or(QString()), place.value());
    if (!object)
        return object.status();
    if (name.value())
        object.value()->set_name(app.world().objects().free_name(*name.value()));
    if (points.value())
        object.value()->set_points(*points.value());
    app.settle();
    return Data(object.value());
}

constexpr Binding functions[] = {
    {"objects", "", binding<objects>},
    {"select_objects", "object", binding<select_objects>},
    {"create_object", "fields", binding<create_object>},
};

} // namespace

std::span<const Binding> world_functions()
{
    return functions;
}

} // namespace tarn::script
