#pragma once

#include "aids_layer.h"
#include "gui_scene/scene_tools.h"
#include "gui_scene_editor.h"
#include "play_tool.h"
#include "select_tool.h"
#include "world_mouse.h"

namespace tarn {

/// The mouse tools and commands that edit the interface in the views.
class GuiTools : public SceneTools {
public:
    explicit GuiTools(CGuiPlugScene& scene);

    void on_world_created(CBaseWorld& world) override;
    MouseTool& select_tool() override { return m_select_tool; }
    MouseTool& play_tool() override { return m_play_tool; }
    std::unique_ptr<MouseTool> create_tool(int type) override;
    SceneEditor& editor() override { return m_editor; }

private:
    CGuiPlugScene& m_scene;
    AidsLayer m_aids;
    WorldMouse m_world_mouse;
    GuiSceneEditor m_editor;
    SelectTool m_select_tool;
    PlayTool m_play_tool;
};

/// For CGuiPlugScene::set_tools().
std::unique_ptr<SceneTools> make_gui_tools(CGuiPlugScene& scene);

} // namespace tarn
