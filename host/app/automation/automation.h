#pragma once

#include "core/status.h"
#include "engine/scene_plug.h"
#include "script/script_api.h"

#include <QString>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class CBaseWorld;
class MainWindow;
class Studio;
struct lua_State;

namespace tarn {
class TimelineState;
} // namespace tarn
namespace tarn::script {
class MouseSurface;
class ScriptedBoxes;
} // namespace tarn::script

/// Runs Lua scripts that do in the program what its user could do. While it lives no box waits for the user.
class Automation {
public:
    Automation(Studio& studio, MainWindow& window);
    ~Automation();
    Automation(const Automation&) = delete;
    Automation& operator=(const Automation&) = delete;

    /// Runs a script and answers the program's exit status: 0, or 1 after an error, which is printed.
    int run(const QString& script_file, const QStringList& args);

    // What the functions of a script work with
    Studio& studio() { return m_studio; }
    MainWindow& window() { return m_window; }
    CBaseWorld& world();
    tarn::script::ScriptedBoxes& boxes() { return *m_boxes; }
    tarn::script::MouseSurface& view() { return *m_view; }
    /// The timeline of a plug-in, as a surface and what it tells of itself; null when there is none.
    tarn::script::MouseSurface* timeline() { return m_timeline.get(); }
    tarn::TimelineState* timeline_state() { return m_timeline_state; }
    tarn::Result<tarn::SceneModel*> model();
    const tarn::ScriptReach& reach() const { return m_reach; }
    /// The notification codes, and the number of redraws asked for, since the last call.
    std::vector<int> take_codes() { return std::exchange(m_codes, {}); }
    int take_redraws() { return std::exchange(m_redraws, 0); }

    /// Lets the program react to what was just done to it, as it does between two events of a user.
    void settle();
    /// What a box that could not be answered left behind; `status` when there was none.
    tarn::Status take_box_failure(tarn::Status status);

    /// The Lua state that runs now, which is not the main one inside a coroutine.
    lua_State* running() const { return m_running; }
    /// Marks `lua` as the one that runs.
    class CallScope {
    public:
        CallScope(Automation& app, lua_State* lua) : m_app(app), m_before(std::exchange(app.m_running, lua)) {}
        ~CallScope() { m_app.m_running = m_before; }
        CallScope(const CallScope&) = delete;
        CallScope& operator=(const CallScope&) = delete;

    private:
        Automation& m_app;
        lua_State* m_before;
    };

private:
    struct CloseLua {
        void operator()(lua_State* lua) const;
    };

    void find_timeline();
    void listen();
    void open_lua(const QStringList& args);
    tarn::Status run_file(const QString& path);

    Studio& m_studio;
    MainWindow& m_window;
    std::unique_ptr<tarn::script::ScriptedBoxes> m_boxes;
    std::unique_ptr<tarn::script::MouseSurface> m_view;
    std::unique_ptr<tarn::script::MouseSurface> m_timeline;
    tarn::TimelineState* m_timeline_state = nullptr;
    tarn::ScriptReach m_reach{.in_english = true, .reads_authored = true};
    std::unique_ptr<lua_State, CloseLua> m_lua;
    lua_State* m_running = nullptr;

    std::vector<int> m_codes;
    int m_redraws = 0;
    std::function<void(int)> m_broadcast_before;
    std::function<void()> m_redraw_before;
};
