#include "dialog_copies.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/package_writer.h"
#include "gui_scene/scene_merge.h"
#include "selection_edit.h"
#include "store/enough_memory.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace tarn {

namespace {

constexpr int copy_step = 10;    ///< pixels from a dialog to its copy in the same place
constexpr int longest_stem = 24; ///< UTF-16 units of a dialog's name that a number follows

/// A copy's event calls the function that is made for it, not the one that the original calls too.
void give_own_functions(SceneContent& content)
{
    CConfigScene& functions = *content.functions;
    for (const auto& event : content.events.events()) {
        const QString own = CEventManager::new_function_name(event->control, event->type);
        const FuncPtr bound = functions.find_function(event->function);
        if (event->function == own || !bound || functions.find_function(own))
            continue;
        if (functions.add_function(bound->copy(own, bound->text()), false))
            event->function = own;
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
        present.insert(frame_of(dialog->authored_state()));
    const auto covers = [&](const StatePtr& state) { return present.contains(frame_of(*state)); };
    while (std::any_of(dialogs.begin(), dialogs.end(), covers))
        for (StatePtr& state : dialogs) {
            auto& s = SceneSnapshot::edit<DialogState>(state);
            s.x += copy_step;
            s.y += copy_step;
        }
}

/// What was read holds dialogs alone, and the scene has nothing else to take from it.
Status prepare(SceneContent& content, const CGuiCore& core)
{
    auto& dialogs = content.objects.objects[core.dialog_kind().place];
    const auto& root = SceneSnapshot::as<DialogState>(content.objects.objects[core.root_kind().place].front());
    if (dialogs.empty() || !root.controls.isEmpty())
        return Status::error(lang(u"其中没有窗口", u"there are no dialogs in it"));
    give_own_functions(content);
    give_free_names(dialogs, core);
    step_aside(dialogs, core);
    return {};
}

} // namespace

ToldDialogs told_selected_dialogs(const CGuiPlugScene& scene)
{
    return {scene_text(scene.parts(), true)};
}

Status add_dialogs(CGuiPlugScene& scene, const ToldDialogs& told, const QString& step_name)
{
    CGuiCore& core = scene.gui_core();
    const qsizetype present = core.GetDialogs().size();
    {
        const UserAction action(scene.journal(), step_name);
        const auto status = with_enough_memory([&]() -> Status {
            auto content = read_content("{\"format\":1}", {{QStringLiteral("scene.json"), told.scene}}, told.pictures,
                                        core);
            if (!content)
                return content.status();
            if (auto prepared = prepare(content.value(), core); !prepared)
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
