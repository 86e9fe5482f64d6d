#include "scene_look.h"

#include "commands/input_script.h"
#include "core/document.h"
#include "core/field.h"
#include "core/model_object.h"
#include "object_paths.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarn {

namespace {

/// Those that a player changes or reads; places and sizes follow the screen and timebars.
constexpr const char* watched[] = {"visible", "enabled", "text", "checked", "selected", "value", "position", "percent"};

template <class Visit>
void each_value(const ModelObject& object, Visit&& visit)
{
    for (const char* name : watched)
        if (const FieldBase* field = object.fields().find(name))
            visit(name, object.property(*field));
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

SceneLook::SceneLook(const Document& document)
{
    for (const char* key : {"dialogs", "controls"})
        if (const ObjectKind* kind = document.kind(key))
            for (const ModelObject* object : document.objects_of(*kind))
                each_value(*object, [&](const char* name, Value value) {
                    m_values.emplace(std::pair(object->id(), name), std::move(value));
                });
}

std::vector<InputStep> SceneLook::changes_since(const SceneLook& before, const Document& document) const
{
    std::vector<InputStep> steps;
    std::optional<ObjectPaths> paths;
    for (const auto& [place, value] : m_values) {
        const auto old = before.m_values.find(place);
        if (old == before.m_values.end() || looks_same(old->second, value))
            continue;
        if (!paths)
            paths.emplace(document);
        if (const ModelObject* object = document.find(place.first))
            steps.push_back(expectation(paths->path_of(*object), place.second, value));
    }
    return steps;
}

std::vector<InputStep> look_of(const ModelObject& object)
{
    std::vector<InputStep> steps;
    const QString path = ObjectPaths(object.document()).path_of(object);
    each_value(object, [&](const char* name, const Value& value) { steps.push_back(expectation(path, name, value)); });
    return steps;
}

bool looks_same(const Value& a, const Value& b)
{
    const auto x = number_in(a);
    const auto y = number_in(b);
    constexpr double nearly = 1e-4;
    return x && y ? std::abs(*x - *y) <= nearly * std::max({1.0, std::abs(*x), std::abs(*y)}) : a == b;
}

} // namespace tarn
