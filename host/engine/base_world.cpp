#include "base_world.h"

#include "camera_view.h"
#include "scene_selection.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"
#include "world/world_scene.h"
#include "world_models.h"
#include "world_renderer.h"

#include <algorithm>

CBaseWorld::CBaseWorld()
    : m_models(std::make_unique<tarn::WorldModels>(m_document)),
      m_renderer(std::make_unique<tarn::WorldRenderer>(*this)),
      m_functions(std::make_unique<CConfigScene>(m_document)),
      m_objects(std::make_unique<tarn::WorldScene>(m_document)),
      m_selection(std::make_unique<CSelection>(*m_objects)),
      m_camera_view(std::make_unique<tarn::CameraView>(*this)),
      m_scripts(std::make_unique<tarn::ScriptRuntime>(*m_functions))
{
    m_models->library().on_read = [this] { update_all_views(); };
}

CBaseWorld::~CBaseWorld() = default;

void CBaseWorld::broadcast(int code)
{
    m_document.changes().tell();
    if (on_broadcast)
        on_broadcast(code);
    // By index: a listener may add others while it hears the code, or remove some, whose places stay empty until the
    // outermost broadcast is through.
    ++m_broadcasting;
    for (std::size_t i = 0; i < m_listeners.size(); ++i)
        if (m_listeners[i])
            m_listeners[i]->update_ui(code);
    if (--m_broadcasting == 0)
        std::erase(m_listeners, nullptr);
}

void CBaseWorld::add_listener(tarn::UiListener* listener)
{
    m_listeners.push_back(listener);
}

void CBaseWorld::remove_listener(tarn::UiListener* listener)
{
    if (m_broadcasting)
        std::replace(m_listeners.begin(), m_listeners.end(), listener, static_cast<tarn::UiListener*>(nullptr));
    else
        std::erase(m_listeners, listener);
}

void CBaseWorld::update_all_views()
{
    if (on_redraw)
        on_redraw();
}

void CBaseWorld::api_always_refresh(bool on)
{
    if (on_always_refresh)
        on_always_refresh(on);
}

void CBaseWorld::set_mouse_tool(tarn::MouseTool* tool)
{
    if (m_tool && m_tool != tool)
        m_tool->cancel();
    m_tool = tool;
}

void CBaseWorld::set_default_mouse_tool(tarn::MouseTool* tool)
{
    m_default_tool = tool;
    set_mouse_tool(tool);
}

void CBaseWorld::api_reset_mt()
{
    if (m_tool)
        m_tool->cancel();
    m_tool = m_default_tool;
}

tarn::Status CBaseWorld::work(const QString& what, const Work& job)
{
    return on_work ? on_work(what, job) : job({});
}

void CBaseWorld::set_script_api(tarn::ScriptApi api)
{
    m_scripts = std::make_unique<tarn::ScriptRuntime>(*m_functions, std::move(api));
}
