#include "control_commands.h"
#include "core/authored.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/translations/translations.h"
#include "selection_edit.h"

#include <QHash>

#include <algorithm>
#include <functional>
#include <memory>

namespace tarn {

namespace {

constexpr QPointF copy_offset(10, 10); ///< pixels from an object to its duplicate

/// `order`, lowest layer first, with its selected objects moved. They keep their order among each other: a step up or
/// down stops at the end, and at a neighbour that was stopped.
template <class Object>
QList<Object*> with_moved_layers(QList<Object*> order, Layer where, const SelectionRecord& selection)
{
    const auto is_selected = [&](Object* object) { return selection.contains(object); };
    const auto climb = [&](auto first, auto last) {
        for (auto object = first; object != last && object + 1 != last; ++object)
            if (!is_selected(object[0]) && is_selected(object[1]))
                std::iter_swap(object, object + 1);
    };
    switch (where) {
    case Layer::Top: std::stable_partition(order.begin(), order.end(), std::not_fn(is_selected)); break;
    case Layer::Bottom: std::stable_partition(order.begin(), order.end(), is_selected); break;
    case Layer::Up: climb(order.rbegin(), order.rend()); break;
    case Layer::Down: climb(order.begin(), order.end()); break;
    }
    return order;
}

} // namespace

std::vector<CDXUTControl*> selected_controls(const CGuiCore& core, bool unlocked_only)
{
    std::vector<CDXUTControl*> controls;
    const SelectionRecord& selection = core.selection();
    if (!selection.controls_selected || selection.controls.empty())
        return controls;
    for (const CDXUTDialog* dialog : all_dialogs(core))
        for (CDXUTControl* control : dialog->controls())
            if (selection.contains(control) && (!unlocked_only || !control->locked()))
                controls.push_back(control);
    return controls;
}

std::vector<CDXUTDialog*> selected_dialogs(const CGuiCore& core)
{
    std::vector<CDXUTDialog*> dialogs;
    for (CDXUTDialog* dialog : core.GetDialogs())
        if (!core.selection().controls_selected && core.selection().contains(dialog))
            dialogs.push_back(dialog);
    return dialogs;
}

void remove_selected(CGuiPlugScene& scene)
{
    const auto controls = selected_controls(scene.gui_core(), true);
    if (!controls.empty()) {
        scene.RemoveCtrls(controls);
        scene.world()->broadcast(ui_control_selected);
        return;
    }
    scene.RemoveDialogs(selected_dialogs(scene.gui_core()));
}

CDXUTControl* add_copy(CGuiCore& core, const ObjectState& original, CDXUTDialog& dialog, QPointF offset)
{
    if (core.document().ids_left() == 0)
        return nullptr;
    auto* state = static_cast<ControlState*>(original.clone());
    state->id = core.document().take_id();
    state->parent = {};
    state->x += float(offset.x());
    state->y += float(offset.y());
    const auto made = core.make_control(StatePtr(state));
    core.add_control(*made, dialog);
    return made.get();
}

void tell_new_controls(CGuiPlugScene& scene)
{
    tell_selection(scene);
    scene.world()->broadcast(ui_control_selected);
}

namespace {

/// The events of controls that a step makes, which are not recorded themselves: they go and come with it.
class MadeEvents final : public Journal::SideEffect {
public:
    struct Event {
        quint32 control;
        quint32 type;
        QString function;
    };
    MadeEvents(CEventManager& manager, std::vector<Event> events) : m_manager(manager), m_events(std::move(events)) {}

    void exchange() override
    {
        const RecordingOff off(m_manager.document().journal());
        for (const Event& event : m_events) {
            if (!m_are_there)
                m_manager.CreateEventW(event.control, event.type, event.function);
            else if (CGuiEvent* present = m_manager.GetFunc(event.control, event.type))
                m_manager.RemoveEvent(present);
        }
        m_are_there = !m_are_there;
    }

private:
    CEventManager& m_manager;
    std::vector<Event> m_events;
    bool m_are_there = false;
};

/// The events of a control call the same functions for its copy. `copies`: by the originals' ids.
void copy_events(CGuiPlugScene& scene, const QHash<quint32, quint32>& copies)
{
    std::vector<MadeEvents::Event> made;
    for (const CGuiEvent* event : scene.events().events())
        if (const quint32 copy = copies.value(event->control()))
            made.push_back({copy, event->type(), event->function()});
    if (made.empty())
        return;
    auto step = std::make_unique<MadeEvents>(scene.events(), std::move(made));
    step->exchange();
    scene.journal().add_side_effect(std::move(step));
}

} // namespace

void duplicate_selected(CGuiPlugScene& scene)
{
    CGuiCore& core = scene.gui_core();
    std::vector<CDXUTControl*> copies;
    QHash<quint32, quint32> ids;
    {
        const UserAction action(scene.journal(), lang(u"再制控件", u"Duplicate Control"));
        for (const CDXUTControl* control : selected_controls(core, false))
            if (CDXUTControl* copy = add_copy(core, Authored::state(*control), *control->dialog(), copy_offset)) {
                copies.push_back(copy);
                ids.insert(control->id(), copy->id());
            }
        copy_events(scene, ids);
        const QList<quint32> originals = ids.keys();
        scene.translations().take_rows(scene.translations().rows_of({originals.begin(), originals.end()}), ids);
        core.ClearCtrlSelection();
        core.SelectControls(copies);
    }
    tell_new_controls(scene);
}

void select_all(CGuiPlugScene& scene)
{
    const CGuiCore& core = scene.gui_core();
    const CDXUTDialog* current = core.selection().current_dialog;
    std::vector<CDXUTControl*> controls;
    for (const CDXUTDialog* dialog : all_dialogs(core)) {
        if (current ? dialog != current : !dialog->GetVisible())
            continue;
        std::copy_if(dialog->controls().begin(), dialog->controls().end(), std::back_inserter(controls),
                     [](const CDXUTControl* control) { return is_editable(*control); });
    }
    if (!controls.empty())
        select_controls(scene, controls);
}

void move_selected_layers(CGuiPlugScene& scene, Layer where)
{
    CGuiCore& core = scene.gui_core();
    const bool of_controls = core.selection().controls_selected;
    {
        const UserAction action(scene.journal(), lang(u"调整图层", u"Change Layer"));
        const SelectionRecord& selection = core.selection();
        if (of_controls)
            for (CDXUTDialog* dialog : all_dialogs(core))
                dialog->reorder_controls(with_moved_layers(dialog->controls(), where, selection));
        else
            core.reorder_dialogs(with_moved_layers(core.GetDialogs(), where, selection));
    }
    scene.world()->broadcast(of_controls ? ui_controls_changed : ui_scene_changed);
}

bool all_locked(const CGuiCore& core)
{
    const auto& controls = core.selection().controls;
    return !controls.empty()
        && std::all_of(controls.begin(), controls.end(), [](const CDXUTControl* control) { return control->locked(); });
}

void toggle_locked(CGuiPlugScene& scene)
{
    const bool lock = !all_locked(scene.gui_core());
    {
        const UserAction action(scene.journal(), lock ? lang(u"锁定", u"Lock") : lang(u"解锁", u"Unlock"));
        for (CDXUTControl* control : scene.gui_core().selection().controls) {
            control->set_locked(lock);
        }
    }
    notify_properties(scene);
}

bool all_hidden(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    bool some = false;
    for (const CDXUTControl* control : selection.controls) {
        if (control->locked())
            continue;
        if (control->GetVisible())
            return false;
        some = true;
    }
    if (selection.controls_selected)
        return some;
    const auto dialogs = selected_dialogs(core);
    return !dialogs.empty()
        && std::none_of(dialogs.begin(), dialogs.end(), [](const CDXUTDialog* dialog) { return dialog->GetVisible(); });
}

void show_or_hide_selected(CGuiPlugScene& scene)
{
    const CGuiCore& core = scene.gui_core();
    const bool show = all_hidden(core);
    {
        const UserAction action(scene.journal(), show ? lang(u"显示", u"Show") : lang(u"隐藏", u"Hide"));
        for (CDXUTControl* control : selected_controls(core, true))
            control->SetVisible(show);
        for (CDXUTDialog* dialog : selected_dialogs(core))
            dialog->SetVisible(show);
    }
    notify_properties(scene);
}

void select_dialog_of_control(CGuiPlugScene& scene)
{
    const CDXUTControl* control = scene.gui_core().selection().current_control;
    if (control && control->dialog() && !control->dialog()->is_root())
        select(scene, {control->dialog(), nullptr}, false);
}

} // namespace tarn
