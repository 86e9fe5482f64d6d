#include "scene_merge.h"

#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_plug_scene.h"
#include "picture_names.h"
#include "script/merged_scripts.h"
#include "script/scene_scripts.h"

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
    s.name = cut_text(name, DialogState::field_table().find(key<&DialogState::name>)->rules().max_length);
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
QHash<quint32, quint32> issue_ids(const std::vector<ModelObject*>& objects, CGuiCore& core)
{
    QHash<quint32, quint32> issued;
    for (ModelObject* object : objects) {
        const quint32 fresh = core.take_id();
        issued.insert(object->id(), fresh);
        object->raw_state().id = fresh;
    }
    for (ModelObject* object : objects)
        for (const FieldBase* field : object->fields())
            field->each_reference(object->raw_state(), [&](ObjectRef& reference) {
                reference.id = issued.value(reference.id, reference.id);
            });
    return issued;
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

} // namespace

Status merge_content(CGuiPlugScene& scene, SceneContent content, const QString& name, bool replace_styles)
{
    if (auto status = check_room(scene.parts(), content); !status)
        return status;
    CGuiCore& core = scene.gui_core();
    GuiContent& gui = content.gui;
    turn_root_into_dialog(gui, name);
    keep_design_size(gui, core);
    const auto objects = objects_by_id(gui);
    if (core.ids_left() < objects.size())
        return Status::error(
            lang(u"界面的编号已用完，无法再添加对象。", u"The interface has no ids left for more objects."));
    const auto issued = issue_ids(objects, core);
    QHash<QString, QString> renamed;
    auto files = new_files(core_state(gui).files, core, renamed);
    follow_renamed(objects, renamed);
    CoreState& theirs = core_state(gui);
    theirs.files = std::move(files);
    theirs.next_id = 0;
    if (!replace_styles)
        for (auto style = core.core_state().styles.begin(); style != core.core_state().styles.end(); ++style)
            theirs.styles.remove(style.key());
    MergedScripts scripts = merged_scripts(scene.functions(), content, issued);
    core.append(std::move(gui));
    scene.journal().add_companion(
        add_scripts(scene.functions(), scene.events(), std::move(scripts.functions), std::move(scripts.events)));
    return {};
}

} // namespace tarn
