#include "gui_core.h"

#include "control_class.h"
#include "dxut_control.h"
#include "dxut_dialog.h"
#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "open_menu.h"
#include "style_look.h"
#include "texture_name.h"
#include "transitions.h"
#include "world_link.h"

#include <algorithm>
#include <iterator>
#include <utility>

using tarn::CoreState;

void tarn::LiveState::prune()
{
    for (CDXUTControl** held : {&hovered, &pressed, &focused, &popup})
        if (*held && !(*held)->is_attached())
            *held = nullptr;
    for (CDXUTDialog** held : {&clicked, &caption_hovered.dialog, &caption_pressed.dialog})
        if (*held && !(*held)->is_attached())
            *held = nullptr;
}

CGuiCore::CGuiCore(tarn::Document& document)
    : ModelObject(document, new CoreState),
      m_root(std::make_shared<CDXUTDialog>(*this, tarn::StatePtr(tarn::DialogState::root()))),
      m_selection_history(document.journal()),
      m_transitions(std::make_unique<tarn::Transitions>())
{
    document.journal().on_restored = [this](const tarn::Journal::Step& step) { step_travelled(step); };
    document.add_part({.entry = "scene.json", .container = this, .required = true});
    add_kinds();
    document.before_free = [this] {
        follow_structure();
        m_selection_history.forget_steps();
        m_draw_slot.reset();
    };
}

CGuiCore::~CGuiCore()
{
    document().close();
}

const tarn::ObjectKind& CGuiCore::root_kind() const
{
    return *m_root->kind();
}

void CGuiCore::add_kinds()
{
    document().add_kind({.part = "scene.json",
                         .key = "root",
                         .chinese = u"根窗口",
                         .english = u"root dialog",
                         .fixed = m_root.get(),
                         .make_state = [](int) -> tarn::ObjectState* { return new tarn::DialogState; }});
    document().add_kind(
        {.part = "scene.json",
         .key = "dialogs",
         .chinese = u"窗口",
         .english = u"dialog",
         .container = this,
         .make_state = [](int) -> tarn::ObjectState* { return new tarn::DialogState; },
         .make_object = [this](tarn::StatePtr state) { return std::make_shared<CDXUTDialog>(*this, std::move(state)); },
         .children =
             [](tarn::ObjectState& parent) {
                 auto* core = dynamic_cast<CoreState*>(&parent);
                 return core ? &core->dialogs : nullptr;
             }});
    m_dialog_kind = &document().kinds().back();
    document().add_kind({.part = "scene.json",
                         .key = "controls",
                         .chinese = u"控件",
                         .english = u"control",
                         .saves_type = true,
                         .make_state = tarn::make_control_state,
                         .make_object =
                             [this](tarn::StatePtr state) {
                                 const int type = tarn::SceneSnapshot::as<tarn::ControlState>(state).type;
                                 return tarn::control_class(type)->create(*this, std::move(state));
                             },
                         .children =
                             [](tarn::ObjectState& parent) {
                                 auto* dialog = dynamic_cast<tarn::DialogState*>(&parent);
                                 return dialog ? &dialog->controls : nullptr;
                             }});
    m_control_kind = &document().kinds().back();
    document().add_kind(
        {.part = "scene.json",
         .key = "menus",
         .chinese = u"菜单",
         .english = u"menu",
         .container = this,
         .make_state = [](int) -> tarn::ObjectState* { return new tarn::MenuState; },
         .make_object = [this](tarn::StatePtr state) { return std::make_shared<CDXUTMenu>(*this, std::move(state)); },
         .children =
             [](tarn::ObjectState& parent) {
                 auto* core = dynamic_cast<CoreState*>(&parent);
                 return core ? &core->menus : nullptr;
             }});
    m_menu_kind = &document().kinds().back();
    document().add_kind(
        {.part = "scene.json",
         .key = "menu_items",
         .chinese = u"菜单项",
         .english = u"menu item",
         .make_state = [](int) -> tarn::ObjectState* { return new tarn::MenuItemState; },
         .make_object =
             [this](tarn::StatePtr state) { return std::make_shared<CDXUTMenuItem>(*this, std::move(state)); },
         .children =
             [](tarn::ObjectState& parent) {
                 auto* menu = dynamic_cast<tarn::MenuState*>(&parent);
                 return menu ? &menu->items : nullptr;
             }});
    m_menu_item_kind = &document().kinds().back();
    add_style_kind();
}

// What is worked out from the lists of ids ----------------------------------------------------------------------------

void CGuiCore::find_dialogs() const
{
    m_dialogs_stale = false;
    m_dialogs.clear();
    for (const tarn::ObjectRef dialog : core_state().dialogs)
        m_dialogs.append(static_cast<CDXUTDialog*>(document().find(dialog.id)));
}

void CGuiCore::find_controls() const
{
    m_controls_stale = false;
    m_controls.clear();
    const auto add = [this](const CDXUTDialog& dialog) {
        m_controls.insert(m_controls.end(), dialog.controls().begin(), dialog.controls().end());
    };
    for (const CDXUTDialog* dialog : GetDialogs())
        add(*dialog);
    add(*m_root);
    const auto by_id = [](const CDXUTControl* a, const CDXUTControl* b) { return a->id() < b->id(); };
    if (!std::is_sorted(m_controls.begin(), m_controls.end(), by_id))
        std::sort(m_controls.begin(), m_controls.end(), by_id);
}

void CGuiCore::find_menus() const
{
    m_menus_stale = false;
    m_menus.clear();
    for (const tarn::ObjectRef menu : core_state().menus)
        m_menus.append(static_cast<CDXUTMenu*>(document().find(menu.id)));
}

const std::vector<CDXUTControl*>& CGuiCore::controls() const
{
    if (m_controls_stale)
        find_controls();
    return m_controls;
}

/// What was removed is not selected any more, nor under the mouse; the current control may have come to another dialog.
void CGuiCore::follow_structure()
{
    if (!std::exchange(m_structure_stale, false))
        return;
    m_selection_history.before_change(m_selection);
    if (const auto kept = std::exchange(m_selected_again, nullptr))
        select_again(*kept);
    m_selection.prune();
    m_live.prune();
    m_transitions->prune();
    if (m_open_menu && !m_open_menu->menu().is_attached())
        close_menu();
    shown_changed();
}

void CGuiCore::structure_changed()
{
    if (!document().writes_shown())
        m_selection_history.before_structure(m_selection);
    m_structure_stale = m_controls_stale = true;
    m_names.forget();
}

void CGuiCore::step_travelled(const tarn::Journal::Step& step)
{
    m_names.forget();
    const auto kept = m_selection_history.travelled(step.number, m_selection);
    if (!kept)
        return;
    m_selected_again = kept;
    m_structure_stale = true;
}

void CGuiCore::select_again(const tarn::KeptSelection& kept)
{
    m_selection.clear_controls();
    m_selection.clear_dialogs();
    m_selection.controls_selected = kept.controls_selected;
    for (const quint32 id : kept.dialogs)
        if (auto* dialog = document().find_as<CDXUTDialog>(id))
            m_selection.add(dialog);
    for (const quint32 id : kept.controls)
        if (auto* control = document().find_as<CDXUTControl>(id))
            m_selection.add(control);
    m_selection.current_dialog = document().find_as<CDXUTDialog>(kept.current_dialog);
    m_selection.current_control = document().find_as<CDXUTControl>(kept.current_control);
    add_damage(QRectF(QPointF(), m_screen)); // Another dialog may be the current one.
}

CDXUTDialog* CGuiCore::find_dialog(quint32 id) const
{
    auto* dialog = document().find_as<CDXUTDialog>(id);
    return dialog && dialog->is_attached() ? dialog : nullptr;
}

CDXUTControl* CGuiCore::find_control(quint32 id) const
{
    auto* control = document().find_as<CDXUTControl>(id);
    return control && control->is_attached() ? control : nullptr;
}

CDXUTMenu* CGuiCore::find_menu(quint32 id) const
{
    auto* menu = document().find_as<CDXUTMenu>(id);
    return menu && menu->is_attached() ? menu : nullptr;
}

CDXUTMenuItem* CGuiCore::find_menu_item(quint32 id) const
{
    auto* item = document().find_as<CDXUTMenuItem>(id);
    return item && item->is_attached() ? item : nullptr;
}

tarn::ObjectState* CGuiCore::fresh_state() const
{
    return new CoreState;
}

void CGuiCore::children_changed()
{
    m_dialogs_stale = m_menus_stale = m_look_stale = true;
    structure_changed();
    add_damage(QRectF(QPointF(), m_screen));
}

void CGuiCore::state_changed()
{
    if (std::exchange(m_known_style, core_state().scene_style.id) != core_state().scene_style.id)
        look_changed();
    if (std::exchange(m_known_design, design_size()) != design_size())
        for (CDXUTDialog* dialog : GetDialogs())
            dialog->state_changed();
    add_damage(QRectF(QPointF(), m_screen));
}

// Selection -----------------------------------------------------------------------------------------------------------

void CGuiCore::SelectDialog(CDXUTDialog* dialog, bool add)
{
    if (!dialog)
        return;
    before_selecting();
    m_selection.clear_controls();
    m_selection.controls_selected = false;
    if (!add)
        m_selection.clear_dialogs();
    m_selection.add(dialog);
    m_selection.current_dialog = dialog;
    damage_current_dialog();
}

/// The steps that were made until now keep what is selected.
void CGuiCore::before_selecting()
{
    follow_structure();
    m_selection_history.before_change(m_selection);
    damage_current_dialog();
}

/// It is drawn in another colour than the others.
void CGuiCore::damage_current_dialog()
{
    if (const CDXUTDialog* dialog = m_selection.current_dialog; dialog && !dialog->is_root())
        add_damage(dialog->outer_rect());
}

void CGuiCore::ClearDialogSelection()
{
    before_selecting();
    m_selection.clear_dialogs();
}

void CGuiCore::SelectControl(CDXUTControl* control, bool add)
{
    if (!control)
        return;
    before_selecting();
    m_selection.clear_dialogs();
    m_selection.controls_selected = true;
    if (!add)
        m_selection.clear_controls();
    m_selection.add(control);
    m_selection.current_control = control;
    m_selection.current_dialog = control->dialog();
    damage_current_dialog();
}

void CGuiCore::SelectControls(const std::vector<CDXUTControl*>& controls)
{
    if (controls.empty())
        return;
    before_selecting();
    m_selection.clear_dialogs();
    m_selection.controls_selected = true;
    m_selection.controls.reserve(m_selection.controls.size() + controls.size());
    for (CDXUTControl* control : controls)
        m_selection.add(control);
    SelectControl(controls.back(), true);
}

void CGuiCore::ClearCtrlSelection()
{
    before_selecting();
    m_selection.clear_controls();
}

void CGuiCore::EnableGui(bool editing)
{
    if (m_live.popup)
        m_live.popup->close_popup();
    close_menu();
    m_selection.editing = editing;
    m_live = {};
    m_now = m_caret_since = 0;
    m_transitions->clear();
    add_damage(QRectF(QPointF(), m_screen));
    for (CDXUTDialog* dialog : GetDialogs())
        dialog->set_minimized(false);
    for (CDXUTControl* control : controls())
        control->reset_run_state();
}

// Screen and drawing --------------------------------------------------------------------------------------------------

void CGuiCore::set_screen_size(QSize size)
{
    size = size.expandedTo(QSize(1, 1));
    if (size == m_screen)
        return;
    m_screen = size;
    m_root->state_changed();
    for (CDXUTDialog* dialog : GetDialogs())
        dialog->state_changed();
    add_damage(QRectF(QPointF(), m_screen));
    document().changes().touch_everything(); // Anchored places are others now.
}

bool CGuiCore::move_guide(Qt::Orientation lines, std::optional<quint32> from, std::optional<quint32> to)
{
    QList<quint32> wanted = guides(lines);
    if (from)
        wanted.removeOne(*from);
    if (to && !wanted.contains(*to))
        wanted.insert(std::lower_bound(wanted.begin(), wanted.end(), *to), *to);
    if (wanted == guides(lines))
        return false;
    auto& s = edit<CoreState>();
    (lines == Qt::Vertical ? s.vertical_guides : s.horizontal_guides) = wanted;
    written({tarn::key<&CoreState::vertical_guides>, tarn::key<&CoreState::horizontal_guides>});
    return true;
}

void CGuiCore::set_texture(const QString& name, const QByteArray& encoded)
{
    document().edit_files([&](auto& files) { files.insert(tarn::texture_entry(name), encoded); });
    add_damage(QRectF(QPointF(), m_screen));
}

QStringList CGuiCore::texture_names() const
{
    const QString prefix = tarn::texture_entry(QString());
    const auto& files = document().files();
    QStringList names;
    for (auto file = files.lowerBound(prefix); file != files.end() && file.key().startsWith(prefix); ++file)
        names.append(file.key().mid(prefix.size()));
    return names;
}

QString CGuiCore::add_texture(const QString& wanted, const QByteArray& encoded)
{
    const auto& files = document().files();
    const QStringList names = texture_names();
    for (const QString& name : names)
        if (files.value(tarn::texture_entry(name)) == encoded)
            return name;
    QString name = wanted;
    if (names.contains(wanted))
        name = tarn::free_picture_name(wanted, [&](const QString& other) { return !names.contains(other); });
    set_texture(name, encoded);
    return name;
}

bool CGuiCore::is_in_world(const CDXUTDialog& dialog) const
{
    return m_world && m_world->is_in_world(dialog);
}

QRectF CGuiCore::take_damage()
{
    QRectF raised;
    for (const CDXUTControl* control : {live().hovered, live().popup})
        if (control && control->dialog())
            raised |= control->dialog()->to_screen(control->raised_area());
    if (raised != m_raised)
        m_damage |= std::exchange(m_raised, raised) | raised;
    return std::exchange(m_damage, {});
}

QRectF CGuiCore::dialog_bounds(const CDXUTDialog& dialog) const
{
    QRectF bounds = dialog.outer_rect();
    if (!dialog.minimized())
        for (const CDXUTControl* control : dialog.controls())
            bounds |= dialog.to_screen(control->drawn_bounds());
    return bounds;
}
