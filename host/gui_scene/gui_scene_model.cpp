#include "gui_scene_model.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "engine/world_edit.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_info_box.h"
#include "gui_core/dxut_list_box.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/gui_event.h"
#include "gui_core/gui_input.h"
#include "gui_core/open_menu.h"
#include "gui_plug_scene.h"
#include "layout_problems.h"
#include "script/gui_script_api.h"
#include "world/world_object.h"

#include <QTemporaryDir>

#include <algorithm>

namespace tarn {

namespace {

constexpr QSizeF dialog_size(200, 150);

template <class List>
std::vector<ModelObject*> as_objects(const List& list)
{
    return {list.begin(), list.end()};
}

QRectF with_size(const QRectF& rect, const QSizeF& usual)
{
    return {rect.x(), rect.y(), rect.width() < 0 ? usual.width() : rect.width(),
            rect.height() < 0 ? usual.height() : rect.height()};
}

} // namespace

GuiSceneModel::GuiSceneModel(CGuiPlugScene& scene) : m_scene(scene) {}

const ScriptObjects& GuiSceneModel::objects() const
{
    if (!m_objects)
        m_objects = gui_script_objects(m_scene.gui_core(), m_scene.animation(), m_scene.world()->objects());
    return *m_objects;
}

Result<ModelObject*> GuiSceneModel::create(const ObjectKind& kind, const Making& making)
{
    const CGuiCore& core = m_scene.gui_core();
    if (m_scene.document().ids_left() == 0)
        return Status::error(lang(u"界面的编号已用完", u"the interface has no ids left"));
    if (&kind == &core.dialog_kind())
        return create_dialog(making);
    if (&kind == &core.control_kind())
        return create_control(making);
    if (&kind == &core.menu_kind())
        return create_menu(making);
    if (&kind == &m_scene.animation().bar_kind())
        if (ModelObject* bar = m_scene.animation().create_bar(float(making.length), making.name))
            return bar;
    return Status::error(lang(u"不能这样创建%1", u"no %1 can be made so").arg(lang(kind.chinese, kind.english)));
}

Result<ModelObject*> GuiSceneModel::create_dialog(const Making& making)
{
    const UserAction action(m_scene.journal(), lang(u"创建窗口", u"Create Dialog"));
    const QRect rect = with_size(making.rect, dialog_size).toRect();
    return static_cast<ModelObject*>(m_scene.gui_core().create_dialog(rect, making.name));
}

Result<ModelObject*> GuiSceneModel::create_control(const Making& making)
{
    CGuiCore& core = m_scene.gui_core();
    const ControlClass* row = control_class(making.type);
    auto* owner = making.parent ? dynamic_cast<CDXUTDialog*>(making.parent) : core.GetRootDialog();
    if (!row || !row->create)
        return Status::error(lang(u"不能创建类型为 %1 的控件", u"controls of type %1 cannot be made").arg(making.type));
    if (!owner)
        return Status::error(lang(u"需要窗口", u"a dialog is needed"));
    const UserAction action(m_scene.journal(), lang(u"创建控件", u"Create Control"));
    return static_cast<ModelObject*>(
        core.create_control(making.type, owner, with_size(making.rect, row->default_size), making.name));
}

Status GuiSceneModel::remove(ModelObject& object)
{
    if (auto* control = dynamic_cast<CDXUTControl*>(&object))
        m_scene.RemoveCtrl(control);
    else if (auto* dialog = dynamic_cast<CDXUTDialog*>(&object); dialog && dialog != m_scene.gui_core().GetRootDialog())
        m_scene.RemoveDialog(dialog);
    else if (auto* menu = dynamic_cast<CDXUTMenu*>(&object))
        m_scene.RemoveMenu(menu);
    else if (auto* item = dynamic_cast<CDXUTMenuItem*>(&object))
        m_scene.RemoveMenuItem(item);
    else if (auto* bar = dynamic_cast<CTimebar*>(&object))
        m_scene.animation().remove_bar(bar);
    else if (auto* timer = dynamic_cast<CTimerObject*>(&object))
        timer->timebar()->remove_obj(timer);
    else if (auto* variable = dynamic_cast<CTVar*>(&object))
        variable->object()->remove_var(variable);
    else
        return Status::error(lang(u"这个对象不能删除", u"this object cannot be removed"));
    return {};
}

Result<ModelObject*> GuiSceneModel::create_menu(const Making& making)
{
    const UserAction action(m_scene.journal(), lang(u"新建菜单", u"New Menu"));
    return static_cast<ModelObject*>(m_scene.gui_core().create_menu(making.name));
}

ModelObject* GuiSceneModel::current(const ModelObject* parent) const
{
    if (const auto* bar = dynamic_cast<const CTimebar*>(parent))
        return bar->current_object();
    if (const auto* object = dynamic_cast<const CTimerObject*>(parent))
        return object->current_variable();
    return parent ? nullptr : m_scene.animation().current_bar();
}

std::vector<SceneModel::KeyRow> GuiSceneModel::keys(const ModelObject& variable) const
{
    std::vector<KeyRow> rows;
    if (const auto* var = dynamic_cast<const CTVar*>(&variable))
        for (qsizetype i = 0; i < var->keys().size(); ++i)
            rows.push_back({var->keys().time(i), var->keys().value(i).to_value(), var->keys().ease(i)});
    return rows;
}

SceneModel::Selection GuiSceneModel::selection() const
{
    const SelectionRecord& record = m_scene.gui_core().selection();
    return {record.editing,         record.controls_selected, record.menu_editing,        record.current_dialog,
            record.current_control, record.current_menu,      as_objects(record.dialogs), as_objects(record.controls)};
}

Status GuiSceneModel::select(const std::vector<ModelObject*>& objects)
{
    CGuiCore& core = m_scene.gui_core();
    const auto controls = std::count_if(objects.begin(), objects.end(), [](ModelObject* object) {
        return dynamic_cast<CDXUTControl*>(object) != nullptr;
    });
    if (controls != 0 && controls != std::ptrdiff_t(objects.size()))
        return Status::error(lang(u"窗口和控件不能同时选择", u"dialogs and controls cannot be selected together"));
    std::vector<WorldObject*> in_world;
    for (ModelObject* object : objects)
        if (auto* found = dynamic_cast<WorldObject*>(object))
            in_world.push_back(found);
    if (!in_world.empty()) {
        select_world_objects(*m_scene.world(), in_world);
        return {};
    }
    core.ClearCtrlSelection();
    core.ClearDialogSelection();
    for (ModelObject* object : objects) {
        if (auto* control = dynamic_cast<CDXUTControl*>(object))
            core.SelectControl(control, true);
        else
            core.SelectDialog(dynamic_cast<CDXUTDialog*>(object), true);
    }
    return {};
}

std::vector<SceneModel::Event> GuiSceneModel::events() const
{
    std::vector<Event> all;
    for (const auto& event : m_scene.events().events())
        all.push_back({m_scene.gui_core().find_control(event->control()), event->type(), event->function()});
    // A dialog's function is known by its name alone.
    for (CDXUTDialog* dialog : m_scene.gui_core().GetDialogs())
        for (const EventKind& kind : event_kinds()) {
            const QString name = kind.control_types == 0 ? dialog->get_func_str(kind.type) : QString();
            if (!name.isEmpty() && m_scene.functions().find_function(name))
                all.push_back({dialog, kind.type, name});
        }
    return all;
}

std::vector<SceneModel::Problem> GuiSceneModel::problems() const
{
    std::vector<Problem> problems = m_problems.find(m_scene);
    for (Problem& found : layout_problems())
        problems.push_back(std::move(found));
    return problems;
}

std::vector<SceneModel::Problem> GuiSceneModel::layout_problems() const
{
    const auto attached = [this](quint32 id) {
        ModelObject* object = m_scene.document().find(id);
        return object && object->is_attached() ? object : nullptr;
    };
    std::vector<Problem> problems;
    for (const LayoutProblem& found : m_layout) {
        ModelObject* object = attached(found.object);
        if (!object || (found.problem.timebar && !attached(found.problem.timebar)))
            continue;
        problems.push_back(found.problem);
        problems.back().object = object;
    }
    return problems;
}

/// It looks at a copy: the author's own times and what he did not record stay as they are.
Status GuiSceneModel::check_layout(const std::vector<QSize>& sizes, const Progress& progress)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("scene.tarn"));
    if (auto status = m_scene.copy_scene()->write(path); !status)
        return status;
    CBaseWorld world;
    CGuiPlugScene copy;
    copy.on_world_created(&world);
    if (auto status = copy.open_scene(path); !status)
        return status;
    auto found = find_layout_problems(copy, sizes, true, progress);
    if (!found)
        return found.status();
    m_layout.clear();
    for (Problem& problem : found.value())
        m_layout.push_back({problem.object->id(), std::move(problem)});
    return {};
}

void GuiSceneModel::show_time(quint32 timebar, float time)
{
    CAnimationScene& animation = m_scene.animation();
    const auto found = std::find_if(animation.bars().begin(), animation.bars().end(),
                                    [timebar](const CTimebar* bar) { return bar->id() == timebar; });
    if (found == animation.bars().end())
        return;
    animation.set_current_bar(*found);
    (*found)->set_current_time(time);
}

ModelObject* GuiSceneModel::object_at(QPointF place) const
{
    const CGuiCore& core = m_scene.gui_core();
    if (const OpenMenu* menu = core.open_menu(); menu && menu->contains(place))
        return menu->item_at(place);
    if (CDXUTControl* popup = core.live().popup;
        popup && popup->dialog() && popup->popup_rect().contains(popup->dialog()->to_client(place)))
        return popup;
    const GuiInput::Hit hit = GuiInput::hit(core, place);
    return hit.control ? static_cast<ModelObject*>(hit.control) : hit.dialog;
}

ModelObject* GuiSceneModel::open_list() const
{
    const CGuiCore& core = m_scene.gui_core();
    if (const OpenMenu* menu = core.open_menu())
        return &menu->menu();
    return core.live().popup;
}

std::vector<SceneModel::LiveValue> GuiSceneModel::live_values(const ModelObject& object) const
{
    std::vector<LiveValue> values;
    if (const auto* dialog = dynamic_cast<const CDXUTDialog*>(&object))
        values.push_back({"minimized", dialog->minimized()});
    if (const auto* control = dynamic_cast<const CDXUTControl*>(&object); control && control->is_interactive())
        values.push_back({"focused", m_scene.gui_core().live().focused == control});
    if (const auto* items = dynamic_cast<const CDXUTItems*>(&object))
        values.push_back({"rows", qint64(items->GetSize())});
    if (const auto* list = dynamic_cast<const CDXUTListBox*>(&object))
        values.push_back({"first_row", qint64(list->first_row())});
    if (const auto* info = dynamic_cast<const CDXUTInfoBox*>(&object)) {
        values.push_back({"last_line", info->lines().value(info->lines().size() - 1)});
        values.push_back({"scrolled_back", qint64(info->scrolled_back())});
    }
    if (dynamic_cast<const CDXUTComboBox*>(&object) || dynamic_cast<const CDXUTMenu*>(&object))
        values.push_back({"open", open_list() == &object});
    return values;
}

} // namespace tarn
