#include "picture_names.h"

#include "core/model_object.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"

namespace tarn {

namespace {

/// A name like `taken` that nobody has, or under which the scene holds this very content.
QString other_name(const QString& taken, const QByteArray& content, const QMap<QString, QByteArray>& present,
                   const QMap<QString, QByteArray>& theirs)
{
    return free_picture_name(taken, [&](const QString& name) {
        const auto found = present.find(name);
        return !theirs.contains(name) && (found == present.end() || *found == content);
    });
}

} // namespace

QMap<QString, QByteArray> new_files(const QMap<QString, QByteArray>& theirs, const CGuiCore& core,
                                    QHash<QString, QString>& renamed)
{
    const auto& present = core.core_state().files;
    QMap<QString, QByteArray> added;
    for (auto file = theirs.begin(); file != theirs.end(); ++file) {
        if (!present.contains(file.key())) {
            added.insert(file.key(), file.value());
        } else if (present.value(file.key()) != file.value()) {
            const QString name = other_name(file.key(), file.value(), present, theirs);
            renamed.insert(file.key(), name);
            if (!present.contains(name))
                added.insert(name, file.value());
        }
    }
    return added;
}

void follow_renamed(const std::vector<ModelObject*>& objects, const QHash<QString, QString>& renamed)
{
    if (renamed.isEmpty())
        return;
    const auto prefix = texture_entry(QString()).size();
    const auto new_name = [&](const QString& name) {
        const auto found = renamed.find(texture_entry(name));
        return found == renamed.end() ? name : found->mid(prefix);
    };
    for (ModelObject* object : objects)
        for (const FieldBase* field : object->fields())
            field->rename_pictures(object->raw_state(), new_name);
}

void each_picture(const ModelObject& object, const std::function<void(const QString&)>& visit)
{
    for (const FieldBase* field : object.fields())
        if (field->rules().picture && !field->is_default(object.base_state()))
            for (const QString& name : field->pictures(object.base_state()))
                visit(name);
}

std::vector<QString> picture_entries(const ModelObject& object)
{
    std::vector<QString> entries;
    each_picture(object, [&](const QString& name) { entries.push_back(texture_entry(name)); });
    return entries;
}

} // namespace tarn
