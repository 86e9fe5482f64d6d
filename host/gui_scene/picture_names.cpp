#include "picture_names.h"

#include "core/model_object.h"
#include "gui_core/gui_core.h"

#include <QFileInfo>

namespace tarn {

namespace {

/// A name like `taken` that nobody has, or under which the scene holds this very content.
QString other_name(const QString& taken, const QByteArray& content, const QMap<QString, QByteArray>& present,
                   const QMap<QString, QByteArray>& theirs)
{
    const QFileInfo info(taken);
    const QString folder = info.path() == QLatin1String(".") ? QString() : info.path() + QLatin1Char('/');
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    for (int i = 2;; ++i) {
        const QString name = folder + info.completeBaseName() + QLatin1Char('-') + QString::number(i) + suffix;
        if (theirs.contains(name))
            continue;
        const auto found = present.find(name);
        if (found == present.end() || *found == content)
            return name;
    }
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
    for (ModelObject* object : objects) {
        for (const FieldBase* field : object->fields()) {
            if (!field->rules().picture)
                continue;
            const QString entry = texture_entry(std::get<QString>(field->get(object->base_state())));
            const auto found = renamed.find(entry);
            if (found != renamed.end())
                (void)field->set(object->raw_state(), Value(found->mid(prefix)));
        }
    }
}

std::vector<QString> picture_entries(const ModelObject& object)
{
    std::vector<QString> entries;
    for (const FieldBase* field : object.fields()) {
        if (!field->rules().picture)
            continue;
        const QString name = std::get<QString>(field->get(object.base_state()));
        if (!name.isEmpty())
            entries.push_back(texture_entry(name));
    }
    return entries;
}

} // namespace tarn
