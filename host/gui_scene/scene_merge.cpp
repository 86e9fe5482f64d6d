#include "scene_merge.h"

#include "core/language.h"
#include "font_library.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_style.h"
#include "gui_core/menu_state.h"
#include "gui_core/texture_name.h"
#include "gui_plug_scene.h"
#include "picture_names.h"
#include "script/merged_functions.h"

#include <QHash>
#include <QSet>

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

/// What was not there would be something else here. Containers are the same in every scene.
void follow_ids(ObjectState& state, const QHash<quint32, quint32>& issued)
{
    const auto follow = [&](ObjectRef& reference) {
        if (reference.id <= Document::max_id)
            reference.id = issued.value(reference.id, 0);
    };
    for (const FieldBase* field : state.fields().link_fields())
        field->each_reference(state, follow);
}

/// Gives every object an id of this document, in the order of the old ones, so that the order of creation stays, and lets
/// all references follow. Fixed objects keep theirs. Answers the new ids by the old ones.
QHash<quint32, quint32> issue_ids(SceneSnapshot& objects, Document& document)
{
    std::vector<ObjectState*> states;
    QHash<quint32, quint32> issued;
    for (const ObjectKind& kind : document.kinds())
        for (StatePtr& state : objects.objects[kind.place]) {
            states.push_back(&SceneSnapshot::edit<ObjectState>(state));
            if (kind.fixed)
                issued.insert(state->id, state->id);
        }
    std::sort(states.begin(), states.end(), [](const ObjectState* a, const ObjectState* b) { return a->id < b->id; });
    for (ObjectState* state : states) {
        if (issued.contains(state->id))
            continue;
        const quint32 fresh = document.take_id();
        issued.insert(state->id, fresh);
        state->id = fresh;
    }
    for (ObjectState* state : states)
        follow_ids(*state, issued);
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

/// An event of a control that the package does not have must not become one of another control.
void leave_out_orphans(SceneSnapshot& objects, const Document& document)
{
    QSet<quint32> known;
    for (const auto& list : objects.objects)
        for (const StatePtr& state : list)
            known.insert(state->id);
    std::erase_if(objects.objects[document.kind("events")->place], [&](const StatePtr& event) {
        return !known.contains(SceneSnapshot::as<EventState>(event).control.id);
    });
}

/// The styles of the other interface that come along; the ids are those of this document. What the author of the other one
/// changed of a style without saving it belongs to the look that is replaced, or stays behind with it.
void merge_styles(SceneSnapshot& objects, CGuiCore& core, ObjectRef their_style, bool replace)
{
    auto& states = objects.objects[core.style_kind().place];
    QHash<quint32, quint32> mine; ///< what stands for one of theirs, by its id
    std::vector<CGuiStyle*> replaced;
    std::erase_if(states, [&](const StatePtr& state) {
        const auto& style = SceneSnapshot::as<StyleState>(state);
        if (!replace && style.id == their_style.id && style.name.isEmpty())
            return true;
        CGuiStyle* present = style.name.isEmpty() ? nullptr : core.find_style(style.name);
        if (!present || style.origin != int(StyleOrigin::Scene))
            return false;
        if (replace)
            replaced.push_back(present);
        else
            mine.insert(style.id, present->id());
        return !replace;
    });
    for (StatePtr& state : states)
        if (const ObjectRef base = SceneSnapshot::as<StyleState>(state).base; mine.contains(base.id))
            SceneSnapshot::edit<StyleState>(state).base = {mine.value(base.id)};
    for (CGuiStyle* style : replaced)
        core.remove_style(*style);
}

/// Leaves out the fonts that the scene has under whatever name; answers the entries of the others.
QStringList fonts_to_take(SceneSnapshot& content, const Document& document)
{
    QSet<QByteArray> present;
    const auto& files = document.files();
    for (auto file = files.lowerBound(font_entry({})); file != files.end() && is_font_entry(file.key()); ++file)
        present.insert(file.value());
    QStringList taken;
    content.files.removeIf([&](const auto& file) {
        if (!is_font_entry(file.key()))
            return false;
        const bool is_known = present.contains(file.value());
        if (!is_known)
            taken.append(file.key());
        return is_known;
    });
    return taken;
}

std::size_t count_of(const SceneSnapshot& objects)
{
    std::size_t count = 0;
    for (const auto& list : objects.objects)
        count += list.size();
    return count;
}

} // namespace

Status merge_content(CGuiPlugScene& scene, SceneSnapshot content, const QString& name, bool replace_styles)
{
    CGuiCore& core = scene.gui_core();
    Document& document = core.document();
    document.leave_out_world(content);
    if (auto status = document.check_room(content); !status)
        return status;
    auto& theirs = SceneSnapshot::edit<CoreState>(content.containers[document.part_of(core)]);
    const QSize screen(theirs.screen_width, theirs.screen_height);
    turn_root_into_dialog(content, core, screen, name);
    keep_design_size(content, core, screen);
    leave_out_orphans(content, document);
    if (document.ids_left() < count_of(content))
        return Status::error(
            lang(u"界面的编号已用完，无法再添加对象。", u"The interface has no ids left for more objects."));
    const auto issued = issue_ids(content, document);
    QHash<QString, QString> renamed;
    // An atlas that could not be read stands among the files, under an id that is another style's here.
    content.files.removeIf([](const auto& file) { return file.key().startsWith(QLatin1String("styles/")); });
    QStringList their_fonts = fonts_to_take(content, document);
    content.files = new_files(content.files, core, renamed);
    follow_renamed(content, renamed);
    merge_functions(content, scene, issued);
    content.next_id = 0;
    const ObjectRef their_style{issued.value(theirs.scene_style.id, 0)};
    merge_styles(content, core, their_style, replace_styles);
    document.append(std::move(content));
    if (replace_styles)
        core.set_scene_style(document.find_as<CGuiStyle>(their_style.id));
    for (QString& entry : their_fonts)
        entry = renamed.value(entry, entry);
    scene.fonts().drop_unnamed(their_fonts); // Those of styles that stayed behind.
    return {};
}

namespace {

/// Adds what the present world's objects show: their models, and pictures that `content` lacks.
void keep_files_of_world(SceneSnapshot& content, const SceneSnapshot& now, const Document& document)
{
    for (const PackagePart& part : document.parts()) {
        if (part.travels)
            continue;
        for (auto file = now.files.begin(); part.folder && file != now.files.end(); ++file)
            if (file.key().startsWith(QLatin1String(part.folder)))
                content.files.insert(file.key(), file.value());
        for (const ObjectKind& kind : document.kinds())
            if (std::string_view(kind.part) == part.entry)
                for (const StatePtr& state : now.objects[kind.place])
                    each_picture(*state, [&](const QString& name) {
                        const QString entry = texture_entry(name);
                        if (now.files.contains(entry) && !content.files.contains(entry))
                            content.files.insert(entry, now.files[entry]);
                    });
    }
}

} // namespace

SceneSnapshot with_present_world(SceneSnapshot content, Document& document)
{
    document.leave_out_world(content);
    const SceneSnapshot now = document.snapshot();
    const auto stays = [&](const ObjectKind& kind) {
        return std::any_of(document.parts().begin(), document.parts().end(), [&](const PackagePart& part) {
            return !part.travels && std::string_view(part.entry) == kind.part;
        });
    };
    const bool is_empty = std::none_of(document.kinds().begin(), document.kinds().end(), [&](const ObjectKind& kind) {
        return stays(kind) && !now.objects[kind.place].empty();
    });
    if (is_empty)
        return content;
    const auto issued = issue_ids(content, document);
    for (StatePtr& container : content.containers)
        follow_ids(SceneSnapshot::edit<ObjectState>(container), issued);
    for (const ObjectKind& kind : document.kinds())
        if (stays(kind))
            content.objects[kind.place] = now.objects[kind.place];
    for (std::size_t i = 0; i < document.parts().size(); ++i)
        if (!document.parts()[i].travels)
            content.containers[i] = now.containers[i];
    keep_files_of_world(content, now, document);
    content.next_id = std::max(content.next_id, now.next_id);
    return content;
}

} // namespace tarn
