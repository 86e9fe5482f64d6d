#include "scene_scripts.h"

namespace tarn {

namespace {

class ReplacedScripts final : public Journal::Companion {
public:
    ReplacedScripts(CConfigScene& scene_functions, CEventManager& scene_events, std::unique_ptr<CConfigScene> functions,
                    CEventManager events)
        : m_scene_functions(scene_functions),
          m_scene_events(scene_events),
          m_functions(std::move(functions)),
          m_events(std::move(events))
    {
    }

    void exchange() override
    {
        m_scene_functions.swap(*m_functions);
        m_scene_events.swap(m_events);
    }

private:
    CConfigScene& m_scene_functions;
    CEventManager& m_scene_events;
    std::unique_ptr<CConfigScene> m_functions; ///< those that are not in the scene now
    CEventManager m_events;
};

class AddedScripts final : public Journal::Companion {
public:
    AddedScripts(CConfigScene& scene_functions, CEventManager& scene_events, std::vector<FuncPtr> functions,
                 std::vector<CGuiEvent> events)
        : m_scene_functions(scene_functions),
          m_scene_events(scene_events),
          m_functions(std::move(functions)),
          m_events(std::move(events))
    {
    }

    void exchange() override
    {
        m_functions = m_present ? m_scene_functions.detach(m_functions) : m_scene_functions.attach(m_functions);
        m_events = m_present ? m_scene_events.detach(m_events) : m_scene_events.attach(std::move(m_events));
        m_present = !m_present;
    }

private:
    CConfigScene& m_scene_functions;
    CEventManager& m_scene_events;
    std::vector<FuncPtr> m_functions;
    std::vector<CGuiEvent> m_events;
    bool m_present = false;
};

} // namespace

std::unique_ptr<Journal::Companion> replace_scripts(CConfigScene& scene_functions, CEventManager& scene_events,
                                                    std::unique_ptr<CConfigScene> functions, CEventManager events)
{
    auto step = std::make_unique<ReplacedScripts>(scene_functions, scene_events, std::move(functions),
                                                  std::move(events));
    step->exchange();
    return step;
}

std::unique_ptr<Journal::Companion> add_scripts(CConfigScene& scene_functions, CEventManager& scene_events,
                                                std::vector<FuncPtr> functions, std::vector<CGuiEvent> events)
{
    auto step = std::make_unique<AddedScripts>(scene_functions, scene_events, std::move(functions), std::move(events));
    step->exchange();
    return step;
}

} // namespace tarn
