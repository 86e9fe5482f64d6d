#include "dialog_copies.h"
#include "core/authored.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/package_writer.h"
#include "gui_scene/scene_merge.h"
#include "selection_edit.h"
#include "store/enough_memory.h"

#include <QHash>

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace tarn {

namespace {

constexpr int copy_step = 10;    ///< pixels from a dialog to its copy in the same place
constexpr int longest_stem = 24; ///< UTF-16 units of a dialog's name that a number follows

/// A copy's event calls the function that is made for it, not the one that the original calls too.
void give_own_functions(SceneSnapshot& content, const CGuiPlugScene& scene)
{
    auto& functions = content.objects[scene.functions().function_kind().place];
    QHash<QString, StatePtr> by_name;
    for (const StatePtr& function : functions)
        by_name.insert(SceneSnapshot::as<FunctionState>(function).name, function);
    for (StatePtr& state : content.objects[scene.events().event_kind().place]) {
        auto& event = SceneSnapshot::edit<EventState>(state);
        const QString own = CEventManager::new_function_name(event.control.id, event.type);
        const StatePtr bound = by_name.value(event.function);
        if (event.function == own || !bound || by_name.contains(own))
            continue;
        auto* copy = static_cast<FunctionState*>(bound->clone());
        copy->id = content.next_id++;
        copy->name = own;
        by_name.insert(own, functions.emplace_back(copy));
        event.function = own;
    }
}

QString without_number(QString name)
{
    while (!name.isEmpty() && name.back().isDigit())
        name.chop(1);
    return name;
}

/// Names of dialogs that the scene has already, or that come twice, become free ones.
void give_free_names(std::vector<StatePtr>& dialogs, const CGuiCore& core)
{
    FreeNames names;
    for (const CDXUTDialog* dialog : core.GetDialogs())
        names.add(dialog->name());
    for (StatePtr& state : dialogs) {
        auto& s = SceneSnapshot::edit<DialogState>(state);
        if (names.has(s.name))
            s.name = names.find(cut_text(without_number(s.name), longest_stem));
        names.add(s.name);
    }
}

using Frame = std::tuple<int, int, int, int>;

Frame frame_of(const ObjectState& dialog)
{
    const auto& s = static_cast<const DialogState&>(dialog);
    return {s.x, s.y, s.width, s.height};
}

/// Moves the dialogs aside until none of them covers one that is there.
void step_aside(std::vector<StatePtr>& dialogs, const CGuiCore& core)
{
    std::set<Frame> present;
    for (const CDXUTDialog* dialog : core.GetDialogs())
        present.insert(frame_of(Authored::state(*dialog)));
    const auto covers = [&](const StatePtr& state) { return present.contains(frame_of(*state)); };
    while (std::any_of(dialogs.begin(), dialogs.end(), covers))
        for (StatePtr& state : dialogs) {
            auto& s = SceneSnapshot::edit<DialogState>(state);
            s.x += copy_step;
            s.y += copy_step;
        }
}

/// What was read holds dialogs alone, and the scene has nothing else to take from it.
Status prepare(SceneSnapshot& content, const CGuiPlugScene& scene)
{
    const CGuiCore& core = scene.gui_core();
    auto& dialogs = content.objects[core.dialog_kind().place];
    const auto& root = SceneSnapshot::as<DialogState>(content.objects[core.root_kind().place].front());
    if (dialogs.empty() || !root.controls.isEmpty())
        return Status::error(lang(u"其中没有窗口", u"there are no dialogs in it"));
    give_own_functions(content, scene);
    give_free_names(dialogs, core);
    step_aside(dialogs, core);
    return {};
}

} // namespace

ToldDialogs told_selected_dialogs(const CGuiPlugScene& scene)
{
    ToldDialogs told;
    for (const auto& [entry, text] :
         package_texts(scene.document(), content_to_save(scene.gui_core(), {.selection_only = true})))
        told.texts.insert(entry, text);
    return told;
}

Status add_dialogs(CGuiPlugScene& scene, const ToldDialogs& told, const QString& step_name)
{
    CGuiCore& core = scene.gui_core();
    const qsizetype present = core.GetDialogs().size();
    {
        const UserAction action(scene.journal(), step_name);
        const auto status = with_enough_memory([&]() -> Status {
            auto content = read_content("{\"format\":1}", told.texts, told.files, core);
            if (!content)
                return content.status();
            if (auto prepared = prepare(content.value(), scene); !prepared)
                return prepared;
            return merge_content(scene, std::move(content.value()), {}, false);
        });
        if (!status)
            return status;
        core.ClearDialogSelection();
        for (CDXUTDialog* dialog : core.GetDialogs().mid(present))
            core.SelectDialog(dialog, true);
    }
    tell_selection(scene);
    return {};
}

Status duplicate_dialogs(CGuiPlugScene& scene)
{
    return add_dialogs(scene, told_selected_dialogs(scene), lang(u"再制窗口", u"Duplicate Dialog"));
}

} // namespace tarn
