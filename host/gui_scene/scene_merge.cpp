#include "scene_merge.h"

#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/menu_state.h"
#include "gui_plug_scene.h"
#include "picture_names.h"
#include "script/merged_scripts.h"
#include "script/scene_scripts.h"

#include <QHash>

#include <algorithm>

namespace tarn {

namespace {

/// The root dialog's controls need a home that looks like the root: as large as the screen, without a frame.
void turn_root_into_dialog(SceneSnapshot& objects, const CGuiCore& core, const QSize& screen, const QString& name)
{
    auto& roots = objects.objects[core.root_kind().place];
    auto& dialogs = objects.objects[core.dialog_kind().place];
    auto& s = SceneSnapshot::edit<DialogState>(roots.front());
    if (!s.controls.isEmpty()) {
        s.name = cut_text(name, DialogState::field_table().find(key<&DialogState::name>)->rules().max_length);
        s.caption = name;
        s.x = 0;
        s.y = 0;
        s.width = screen.width();
        s.height = screen.height();
        s.caption_shown = false;
        s.frame_shown = false;
        s.movable = false;
        s.visible = true;
        dialogs.insert(dialogs.begin(), roots.front());
    }
    roots.clear();
}

/// Gives every object an id of this document, in the order of the old ones, so that the order of creation stays, and lets
/// all references follow. Answers the new ids by the old ones.
QHash<quint32, quint32> issue_ids(SceneSnapshot& objects, Document& document)
{
    std::vector<ObjectState*> states;
    for (auto& list : objects.objects)
        for (StatePtr& state : list)
            states.push_back(&SceneSnapshot::edit<ObjectState>(state));
    std::sort(states.begin(), states.end(), [](const ObjectState* a, const ObjectState* b) { return a->id < b->id; });
    QHash<quint32, quint32> issued;
    for (ObjectState* state : states) {
        const quint32 fresh = document.take_id();
        issued.insert(state->id, fresh);
        state->id = fresh;
    }
    // What was not there would be something else here.
    const auto follow = [&](ObjectRef& reference) { reference.id = issued.value(reference.id, 0); };
    for (ObjectState* state : states)
        for (const FieldBase* field : state->fields())
            field->each_reference(*state, follow);
    return issued;
}

/// The design size of the other interface becomes part of what its dialogs are measured from.
void keep_design_size(SceneSnapshot& objects, const CGuiCore& core, const QSize& screen)
{
    if (screen == core.design_size())
        return;
    for (StatePtr& state : objects.objects[core.dialog_kind().place]) {
        auto& s = SceneSnapshot::edit<DialogState>(state);
        if (s.base_width == 0 || s.base_height == 0) {
            s.base_width = screen.width();
            s.base_height = screen.height();
        }
    }
}

std::size_t count_of(const SceneSnapshot& objects)
{
    std::size_t count = 0;
    for (const auto& list : objects.objects)
        count += list.size();
    return count;
}

} // namespace

Status merge_content(CGuiPlugScene& scene, SceneContent content, const QString& name, bool replace_styles)
{
    if (auto status = check_room(scene.parts(), content); !status)
        return status;
    CGuiCore& core = scene.gui_core();
    SceneSnapshot& objects = content.objects;
    auto& theirs = SceneSnapshot::edit<CoreState>(objects.containers.front());
    const QSize screen(theirs.screen_width, theirs.screen_height);
    turn_root_into_dialog(objects, core, screen, name);
    keep_design_size(objects, core, screen);
    if (core.document().ids_left() < count_of(objects))
        return Status::error(
            lang(u"界面的编号已用完，无法再添加对象。", u"The interface has no ids left for more objects."));
    const auto issued = issue_ids(objects, core.document());
    QHash<QString, QString> renamed;
    objects.files = new_files(objects.files, core, renamed);
    follow_renamed(objects, renamed);
    objects.next_id = 0;
    MergedScripts scripts = merged_scripts(scene.functions(), content, objects.objects[core.dialog_kind().place],
                                           issued);
    for (StatePtr& item : objects.objects[core.document().kind("menu_items")->place]) {
        auto& s = SceneSnapshot::edit<MenuItemState>(item);
        s.function = scripts.names.value(s.function, s.function);
    }
    core.add_styles(theirs.styles, replace_styles);
    core.document().append(std::move(objects));
    scene.journal().add_companion(
        add_scripts(scene.functions(), scene.events(), std::move(scripts.functions), std::move(scripts.events)));
    return {};
}

} // namespace tarn
