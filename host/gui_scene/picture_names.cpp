#include "picture_names.h"

#include "core/model_object.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "movie_file.h"

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
    const auto& present = core.document().files();
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

void follow_renamed(ObjectState& state, const QHash<QString, QString>& renamed)
{
    if (renamed.isEmpty())
        return;
    const auto prefix = texture_entry(QString()).size();
    const auto new_name = [&](const QString& name) {
        const auto found = renamed.find(texture_entry(name));
        return found == renamed.end() ? name : found->mid(prefix);
    };
    for (const FieldBase* field : state.fields().link_fields())
        if (field->rules().picture)
            field->rename(state, new_name);
    if (const auto movie = renamed.find(movie_entry_of(state)); movie != renamed.end())
        set_movie_entry(state, *movie);
}

void follow_renamed(SceneSnapshot& scene, const QHash<QString, QString>& renamed)
{
    for (auto& states : scene.objects)
        for (StatePtr& state : states)
            follow_renamed(SceneSnapshot::edit<ObjectState>(state), renamed);
}

void each_picture(const ObjectState& state, const std::function<void(const QString&)>& visit)
{
    for (const FieldBase* field : state.fields().link_fields())
        if (field->rules().picture && !field->is_default(state))
            for (const QString& name : field->names(state))
                visit(name);
}

void each_picture(const SceneSnapshot& scene, const std::function<void(const QString&)>& visit)
{
    for (const auto& states : scene.objects)
        for (const StatePtr& state : states)
            each_picture(*state, visit);
}

std::vector<QString> file_entries(const ObjectState& state)
{
    std::vector<QString> entries;
    each_picture(state, [&](const QString& name) { entries.push_back(texture_entry(name)); });
    if (const QString movie = movie_entry_of(state); !movie.isEmpty())
        entries.push_back(movie);
    return entries;
}

} // namespace tarn
