#include "scene_merge.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"

#include <QHash>

#include <algorithm>

namespace tarn {

namespace {

CoreState& core_state(GuiContent& content)
{
    return static_cast<CoreState&>(*content.core);
}

/// The root dialog's controls need a home that looks like the root: as large as the screen, without a frame.
void turn_root_into_dialog(GuiContent& content, const QString& name)
{
    auto& s = static_cast<DialogState&>(content.root->raw_state());
    if (s.controls.isEmpty())
        return;
    s.name = cut_text(name, DialogState::field_table().find("name")->rules().max_length);
    s.caption = name;
    s.x = 0;
    s.y = 0;
    s.width = core_state(content).screen_width;
    s.height = core_state(content).screen_height;
    s.caption_shown = false;
    s.frame_shown = false;
    s.movable = false;
    s.visible = true;
    content.dialogs.insert(content.dialogs.begin(), content.root);
}

std::vector<ModelObject*> objects_by_id(const GuiContent& content)
{
    std::vector<ModelObject*> objects;
    for (const auto& dialog : content.dialogs)
        objects.push_back(dialog.get());
    for (const auto& control : content.controls)
        objects.push_back(control.get());
    std::sort(objects.begin(), objects.end(),
              [](const ModelObject* a, const ModelObject* b) { return a->id() < b->id(); });
    return objects;
}

/// Ids are issued in the order of the old ones, so that the order of creation stays.
void issue_ids(const std::vector<ModelObject*>& objects, CGuiCore& core)
{
    QHash<quint32, quint32> issued;
    for (ModelObject* object : objects) {
        const quint32 fresh = core.take_id();
        issued.insert(object->id(), fresh);
        object->raw_state().id = fresh;
    }
    for (ModelObject* object : objects)
        for (const FieldBase* field : object->fields())
            if (ObjectRef* reference = field->reference(object->raw_state()))
                reference->id = issued.value(reference->id, reference->id);
}

/// The design size of the other interface becomes part of what its dialogs are measured from.
void keep_design_size(GuiContent& content, const CGuiCore& core)
{
    const CoreState& other = core_state(content);
    if (QSize(other.screen_width, other.screen_height) == core.design_size())
        return;
    for (const auto& dialog : content.dialogs) {
        auto& s = static_cast<DialogState&>(dialog->raw_state());
        if (s.base_width == 0 || s.base_height == 0) {
            s.base_width = other.screen_width;
            s.base_height = other.screen_height;
        }
    }
}

/// Entries that are new to the scene; `renamed` tells under which name a picture went in.
QMap<QString, QByteArray> new_files(const GuiContent& content, const CGuiCore& core, QHash<QString, QString>& renamed)
{
    const auto& present = core.core_state().files;
    const auto& theirs = static_cast<const CoreState&>(*content.core).files;
    QMap<QString, QByteArray> added;
    for (auto file = theirs.begin(); file != theirs.end(); ++file) {
        if (!present.contains(file.key())) {
            added.insert(file.key(), file.value());
        } else if (present.value(file.key()) != file.value()) {
            const QString name = free_picture_name(file.key(), [&](const QString& wanted) {
                return !present.contains(wanted) && !theirs.contains(wanted);
            });
            renamed.insert(file.key(), name);
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

} // namespace

void merge_content(CGuiCore& core, GuiContent content, const QString& name, bool replace_styles)
{
    turn_root_into_dialog(content, name);
    keep_design_size(content, core);
    const auto objects = objects_by_id(content);
    issue_ids(objects, core);
    QHash<QString, QString> renamed;
    auto files = new_files(content, core, renamed);
    follow_renamed(objects, renamed);
    CoreState& theirs = core_state(content);
    theirs.files = std::move(files);
    theirs.next_id = 0;
    if (!replace_styles)
        for (auto style = core.core_state().styles.begin(); style != core.core_state().styles.end(); ++style)
            theirs.styles.remove(style.key());
    core.append(std::move(content));
}

} // namespace tarn
