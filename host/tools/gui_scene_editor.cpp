#include "gui_scene_editor.h"

#include "aids_layer.h"
#include "caption_edit.h"
#include "control_clipboard.h"
#include "control_commands.h"
#include "core/language.h"
#include "dialog_copies.h"
#include "engine/base_world.h"
#include "engine/world_edit.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/removal_title.h"
#include "gui_scene/world_removal.h"
#include "look_clipboard.h"
#include "picture_drop.h"
#include "selection_edit.h"
#include "selection_overlay.h"
#include "world/world_object.h"
#include "world_clipboard.h"
#include "world_mouse.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <span>

namespace tarn {

namespace {

struct Row {
    GuiSceneEditor::Command id;
    const char* key; ///< of the settings file
    const char16_t* chinese;
    const char16_t* english;
    QKeySequence::StandardKey keys;
    int icon; ///< number in the icon table; 0 for none
    bool begins_group;
};

using E = GuiSceneEditor;

/// The first eight stand in the Edit menu, all but the last three in every context menu.
constexpr Row table[] = {
    {E::cut, "cut", u"剪切(&T)", u"Cu&t", QKeySequence::Cut, 21, true},
    {E::copy, "copy", u"复制(&C)", u"&Copy", QKeySequence::Copy, 19, false},
    {E::paste, "paste", u"粘贴(&P)", u"&Paste", QKeySequence::Paste, 20, false},
    {E::duplicate, "duplicate", u"再制(&D)", u"&Duplicate", QKeySequence::UnknownKey, 18, false},
    {E::remove, "delete", u"删除(&L)", u"De&lete", QKeySequence::Delete, 6420, false},
    {E::all, "select_all", u"全选(&A)", u"Select &All", QKeySequence::SelectAll, 6162, true},
    {E::copy_own_look, "copy_look", u"复制外观(&K)", u"Copy Loo&k", QKeySequence::UnknownKey, 0, true},
    {E::paste_own_look, "paste_look", u"粘贴外观(&O)", u"Paste L&ook", QKeySequence::UnknownKey, 0, false},
    {E::to_top, "to_top", u"置顶", u"Bring to Top", QKeySequence::UnknownKey, 6427, true},
    {E::one_up, "one_up", u"上移一层", u"Move Up", QKeySequence::UnknownKey, 6052, false},
    {E::one_down, "one_down", u"下移一层", u"Move Down", QKeySequence::UnknownKey, 6412, false},
    {E::to_bottom, "to_bottom", u"置底", u"Send to Bottom", QKeySequence::UnknownKey, 6423, false},
    {E::lock, "lock", u"锁定", u"Lock", QKeySequence::UnknownKey, 0, true},
    {E::hide, "hide", u"隐藏", u"Hide", QKeySequence::UnknownKey, 2, false},
    {E::to_dialog, "to_dialog", u"选择所在窗口", u"Select the Dialog", QKeySequence::UnknownKey, 0, true},
    {E::add_camera, "add_camera", u"在此添加相机", u"Add a Camera Here", QKeySequence::UnknownKey, 0, true},
    {E::add_path, "add_path", u"在此添加路径", u"Add a Path Here", QKeySequence::UnknownKey, 0, false},
    {E::add_panel, "add_panel", u"在此添加面板", u"Add a Panel Here", QKeySequence::UnknownKey, 0, false},
};
constexpr std::size_t edit_menu_length = 8;
constexpr std::size_t world_length = 3; ///< the last ones, of a menu that opens on the world

/// Those that no platform has its own for.
QKeySequence keys_of(const Row& row)
{
    switch (row.id) {
    case E::duplicate: return {Qt::CTRL | Qt::Key_D};
    case E::copy_own_look: return {Qt::CTRL | Qt::ALT | Qt::Key_C};
    case E::paste_own_look: return {Qt::CTRL | Qt::ALT | Qt::Key_V};
    default: return {row.keys};
    }
}

bool has_unlocked_control(const SelectionRecord& selection)
{
    return selection.controls_selected
        && std::any_of(selection.controls.begin(), selection.controls.end(),
                       [](const CDXUTControl* control) { return !control->locked(); });
}

/// A control that nobody sees can only have been selected in a list.
bool has_hidden_control(const SelectionRecord& selection)
{
    return std::any_of(selection.controls.begin(), selection.controls.end(),
                       [](const CDXUTControl* control) { return !control->locked() && !control->GetVisible(); });
}

/// Without asking for the list of all controls, which is made anew after each control that is created.
bool has_controls(const CGuiCore& core)
{
    const auto holds_some = [](const CDXUTDialog* dialog) { return !dialog->controls().isEmpty(); };
    return holds_some(core.GetRootDialog())
        || std::any_of(core.GetDialogs().begin(), core.GetDialogs().end(), holds_some);
}

void copy_selected(CGuiPlugScene& scene, bool unlocked_only)
{
    const CGuiCore& core = scene.gui_core();
    copy_to_clipboard(core.selection().controls_selected ? clipboard_text(scene, selected_controls(core, unlocked_only))
                                                         : clipboard_text_of_dialogs(scene));
}

void cut_selected(CGuiPlugScene& scene)
{
    const bool of_controls = scene.gui_core().selection().controls_selected;
    const UserAction action(scene.journal(),
                            of_controls ? lang(u"剪切控件", u"Cut Control") : lang(u"剪切窗口", u"Cut Dialog"));
    copy_selected(scene, true);
    remove_selected(scene);
}

/// Whether the command goes to objects of the world when some are selected.
bool is_of_world(int command)
{
    return command == E::cut || command == E::copy || command == E::duplicate || command == E::remove;
}

void run_on_world(CGuiPlugScene& scene, int command)
{
    if (command == E::cut || command == E::copy)
        copy_to_clipboard(clipboard_text_of_world(scene));
    if (command == E::cut || command == E::remove)
        remove_world_selection(scene);
    if (command == E::duplicate)
        duplicate_world_objects(*scene.world());
}

Status duplicate_selected_objects(CGuiPlugScene& scene)
{
    if (!scene.gui_core().selection().controls_selected)
        return duplicate_dialogs(scene);
    duplicate_selected(scene);
    return {};
}

/// Before the selected objects are removed.
void ask_to_remove(const CGuiCore& core, EditCommand& command)
{
    const bool of_controls = core.selection().controls_selected;
    command.question = of_controls ? lang(u"你正在删除你的控件!", u"Ensure delete control?")
                                   : lang(u"你正在删除你的对话框!", u"Ensure delete dialog?");
    command.question_title = of_controls ? removal_title_of(selected_controls(core, true))
                                         : removal_title_of(selected_dialogs(core));
}

} // namespace

EditCommand GuiSceneEditor::described(Command command) const
{
    const Row& row = *std::find_if(std::begin(table), std::end(table),
                                   [&](const Row& entry) { return entry.id == command; });
    EditCommand described{.id = row.id,
                          .key = row.key,
                          .name = lang(row.chinese, row.english),
                          .keys = keys_of(row),
                          .icon = row.icon,
                          .enabled = is_enabled(row.id),
                          .checked = row.id == lock && all_locked(m_scene.gui_core()),
                          .begins_group = row.begins_group,
                          .question = {}};
    const CGuiCore& core = m_scene.gui_core();
    if (row.id == hide && described.enabled && all_hidden(core))
        described.name = lang(u"显示", u"Show");
    const bool takes_unseen = !m_world.has_selection()
        && (!core.selection().controls_selected || has_hidden_control(core.selection()));
    if (row.id == remove && described.enabled && takes_unseen)
        ask_to_remove(core, described);
    return described;
}

std::vector<EditCommand> GuiSceneEditor::commands() const
{
    std::vector<EditCommand> commands;
    for (std::size_t i = 0; i < edit_menu_length; ++i)
        commands.push_back(described(table[i].id));
    return commands;
}

std::vector<EditCommand> GuiSceneEditor::context_commands(QPointF place)
{
    const CGuiCore& core = m_scene.gui_core();
    if (!core.selection().editing || m_scene.mouse_function() != 0 || m_aids.on_ruler(place))
        return {};
    const auto targets = targets_at(core, place);
    // A dialog that is selected does not keep its controls from being reached.
    const bool known = std::any_of(targets.begin(), targets.end(), [&](const Target& target) {
        return is_selected(core, target) && (target.control || target == targets.front());
    });
    if (!targets.empty()) {
        if (!known)
            select(m_scene, targets.front(), false);
    } else if (WorldObject* object = m_world.object_at(place)) {
        if (!m_world.is_selected(*object))
            m_world.select(*object, false);
    } else {
        clear_selection(m_scene);
        m_world.clear_selection();
    }
    m_menu_place = place;
    std::vector<EditCommand> commands = all_commands();
    if (targets.empty())
        for (const Row& row : std::span(table).last(world_length))
            commands.push_back(described(row.id));
    return commands;
}

std::vector<EditCommand> GuiSceneEditor::all_commands() const
{
    std::vector<EditCommand> commands;
    for (const Row& row : std::span(table).first(std::size(table) - world_length))
        commands.push_back(described(row.id));
    return commands;
}

std::vector<EditCommand> GuiSceneEditor::selection_commands() const
{
    if (!m_scene.gui_core().selection().editing)
        return {};
    std::vector<EditCommand> commands = all_commands();
    // Where the objects are not seen, each removal asks.
    for (EditCommand& command : commands)
        if (command.id == remove && command.enabled && !m_world.has_selection())
            ask_to_remove(m_scene.gui_core(), command);
    return commands;
}

bool GuiSceneEditor::cancel_creation()
{
    return m_scene.mouse_function() != 0 && m_scene.world()->mouse_tool()->key(Qt::Key_Escape, {});
}

bool GuiSceneEditor::create_armed()
{
    return m_scene.mouse_function() != 0 && m_scene.world()->mouse_tool()->key(Qt::Key_Return, {});
}

QRectF GuiSceneEditor::selected_area() const
{
    return selected_frame(m_scene.gui_core());
}

Status GuiSceneEditor::drop_picture(const QString& file, QPointF place)
{
    return m_scene.gui_core().selection().editing ? tarn::drop_picture(m_scene, file, place) : Status();
}

std::vector<ViewSetting> GuiSceneEditor::view_settings() const
{
    const ViewAids& aids = m_scene.gui_core().view_aids();
    const auto step = quint32(m_aids.grid().step);
    return {{"ruler", {}, aids.ruler},
            {"snap", {}, aids.snap},
            {"guide_lines", {}, aids.guide_lines},
            {"coordinate_display", {}, aids.coordinate_display},
            {"grid", lang(u"显示捕捉网格(&G)", u"Show Snap &Grid"), m_aids.grid().shown ? 1U : 0U},
            {"grid_step", lang(u"网格间距(&A)", u"Grid Sp&acing"), step, {2, 4, 5, 8, 10, 16, 20, 32, 50}}};
}

void GuiSceneEditor::set_view_setting(const QString& key, quint32 value)
{
    ViewAids& aids = m_scene.gui_core().view_aids();
    for (const ViewSetting& setting : view_settings()) {
        const bool known = setting.choices.empty()
            ? value <= 1
            : std::find(setting.choices.begin(), setting.choices.end(), value) != setting.choices.end();
        if (key != QLatin1String(setting.key) || !known)
            continue;
        if (key == QLatin1String("ruler"))
            aids.ruler = value;
        else if (key == QLatin1String("snap"))
            aids.snap = value;
        else if (key == QLatin1String("guide_lines"))
            aids.guide_lines = value;
        else if (key == QLatin1String("coordinate_display"))
            aids.coordinate_display = value;
        else if (key == QLatin1String("grid"))
            m_aids.grid().shown = value;
        else
            m_aids.grid().step = int(value);
    }
    if (CBaseWorld* world = m_scene.world())
        world->update_all_views();
}

GuiSceneEditor::Pastable GuiSceneEditor::can_paste() const
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!m_can_paste) {
        // Asking another program what it put there may take long, and menus ask often.
        m_can_paste = Pastable{clipboard_has_objects(), clipboard_has_look()};
        QObject::connect(
            clipboard, &QClipboard::dataChanged, &m_clipboard_listener, [this] { m_can_paste.reset(); },
            Qt::SingleShotConnection);
    }
    return *m_can_paste;
}

bool GuiSceneEditor::is_enabled(int command) const
{
    const SelectionRecord& selection = m_scene.gui_core().selection();
    if (!selection.editing || m_scene.journal().in_action())
        return false;
    if (m_world.has_selection() && is_of_world(command))
        return true;
    const bool controls = selection.controls_selected && !selection.controls.empty();
    const bool dialogs = !selection.controls_selected && !selected_dialogs(m_scene.gui_core()).empty();
    switch (command) {
    case add_camera:
    case add_path:
    case add_panel: return true;
    case lock: return controls;
    case paste: return can_paste().objects;
    case copy_own_look: return controls;
    case paste_own_look: return controls && can_paste().look;
    case cut:
    case remove:
    case hide: return dialogs || has_unlocked_control(selection);
    case all: return has_controls(m_scene.gui_core());
    case to_dialog: return controls && selection.current_dialog && !selection.current_dialog->is_root();
    default: return controls || dialogs;
    }
}

Status GuiSceneEditor::run(int command)
{
    if (!is_enabled(command))
        return {};
    if (m_world.has_selection() && is_of_world(command)) {
        run_on_world(m_scene, command);
        return {};
    }
    switch (command) {
    case cut: cut_selected(m_scene); break;
    case copy: copy_selected(m_scene, false); break;
    case paste: return paste_clipboard(m_scene);
    case duplicate: return duplicate_selected_objects(m_scene);
    case copy_own_look: copy_look(m_scene); break;
    case paste_own_look: return paste_look(m_scene);
    case remove: remove_selected(m_scene); break;
    case all: select_all(m_scene); break;
    case to_top: move_selected_layers(m_scene, Layer::Top); break;
    case one_up: move_selected_layers(m_scene, Layer::Up); break;
    case one_down: move_selected_layers(m_scene, Layer::Down); break;
    case to_bottom: move_selected_layers(m_scene, Layer::Bottom); break;
    case lock: toggle_locked(m_scene); break;
    case hide: show_or_hide_selected(m_scene); break;
    case to_dialog: select_dialog_of_control(m_scene); break;
    case add_camera: m_world.add(WorldType::Camera, m_menu_place); break;
    case add_path: m_world.add(WorldType::Path, m_menu_place); break;
    case add_panel: m_world.add(WorldType::Panel, m_menu_place); break;
    default: break;
    }
    return {};
}

std::optional<EditableText> GuiSceneEditor::text_at(QPointF place)
{
    return m_aids.on_ruler(place) ? std::nullopt : editable_text_at(m_scene, place);
}

} // namespace tarn
