// How the interface's dialogs and controls are made, removed and moved from place to place.

#include "control_class.h"
#include "dxut_control.h"
#include "dxut_dialog.h"
#include "gui_core.h"

#include <QSet>

#include <algorithm>
#include <functional>

using tarn::CoreState;
using tarn::DialogState;

quint32 CGuiCore::ids_left() const
{
    const quint32 next = std::max(m_next_id, core_state().next_id);
    return next > max_id ? 0 : max_id - next + 1;
}

quint32 CGuiCore::take_id()
{
    if (ids_left() == 0)
        return 0;
    m_next_id = std::max(m_next_id, core_state().next_id);
    const quint32 id = m_next_id++;
    edit<CoreState>().next_id = m_next_id;
    return id;
}

std::shared_ptr<CDXUTDialog> CGuiCore::make_dialog()
{
    return std::make_shared<CDXUTDialog>(journal(), *this);
}

std::shared_ptr<CDXUTControl> CGuiCore::make_control(int type)
{
    const tarn::ControlClass* row = tarn::control_class(type);
    return row && row->create ? row->create(journal(), *this) : nullptr;
}

CDXUTDialog* CGuiCore::create_dialog(const QRect& rect, const QString& name)
{
    const quint32 id = take_id();
    if (id == 0)
        return nullptr;
    const auto dialog = make_dialog();
    auto* fresh = new DialogState;
    fresh->id = id;
    fresh->name = name.isEmpty() ? QStringLiteral("Dialog%1").arg(fresh->id) : tarn::cut_text(name, 31);
    fresh->caption = fresh->name;
    fresh->x = rect.x();
    fresh->y = rect.y();
    fresh->width = std::max(0, rect.width());
    fresh->height = std::max(0, rect.height());
    keep(dialog);
    dialog->adopt_state(fresh);
    dialog->m_attached = true;
    m_attached_dialogs.push_back(dialog.get());
    // Who belongs to whom stays known, so state_changed() need not find it out again. The copy of the list that the
    // index was made from would be copied with each new dialog; an empty one would pass for the list of an empty scene.
    static const QList<CDXUTDialog*> unlike_any{nullptr};
    m_known_dialogs = unlike_any;
    structure_changed();
    edit<CoreState>().dialogs.append(dialog.get());
    add_damage(QRectF(QPointF(), m_screen));
    return dialog.get();
}

CDXUTControl* CGuiCore::create_control(int type, CDXUTDialog* dialog, const QRectF& rect, const QString& name)
{
    const auto control = make_control(type);
    if (!control || !dialog || ids_left() == 0)
        return nullptr;
    auto* fresh = static_cast<tarn::ControlState*>(control->base_state().clone());
    fresh->id = take_id();
    fresh->name = name.isEmpty() ? QLatin1String(tarn::control_class(type)->name_stem) + QString::number(fresh->id)
                                 : name;
    fresh->dialog = {dialog->id()};
    fresh->x = float(rect.x());
    fresh->y = float(rect.y());
    fresh->width = float(std::max(0.0, rect.width()));
    fresh->height = float(std::max(0.0, rect.height()));
    keep(control);
    control->adopt_state(fresh);
    if (const tarn::FieldBase* text = control->fields().find(tarn::key<&tarn::StaticState::text>);
        text && type != DXUT_CONTROL_PICTURE)
        (void)text->set(*fresh, tarn::Value(fresh->name));
    dialog->insert_control(control.get(), dialog->GetControlNum());
    return control.get();
}

void CGuiCore::remove_dialog(CDXUTDialog* dialog)
{
    remove_dialogs({dialog});
}

void CGuiCore::remove_dialogs(const std::vector<CDXUTDialog*>& dialogs)
{
    QSet<const CDXUTDialog*> gone(dialogs.begin(), dialogs.end());
    const auto is_gone = [&gone](const CDXUTDialog* dialog) { return gone.contains(dialog); };
    if (std::none_of(GetDialogs().begin(), GetDialogs().end(), is_gone))
        return;
    edit<CoreState>().dialogs.removeIf(is_gone);
    state_changed();
    ensure_index();
}

void CGuiCore::remove_control(CDXUTControl* control)
{
    if (!control || !control->dialog())
        return;
    control->dialog()->remove_control(control);
    m_live.forget(control);
    m_selection_stale = true;
}

void CGuiCore::move_control_to(CDXUTControl* control, CDXUTDialog* dialog)
{
    if (!control || !dialog || !control->dialog() || control->dialog() == dialog)
        return;
    control->dialog()->remove_control(control);
    dialog->insert_control(control, dialog->GetControlNum());
    ensure_index();
    follow_current_control();
}

CGuiCore::Taken CGuiCore::take_out(const std::vector<CDXUTControl*>& controls, const CDXUTDialog* stays)
{
    struct Run { // of controls that belong to one dialog
        CDXUTDialog* home;
        QRectF area;
        qsizetype count = 0;
    };
    Taken taken;
    std::vector<Run> runs;
    taken.controls.reserve(controls.size());
    tarn::walk_links(controls, [&](CDXUTControl* control) {
        CDXUTDialog* home = control->dialog();
        if (!home || home == stays)
            return;
        if (runs.empty() || runs.back().home != home)
            runs.push_back({home, {}});
        runs.back().area |= control->m_last_bounds;
        ++runs.back().count;
        control->m_dialog = nullptr;
        taken.controls.push_back(control);
        taken.selected += m_selection.contains(control);
    });
    std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) { return std::less<>()(a.home, b.home); });
    for (std::size_t i = 0; i < runs.size();) {
        CDXUTDialog* home = runs[i].home;
        qsizetype count = 0;
        for (; i < runs.size() && runs[i].home == home; ++i) {
            add_damage(home->to_screen(runs[i].area));
            count += runs[i].count;
        }
        home->drop_unlinked(count);
    }
    return taken;
}

void CGuiCore::remove_controls(const std::vector<CDXUTControl*>& controls)
{
    const Taken taken = take_out(controls, nullptr);
    for (const CDXUTControl* control : taken.controls)
        m_live.forget(control);
    if (taken.selected > 0 && taken.selected == m_selection.controls.size())
        m_selection.clear_controls();
    else if (taken.selected > 0)
        m_selection_stale = true;
}

void CGuiCore::move_controls_to(const std::vector<CDXUTControl*>& controls, CDXUTDialog* dialog)
{
    if (!dialog)
        return;
    for (CDXUTControl* control : take_out(controls, dialog).controls)
        dialog->insert_control(control, dialog->GetControlNum());
    ensure_index();
    follow_current_control();
}

bool CGuiCore::AdjustDialogLayer(CDXUTDialog* dialog, int down)
{
    const qsizetype now = GetDialogs().indexOf(dialog);
    const qsizetype wanted = now + (down ? -1 : 1);
    if (now < 0 || wanted < 0 || wanted >= GetDialogs().size())
        return false;
    edit<CoreState>().dialogs.move(now, wanted);
    state_changed();
    return true;
}

void CGuiCore::reorder_dialogs(const QList<CDXUTDialog*>& order)
{
    if (order == GetDialogs())
        return;
    edit<CoreState>().dialogs = order;
    state_changed();
}
