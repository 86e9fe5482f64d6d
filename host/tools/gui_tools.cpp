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

std::unique_ptr<MouseTool> GuiTools::create_tool(int type)
{
    return std::make_unique<CreateTool>(m_scene, m_aids, type);
}

} // namespace tarn
