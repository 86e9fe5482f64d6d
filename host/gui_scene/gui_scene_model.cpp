#include "gui_scene_model.h"

#include "core/language.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_plug_scene.h"
#include "script/gui_script_api.h"

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

Status no_ids_left()
{
    return Status::error(lang(u"界面的编号已用完", u"the interface has no ids left"));
}

} // namespace

GuiSceneModel::GuiSceneModel(CGuiPlugScene& scene) : m_scene(scene) {}

const ScriptObjects& GuiSceneModel::objects() const
{
    if (!m_objects)
        m_objects = gui_script_objects(m_scene.gui_core());
    return *m_objects;
}

std::vector<ModelObject*> GuiSceneModel::dialogs() const
{
    return as_objects(m_scene.gui_core().GetDialogs());
}

ModelObject* GuiSceneModel::root_dialog() const
{
    return m_scene.gui_core().GetRootDialog();
}

std::vector<ModelObject*> GuiSceneModel::controls() const
{
    return as_objects(m_scene.gui_core().controls());
}

std::vector<ModelObject*> GuiSceneModel::controls_of(const ModelObject& dialog) const
{
    const auto* owner = dynamic_cast<const CDXUTDialog*>(&dialog);
    return owner ? as_objects(owner->controls()) : std::vector<ModelObject*>();
}

std::vector<ModelObject*> GuiSceneModel::menus() const
{
    return as_objects(m_scene.gui_core().GetMenus());
}

std::vector<ModelObject*> GuiSceneModel::items_of(const ModelObject& menu) const
{
    const auto* owner = dynamic_cast<const CDXUTMenu*>(&menu);
    return owner ? as_objects(owner->items()) : std::vector<ModelObject*>();
}

Result<ModelObject*> GuiSceneModel::create_dialog(const QString& name, const QRectF& rect)
{
    if (m_scene.document().ids_left() == 0)
        return no_ids_left();
    const UserAction action(m_scene.journal(), lang(u"创建窗口", u"Create Dialog"));
    return static_cast<ModelObject*>(m_scene.gui_core().create_dialog(with_size(rect, dialog_size).toRect(), name));
}

Result<ModelObject*> GuiSceneModel::create_control(int type, ModelObject& dialog, const QString& name,
                                                   const QRectF& rect)
{
    const ControlClass* row = control_class(type);
    auto* owner = dynamic_cast<CDXUTDialog*>(&dialog);
    if (!row || !row->create)
        return Status::error(lang(u"不能创建类型为 %1 的控件", u"controls of type %1 cannot be made").arg(type));
    if (!owner)
        return Status::error(lang(u"需要窗口", u"a dialog is needed"));
    if (m_scene.document().ids_left() == 0)
        return no_ids_left();
    const UserAction action(m_scene.journal(), lang(u"创建控件", u"Create Control"));
    return static_cast<ModelObject*>(
        m_scene.gui_core().create_control(type, owner, with_size(rect, row->default_size), name));
}

Result<ModelObject*> GuiSceneModel::create_menu(const QString& name)
{
    if (m_scene.document().ids_left() == 0)
        return no_ids_left();
    const UserAction action(m_scene.journal(), lang(u"新建菜单", u"New Menu"));
    return static_cast<ModelObject*>(m_scene.gui_core().create_menu(name));
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
        all.push_back({m_scene.gui_core().find_control(event->control), event->type, event->function});
    return all;
}

std::vector<SceneModel::Problem> GuiSceneModel::problems() const
{
    return m_problems.find(m_scene);
}

} // namespace tarn
