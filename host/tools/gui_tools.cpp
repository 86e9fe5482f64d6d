#include "gui_tools.h"

#include "create_tool.h"
#include "gui_scene/gui_plug_scene.h"

namespace tarn {

GuiTools::GuiTools(CGuiPlugScene& scene)
    : m_scene(scene),
      m_aids(scene.gui_core()),
      m_world_mouse(scene),
      m_editor(scene, m_aids, m_world_mouse),
      m_select_tool(scene, m_aids, m_world_mouse),
      m_play_tool(scene.gui_core(), [&scene] { scene.deliver_events(); })
{
}

std::unique_ptr<SceneTools> make_gui_tools(CGuiPlugScene& scene)
{
    return std::make_unique<GuiTools>(scene);
}

void GuiTools::on_world_created(CBaseWorld& world)
{
    m_world_mouse.on_world_created(world);
    m_play_tool.set_world(&m_scene.in_world());
}

std::unique_ptr<MouseTool> GuiTools::create_tool(int type)
{
    return std::make_unique<CreateTool>(m_scene, m_aids, type);
}

} // namespace tarn
