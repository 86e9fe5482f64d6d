// How the interface's dialogs and controls are made, removed and moved from place to place.

#include "control_class.h"
#include "core/language.h"
#include "dxut_control.h"
#include "dxut_dialog.h"
#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "gui_core.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

using tarn::CoreState;
using tarn::DialogState;

namespace {

/// Objects by their parents, in the order in which they are given.
std::map<quint32, std::vector<tarn::ModelObject*>> by_parent(const std::vector<CDXUTControl*>& controls)
{
    std::map<quint32, std::vector<tarn::ModelObject*>> groups;
    for (CDXUTControl* control : controls)
        if (control->dialog())
            groups[control->dialog()->id()].push_back(control);
    return groups;
}

} // namespace

QString CGuiCore::free_name(const QString& stem) const
{
    if (!m_names.is_known()) {
        m_names.begin();
        for (const CDXUTDialog* dialog : GetDialogs())
            m_names.add(dialog->name());
        for (const CDXUTControl* control : controls())
            m_names.add(control->name());
    }
    return m_names.find(stem);
}

/// `add` adds an object of that name and no other: what is known of names stays known.
template <class Add>
void CGuiCore::add_named(const QString& name, Add add)
{
    tarn::FreeNames names = std::exchange(m_names, {});
    add();
    if (!names.is_known())
        return;
    names.add(name);
    m_names = std::move(names);
}

CDXUTDialog* CGuiCore::create_dialog(const QRect& rect, const QString& name)
{
    const quint32 id = document().take_id();
    if (id == 0)
        return nullptr;
    auto* fresh = new DialogState;
    fresh->id = id;
    fresh->name = name.isEmpty() ? free_name(QStringLiteral("Dialog")) : tarn::cut_text(name, 31);
    fresh->caption = fresh->name;
    fresh->x = rect.x();
    fresh->y = rect.y();
    fresh->width = std::max(0, rect.width());
    fresh->height = std::max(0, rect.height());
    const auto dialog = document().create(dialog_kind(), tarn::StatePtr(fresh));
    add_named(fresh->name, [&] { document().attach(*dialog, *this, core_state().dialogs.size()); });
    return static_cast<CDXUTDialog*>(dialog.get());
}

CDXUTControl* CGuiCore::create_control(int type, CDXUTDialog* dialog, const QRectF& rect, const QString& name)
{
    tarn::ObjectState* made = tarn::make_control_state(type);
    if (!made)
        return nullptr;
    tarn::StatePtr state(made);
    if (!dialog || document().ids_left() == 0)
        return nullptr;
    auto* fresh = static_cast<tarn::ControlState*>(made);
    fresh->id = document().take_id();
    fresh->name = name.isEmpty() ? free_name(QLatin1String(tarn::control_class(type)->name_stem)) : name;
    fresh->x = float(rect.x());
    fresh->y = float(rect.y());
    fresh->width = float(std::max(0.0, rect.width()));
    fresh->height = float(std::max(0.0, rect.height()));
    if (const tarn::FieldBase* text = fresh->fields().find(tarn::key<&tarn::StaticState::text>);
        text && type != DXUT_CONTROL_PICTURE)
        (void)text->set(*fresh, tarn::Value(fresh->name));
    const auto control = make_control(std::move(state));
    add_named(control->name(), [&] { add_control(*control, *dialog); });
    return control.get();
}

std::shared_ptr<CDXUTControl> CGuiCore::make_control(tarn::StatePtr state)
{
    return std::static_pointer_cast<CDXUTControl>(document().create(control_kind(), std::move(state)));
}

void CGuiCore::add_control(CDXUTControl& control, CDXUTDialog& dialog)
{
    document().attach(control, dialog, dialog.GetControlNum());
}

void CGuiCore::remove_dialog(CDXUTDialog* dialog)
{
    remove_dialogs({dialog});
}

void CGuiCore::remove_dialogs(const std::vector<CDXUTDialog*>& dialogs)
{
    std::vector<ModelObject*> gone;
    std::copy_if(dialogs.begin(), dialogs.end(), std::back_inserter(gone),
                 [](const CDXUTDialog* dialog) { return dialog->is_attached() && !dialog->is_root(); });
    document().detach(gone);
}

void CGuiCore::remove_control(CDXUTControl* control)
{
    if (control)
        remove_controls({control});
}

void CGuiCore::move_control_to(CDXUTControl* control, CDXUTDialog* dialog)
{
    if (control)
        move_controls_to({control}, dialog);
}

void CGuiCore::remove_controls(const std::vector<CDXUTControl*>& controls)
{
    for (const CDXUTControl* control : controls)
        control->redraw();
    for (const auto& [parent, gone] : by_parent(controls))
        document().detach(gone);
}

void CGuiCore::move_controls_to(const std::vector<CDXUTControl*>& controls, CDXUTDialog* dialog)
{
    if (!dialog)
        return;
    std::vector<CDXUTControl*> moved;
    std::copy_if(controls.begin(), controls.end(), std::back_inserter(moved),
                 [dialog](const CDXUTControl* control) { return control->dialog() && control->dialog() != dialog; });
    remove_controls(moved);
    for (CDXUTControl* control : moved)
        if (!control->dialog()) // It may be named twice.
            add_control(*control, *dialog);
    follow_structure();
}

bool CGuiCore::AdjustDialogLayer(CDXUTDialog* dialog, int down)
{
    const qsizetype now = GetDialogs().indexOf(dialog);
    const qsizetype wanted = now + (down ? -1 : 1);
    if (now < 0 || wanted < 0 || wanted >= GetDialogs().size())
        return false;
    tarn::IdList order = core_state().dialogs;
    order.move(now, wanted);
    document().reorder(*this, dialog_kind(), order);
    return true;
}

void CGuiCore::reorder_dialogs(const QList<CDXUTDialog*>& order)
{
    if (order == GetDialogs())
        return;
    tarn::IdList ids;
    for (const CDXUTDialog* dialog : order)
        ids.append(tarn::ObjectRef{dialog->id()});
    document().reorder(*this, dialog_kind(), ids);
}

CDXUTMenu* CGuiCore::create_menu(const QString& name)
{
    const quint32 id = document().take_id();
    if (id == 0)
        return nullptr;
    auto* fresh = new tarn::MenuState;
    fresh->id = id;
    fresh->name = name;
    if (name.isEmpty()) {
        tarn::FreeNames names;
        for (const CDXUTMenu* menu : GetMenus())
            names.add(menu->name());
        fresh->name = names.find(QStringLiteral("Menu"));
    }
    const auto made = document().create(menu_kind(), tarn::StatePtr(fresh));
    document().attach(*made, *this, core_state().menus.size());
    auto* menu = static_cast<CDXUTMenu*>(made.get());
    selection().select(menu);
    return menu;
}

void CGuiCore::remove_menu(CDXUTMenu* menu)
{
    ModelObject* gone = menu;
    if (menu && menu->is_attached())
        document().detach(std::span(&gone, 1));
}

CDXUTMenuItem* CGuiCore::create_menu_item(CDXUTMenu& menu, int place, const tarn::NewMenuItem& item)
{
    const quint32 id = document().take_id();
    if (id == 0)
        return nullptr;
    auto* fresh = new tarn::MenuItemState;
    fresh->id = id;
    fresh->text = item.text;
    fresh->separator = item.separator;
    fresh->level = item.level;
    const auto made = document().create(*m_menu_item_kind, tarn::StatePtr(fresh));
    document().attach(*made, menu, place);
    return static_cast<CDXUTMenuItem*>(made.get());
}

void CGuiCore::remove_menu_item(CDXUTMenuItem* item)
{
    CDXUTMenu* menu = item ? item->menu() : nullptr;
    if (!menu)
        return;
    const int first = menu->index_of(item);
    std::vector<ModelObject*> gone;
    for (int line = first; line < menu->end_of(first); ++line)
        gone.push_back(menu->items()[line]);
    document().detach(gone);
}
