#include "world_clipboard.h"

#include "core/authored.h"
#include "core/field.h"
#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/language.h"
#include "core/object_kind.h"
#include "engine/base_world.h"
#include "engine/model_library.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "gui_scene/gui_plug_scene.h"
#include "world/world_scene.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t most_objects = 10'000;
constexpr QVector3D beside(1, 0, 0); ///< metres from an object to its copy at the same place

ClipboardFiles in_folder(const ClipboardFiles& all, const QString& folder)
{
    ClipboardFiles files;
    for (auto file = all.lowerBound(folder); file != all.end() && file.key().startsWith(folder); ++file)
        files.insert(file.key().mid(folder.size()), file.value());
    return files;
}

/// Under which folder the scene has the model, or has it from now on.
QString taken_folder(Document& document, const QString& folder, const ClipboardFiles& files)
{
    const ClipboardFiles wanted = in_folder(files, folder);
    QString free = folder;
    for (int number = 2;; ++number) {
        const ClipboardFiles present = in_folder(document.files(), free);
        if (wanted.isEmpty() || present == wanted)
            return free;
        if (present.isEmpty())
            break;
        free = folder.chopped(1) + QString::number(number) + u'/';
    }
    document.edit_files([&](ClipboardFiles& all) {
        for (auto file = wanted.begin(); file != wanted.end(); ++file)
            all.insert(free + file.key(), file.value());
    });
    return free;
}

void copy_attributes(const WorldObjectState& from, WorldObject& to)
{
    to.write<WorldObjectState>([&](WorldObjectState& state) {
        for (const FieldBase* field : state.fields())
            if (!field->rules().read_only && !field->rules().derived && field->key() != key<&WorldObjectState::name>)
                field->copy(from, state);
    });
}

bool stands_there(const WorldScene& world, const WorldObjectState& state)
{
    const QVector3D place(state.x, state.y, state.z);
    return std::ranges::any_of(world.objects(), [&](const WorldObject* one) { return one->place() == place; });
}

} // namespace

bool is_model_entry(const QString& entry)
{
    return !model_folder(entry).isEmpty();
}

QByteArray clipboard_text_of_world(const CGuiPlugScene& scene)
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("format");
    writer.value(clipboard_format);
    writer.key("objects");
    writer.begin_array();
    ClipboardFiles files;
    for (const WorldObject* object : scene.world()->selection().objects()) {
        writer.new_line();
        write_state(Authored::state(*object), writer);
        add_files_of(scene, Authored::state(*object), files);
        const QString folder = model_folder(object->file());
        const ClipboardFiles model = in_folder(scene.document().files(), folder);
        for (auto file = model.begin(); !folder.isEmpty() && file != model.end(); ++file)
            files.insert(folder + file.key(), file.value());
    }
    writer.end_array();
    write_files(writer, files);
    writer.end_object();
    return QByteArray::fromStdString(writer.text());
}

Status read_world_object(const ObjectKind& kind, JsonCursor& value, std::vector<StatePtr>& objects)
{
    int type = -1;
    if (auto status = value.peek_int("type", type); !status)
        return status;
    StatePtr object(kind.make_state(type));
    if (!object)
        return value.fail(lang(u"未知的物体类型 %1", u"the kind %1 of objects is unknown").arg(type));
    if (objects.size() == most_objects)
        return value.fail(lang(u"物体太多", u"there are too many objects"));
    auto status = read_state(*object, value);
    objects.push_back(std::move(object));
    return status;
}

void paste_world_objects(CGuiPlugScene& scene, std::vector<StatePtr>& objects, const ClipboardFiles& files)
{
    WorldScene& world = scene.world()->objects();
    std::vector<WorldObject*> pasted;
    {
        const UserAction action(scene.journal(), lang(u"粘贴物体", u"Paste Objects"));
        take_files(scene, objects, files);
        for (const StatePtr& copied : objects) {
            const auto& state = static_cast<const WorldObjectState&>(*copied);
            const bool is_covered = stands_there(world, state);
            WorldObject* object = world.create(WorldType(state.type), state.name);
            if (!object)
                break;
            copy_attributes(state, *object);
            if (const QString folder = model_folder(object->file()); !folder.isEmpty())
                object->set_file(taken_folder(scene.document(), folder, files) + object->file().mid(folder.size()));
            if (is_covered)
                object->set_place(object->place() + beside);
            pasted.push_back(object);
        }
    }
    select_world_objects(*scene.world(), pasted);
}

} // namespace tarn
