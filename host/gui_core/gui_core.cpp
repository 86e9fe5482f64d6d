#include "gui_core.h"

#include "dxut_control.h"
#include "dxut_dialog.h"

#include <algorithm>
#include <iterator>
#include <utility>

using tarn::CoreState;

namespace {

constexpr quint32 root_id = 1;

tarn::DialogState* root_state()
{
    auto* state = new tarn::DialogState;
    state->id = root_id;
    state->name = QStringLiteral("ROOT");
    state->caption_shown = false;
    state->frame_shown = false;
    return state;
}

} // namespace

void tarn::LiveState::forget(const CDXUTControl* control)
{
    for (CDXUTControl** held : {&hovered, &pressed, &focused, &popup})
        if (*held == control)
            *held = nullptr;
}

CGuiCore::CGuiCore(tarn::Journal& journal) : ModelObject(journal, new CoreState)
{
    m_root = std::make_shared<CDXUTDialog>(journal, *this);
    m_root->adopt_state(root_state());
    m_root->m_attached = true;
}

CGuiCore::~CGuiCore() = default;

// Index ---------------------------------------------------------------------------------------------------------------

const std::vector<CDXUTControl*>& CGuiCore::controls() const
{
    ensure_index();
    return m_controls;
}

void CGuiCore::ensure_index() const
{
    if (!m_indexed)
        const_cast<CGuiCore*>(this)->rebuild_index();
}

void CGuiCore::rebuild_index()
{
    m_indexed = m_linked = true;
    relink();
    m_selection_stale = true;
    prune_selection();
    for (const CDXUTControl* control : {m_live.hovered, m_live.pressed, m_live.focused, m_live.popup})
        if (control && !control->is_attached())
            m_live.forget(control);
    m_live.caption_dialog = nullptr;
    follow_current_control();
}

void CGuiCore::relink()
{
    m_known_dialogs = GetDialogs();
    std::vector<CDXUTDialog*> present(GetDialogs().begin(), GetDialogs().end());
    present.push_back(m_root.get());
    std::vector<bool> changed; // The controls of all others know their dialog already.
    changed.reserve(present.size());
    for (CDXUTDialog* dialog : present) {
        changed.push_back(!dialog->m_attached || !dialog->knows_controls());
        if (dialog->knows_controls())
            continue;
        if (dialog->m_known_controls.isSharedWith(dialog->controls()))
            dialog->m_known_controls = {}; // All of them are linked again below.
        dialog->unlink_controls();
    }
    for (CDXUTDialog* dialog : m_attached_dialogs)
        dialog->m_attached = false;
    m_controls.clear();
    quint32 last_id = 0;
    bool sorted = true; // Most often they are, and looking costs little.
    for (std::size_t i = 0; i < present.size(); ++i) {
        CDXUTDialog* dialog = present[i];
        dialog->m_attached = true;
        dialog->m_known_controls = dialog->controls();
        tarn::walk(dialog->controls(), [&, link = bool(changed[i])](CDXUTControl* control) {
            if (link)
                control->m_dialog = dialog;
            sorted &= std::exchange(last_id, control->id()) < control->id();
            m_controls.push_back(control);
        });
    }
    if (!sorted)
        std::sort(m_controls.begin(), m_controls.end(),
                  [](const CDXUTControl* a, const CDXUTControl* b) { return a->id() < b->id(); });
    m_attached_dialogs = std::move(present);
}

void CGuiCore::prune_selection()
{
    if (std::exchange(m_selection_stale, false))
        m_selection.prune();
}

/// The current control may have come to another dialog.
void CGuiCore::follow_current_control()
{
    if (m_selection.controls_selected && m_selection.current_control && m_selection.current_control->dialog())
        m_selection.current_dialog = m_selection.current_control->dialog();
}

CDXUTDialog* CGuiCore::find_dialog(quint32 id) const
{
    if (id == root_id)
        return m_root.get();
    const auto& all = GetDialogs();
    const auto found = std::find_if(all.begin(), all.end(), [id](const CDXUTDialog* d) { return d->id() == id; });
    return found == all.end() ? nullptr : *found;
}

CDXUTControl* CGuiCore::find_control(quint32 id) const
{
    const auto& all = controls();
    const auto place = std::lower_bound(all.begin(), all.end(), id,
                                        [](const CDXUTControl* control, quint32 key) { return control->id() < key; });
    return place != all.end() && (*place)->id() == id ? *place : nullptr;
}

void CGuiCore::state_changed()
{
    const bool listed = !m_known_dialogs.isSharedWith(GetDialogs());
    const bool moved = std::exchange(m_known_design, design_size()) != design_size();
    std::vector<CDXUTDialog*> elsewhere; // The screen may have changed while one was away.
    if (listed || moved)
        std::copy_if(GetDialogs().begin(), GetDialogs().end(), std::back_inserter(elsewhere),
                     [moved](const CDXUTDialog* dialog) { return moved || !dialog->m_attached; });
    if (listed)
        links_changed();
    tarn::walk(elsewhere, [](CDXUTDialog* dialog) { dialog->state_changed(); });
    add_damage(QRectF(QPointF(), m_screen));
}

// Content as a whole --------------------------------------------------------------------------------------------------

void CGuiCore::install(tarn::GuiContent content)
{
    auto* fresh = static_cast<CoreState*>(content.core->clone());
    fresh->dialogs.clear();
    for (auto& dialog : content.dialogs) {
        fresh->dialogs.append(dialog.get());
        keep(std::move(dialog));
    }
    for (auto& control : content.controls)
        keep(std::move(control));
    m_next_id = std::max(m_next_id, fresh->next_id);
    m_selection.clear_controls();
    m_selection.clear_dialogs();
    m_root->replace_state(content.root->shared_state());
    replace_state(tarn::StatePtr(fresh));
    structure_changed();
    ensure_index();
}

void CGuiCore::append(tarn::GuiContent content)
{
    auto& s = edit<CoreState>();
    const auto& added = static_cast<const CoreState&>(*content.core);
    s.files.insert(added.files);
    s.styles.insert(added.styles);
    s.next_id = std::max(s.next_id, added.next_id);
    m_next_id = std::max(m_next_id, s.next_id);
    for (auto& dialog : content.dialogs) {
        s.dialogs.append(dialog.get());
        keep(std::move(dialog));
    }
    for (auto& control : content.controls)
        keep(std::move(control));
    state_changed();
    ensure_index();
}

void CGuiCore::clear()
{
    tarn::GuiContent nothing;
    nothing.core = tarn::StatePtr(new CoreState);
    nothing.root = make_dialog();
    nothing.root->adopt_state(root_state());
    install(std::move(nothing));
}

void CGuiCore::forget_history()
{
    journal().clear();
    m_textures.clear();
    ensure_index();
    // All are asked before any goes: a control asks its dialog.
    const auto gone = std::stable_partition(m_pool.begin(), m_pool.end(),
                                            [](const auto& object) { return object->is_attached(); });
    for (auto object = gone; object != m_pool.end(); ++object)
        if (auto* dialog = dynamic_cast<CDXUTDialog*>(object->get()))
            dialog->unlink_controls();
    m_pool.erase(gone, m_pool.end());
    ++m_generation;
    m_next_id = core_state().next_id;
}

std::vector<tarn::Journal::Entry> CGuiCore::states() const
{
    std::vector<tarn::Journal::Entry> all;
    const auto add = [&all](const ModelObject* object) {
        all.push_back({const_cast<ModelObject*>(object), object->shared_state()});
    };
    add(this);
    add(m_root.get());
    for (const CDXUTDialog* dialog : GetDialogs())
        add(dialog);
    for (const CDXUTControl* control : controls())
        add(control);
    return all;
}

void CGuiCore::swap_states(std::vector<tarn::Journal::Entry>& states)
{
    tarn::Journal::swap_states(states);
    ensure_index();
}

// Running -------------------------------------------------------------------------------------------------------------

void CGuiCore::raise(GuiEventType type, CDXUTControl& control)
{
    const tarn::EventKind* kind = on_event ? tarn::event_kind(type) : nullptr;
    if (!kind || !tarn::happens_to(*kind, control.GetType()))
        return;
    const tarn::FieldBase* field = control.fields().find(kind->value);
    on_event({.type = type, .control = &control, .value = field ? control.property(*field) : tarn::Value()});
}

void CGuiCore::raise(GuiEventType type, CDXUTDialog& dialog)
{
    if (on_event)
        on_event({.type = type, .dialog = &dialog});
}

void CGuiCore::set_focused(CDXUTControl* control)
{
    if (control && !control->GetEnabled())
        control = nullptr;
    CDXUTControl* const before = std::exchange(live().focused, control);
    for (const CDXUTControl* changed : {before, control})
        if (changed)
            changed->redraw();
}

// Selection -----------------------------------------------------------------------------------------------------------

void CGuiCore::SelectDialog(CDXUTDialog* dialog, bool add)
{
    if (!dialog)
        return;
    m_selection.clear_controls();
    m_selection.controls_selected = false;
    if (!add)
        m_selection.clear_dialogs();
    m_selection.add(dialog);
    m_selection.current_dialog = dialog;
}

void CGuiCore::ClearDialogSelection()
{
    m_selection.clear_dialogs();
}

void CGuiCore::SelectControl(CDXUTControl* control, bool add)
{
    if (!control)
        return;
    m_selection.clear_dialogs();
    m_selection.controls_selected = true;
    if (!add)
        m_selection.clear_controls();
    m_selection.add(control);
    m_selection.current_control = control;
    m_selection.current_dialog = control->dialog();
}

void CGuiCore::SelectControls(const std::vector<CDXUTControl*>& controls)
{
    if (controls.empty())
        return;
    m_selection.clear_dialogs();
    m_selection.controls_selected = true;
    m_selection.controls.reserve(m_selection.controls.size() + controls.size());
    tarn::walk_links(controls, [this](CDXUTControl* control) { m_selection.add(control); });
    SelectControl(controls.back(), true);
}

void CGuiCore::ClearCtrlSelection()
{
    m_selection.clear_controls();
}

void CGuiCore::EnableGui(bool editing)
{
    if (m_live.popup)
        m_live.popup->close_popup();
    m_selection.editing = editing;
    m_live = {};
    for (CDXUTDialog* dialog : GetDialogs())
        dialog->set_minimized(false);
    tarn::walk(controls(), [](CDXUTControl* control) { control->reset_run_state(); });
}

// Screen and drawing --------------------------------------------------------------------------------------------------

void CGuiCore::set_screen_size(QSize size)
{
    size = size.expandedTo(QSize(1, 1));
    if (size == m_screen)
        return;
    ensure_index();
    m_screen = size;
    m_root->state_changed();
    for (CDXUTDialog* dialog : GetDialogs())
        dialog->state_changed();
    add_damage(QRectF(QPointF(), m_screen));
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
    return true;
}

QImage CGuiCore::texture(const QString& name, QSize shown) const
{
    const auto& files = core_state().files;
    const auto encoded = files.find(tarn::texture_entry(name));
    return encoded == files.end() ? QImage() : m_textures.image(name, *encoded, shown);
}

void CGuiCore::set_texture(const QString& name, const QByteArray& encoded)
{
    edit<CoreState>().files.insert(tarn::texture_entry(name), encoded);
    state_changed();
}

QStringList CGuiCore::texture_names() const
{
    const QString prefix = tarn::texture_entry(QString());
    const auto& files = core_state().files;
    QStringList names;
    for (auto file = files.lowerBound(prefix); file != files.end() && file.key().startsWith(prefix); ++file)
        names.append(file.key().mid(prefix.size()));
    return names;
}

QString CGuiCore::add_texture(const QString& wanted, const QByteArray& encoded)
{
    const auto& files = core_state().files;
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

QRectF CGuiCore::take_damage()
{
    return std::exchange(m_damage, {});
}

QRectF CGuiCore::dialog_bounds(const CDXUTDialog& dialog) const
{
    QRectF bounds = dialog.outer_rect();
    if (!dialog.minimized())
        tarn::walk(dialog.controls(),
                   [&](const CDXUTControl* control) { bounds |= dialog.to_screen(control->drawn_bounds()); });
    return bounds;
}
