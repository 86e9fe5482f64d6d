#include "scene_look.h"

#include "commands/input_script.h"
#include "core/attribute_driver.h"
#include "core/document.h"
#include "core/field.h"
#include "core/model_object.h"
#include "engine/scene_plug.h"
#include "object_paths.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarn {

namespace {

constexpr const char* kinds[] = {"dialogs", "controls", "menus", "menu_items"};
constexpr const char* looks[] = {"visible",  "enabled", "caption",  "text",    "checked",
                                 "selected", "value",   "position", "percent", "image"};
constexpr const char* places[] = {"x", "y", "width", "height"};
constexpr const char* focused = "focused";

template <class Names, class Visit>
void each_attribute(const ModelObject& object, const Names& names, Visit&& visit)
{
    const AttributeDriver* driver = object.document().driver();
    for (const char* name : names)
        if (const FieldBase* field = object.fields().find(name);
            field && !(driver && driver->drives(object, field->key())))
            visit(name, object.property(*field));
}

template <class Visit>
void each_look(const ModelObject& object, const SceneModel& model, Visit&& visit)
{
    each_attribute(object, looks, visit);
    for (const SceneModel::LiveValue& live : model.live_values(object))
        visit(live.name, live.value);
}

InputStep expectation(const QString& path, const char* attribute, const Value& value)
{
    return {
        .kind = InputStep::Kind::ExpectValue, .object = path, .attribute = QLatin1String(attribute), .value = value};
}

std::optional<double> number_in(const Value& value)
{
    if (const auto* whole = std::get_if<qint64>(&value))
        return double(*whole);
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    return std::nullopt;
}

} // namespace

SceneLook::SceneLook(const Document& document, const SceneModel& model)
{
    for (const char* key : kinds)
        if (const ObjectKind* kind = document.kind(key))
            for (const ModelObject* object : document.objects_of(*kind)) {
                const auto note = [&](const char* name, Value value) {
                    m_seen.push_back({object->id(), name, std::move(value)});
                };
                each_look(*object, model, note);
                each_attribute(*object, places, note);
            }
    std::stable_sort(m_seen.begin(), m_seen.end(), [](const Seen& a, const Seen& b) { return a.object < b.object; });
}

const SceneLook::Seen* SceneLook::find(const Seen& same) const
{
    auto seen = std::lower_bound(m_seen.begin(), m_seen.end(), same.object,
                                 [](const Seen& a, quint32 object) { return a.object < object; });
    for (; seen != m_seen.end() && seen->object == same.object; ++seen)
        if (QLatin1String(seen->attribute) == QLatin1String(same.attribute))
            return &*seen;
    return nullptr;
}

std::vector<InputStep> SceneLook::changes_since(const SceneLook& before, const Document& document) const
{
    std::vector<InputStep> steps;
    std::optional<ObjectPaths> paths;
    for (const Seen& seen : m_seen) {
        const Seen* old = before.find(seen);
        if (!old || looks_same(old->value, seen.value))
            continue;
        if (QLatin1String(seen.attribute) == QLatin1String(focused) && seen.value == Value(false))
            continue;
        if (!paths)
            paths.emplace(document);
        if (const ModelObject* object = document.find(seen.object))
            steps.push_back(expectation(paths->path_of(*object), seen.attribute, seen.value));
    }
    return steps;
}

std::vector<InputStep> look_of(const ModelObject& object, const SceneModel& model)
{
    std::vector<InputStep> steps;
    const QString path = ObjectPaths(object.document()).path_of(object);
    each_look(object, model,
              [&](const char* name, const Value& value) { steps.push_back(expectation(path, name, value)); });
    return steps;
}

std::optional<Value> seen_value(const ModelObject& object, const QString& attribute, const SceneModel& model)
{
    if (const FieldBase* field = object.fields().find(attribute.toStdString()))
        return object.property(*field);
    for (const SceneModel::LiveValue& live : model.live_values(object))
        if (attribute == QLatin1String(live.name))
            return live.value;
    return std::nullopt;
}

bool looks_same(const Value& a, const Value& b)
{
    const auto x = number_in(a);
    const auto y = number_in(b);
    constexpr double nearly = 1e-4;
    return x && y ? std::abs(*x - *y) <= nearly * std::max({1.0, std::abs(*x), std::abs(*y)}) : a == b;
}

} // namespace tarn
