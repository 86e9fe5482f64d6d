#include "object_paths.h"

#include "core/document.h"
#include "core/field.h"
#include "core/model_object.h"

#include <array>

namespace tarn {

namespace {

bool is_of(const ModelObject& object, const char* kind)
{
    return object.kind() && QLatin1String(object.kind()->key) == QLatin1String(kind);
}

QString plain_path(const ModelObject& object)
{
    const ModelObject* parent = object.parent();
    const bool is_inside = parent && (is_of(*parent, "dialogs") || is_of(*parent, "menus"));
    return is_inside ? object_name(*parent) + QLatin1Char('/') + object_name(object) : object_name(object);
}

} // namespace

QString object_name(const ModelObject& object)
{
    const FieldBase* own = object.fields().find("name");
    const FieldBase* field = own ? own : object.fields().find("text");
    const Value value = field ? object.property(*field) : Value();
    const auto* name = std::get_if<QString>(&value);
    return name ? *name : QString();
}

ObjectPaths::ObjectPaths(const Document& document) : m_document(document)
{
    using Keys = std::array<const char*, 2>;
    for (const Keys& keys : {Keys{"dialogs", "controls"}, Keys{"menus", "menu_items"}}) {
        const QHash<QString, ModelObject*> earlier = m_objects; // They keep their names.
        for (const char* key : keys)
            if (const ObjectKind* kind = document.kind(key))
                for (ModelObject* object : document.objects_of(*kind)) {
                    const QString path = plain_path(*object);
                    if (earlier.contains(path))
                        continue;
                    const bool is_taken = m_objects.contains(path);
                    m_objects.insert(path, is_taken ? nullptr : object);
                }
    }
}

QString ObjectPaths::path_of(const ModelObject& object) const
{
    const QString path = plain_path(object);
    const bool is_unique = !path.isEmpty() && !path.startsWith(QLatin1Char('#')) && m_objects.value(path) == &object;
    return is_unique ? path : QLatin1Char('#') + QString::number(object.id());
}

ModelObject* ObjectPaths::find(const QString& path) const
{
    if (!path.startsWith(QLatin1Char('#')))
        return m_objects.value(path);
    ModelObject* object = m_document.find(path.mid(1).toUInt());
    return object && object->is_attached() ? object : nullptr;
}

} // namespace tarn
