#include "automation.h"

#include "api.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "engine/world_edit.h"
#include "frame/timeline_state.h"
#include "lua_binding.h"
#include "main_window.h"
#include "mouse_surface.h"
#include "scripted_boxes.h"
#include "studio.h"
#include "user_input.h"
#include "view/view3d.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

using tarn::Status;

namespace {

/// Appends the traceback to an error's message. Called by Lua: nothing here may need a destructor.
int add_traceback(lua_State* lua)
{
    luaL_traceback(lua, lua, luaL_tolstring(lua, 1, nullptr), 1);
    return 1;
}

Status take_error(lua_State* lua)
{
    const QString message = QString::fromUtf8(lua_tostring(lua, -1));
    lua_pop(lua, 1);
    return Status::error(message);
}

} // namespace

Automation::Automation(Studio& studio, MainWindow& window)
    : m_studio(studio),
      m_window(window),
      m_boxes(std::make_unique<tarn::script::ScriptedBoxes>(*this)),
      m_view(std::make_unique<tarn::script::MouseSurface>("view", window.view(),
                                                          [&view = window.view()] { return view.surface_rect(); }))
{
    find_timeline();
    listen();
    tarn::boxes::set_responder(m_boxes.get());
}

Automation::~Automation()
{
    tarn::boxes::set_responder(nullptr);
    world().on_broadcast = m_broadcast_before;
    world().on_redraw = m_redraw_before;
}

void Automation::CloseLua::operator()(lua_State* lua) const
{
    lua_close(lua);
}

CBaseWorld& Automation::world()
{
    return m_studio.world();
}

void Automation::find_timeline()
{
    for (QWidget* widget : m_window.findChildren<QWidget*>())
        if (auto* state = dynamic_cast<tarn::TimelineState*>(widget)) {
            m_timeline_state = state;
            m_timeline = std::make_unique<tarn::script::MouseSurface>("timeline", *widget,
                                                                      [widget] { return widget->rect(); });
        }
}

void Automation::listen()
{
    m_broadcast_before = world().on_broadcast;
    world().on_broadcast = [this](int code) {
        m_codes.push_back(code);
        if (m_broadcast_before)
            m_broadcast_before(code);
    };
    m_redraw_before = world().on_redraw;
    world().on_redraw = [this] {
        ++m_redraws;
        if (m_redraw_before)
            m_redraw_before();
    };
}

tarn::Result<tarn::SceneModel*> Automation::model()
{
    if (CScenePlug* scene = m_studio.scene())
        return &scene->model();
    return Status::error(QStringLiteral("no scene plug-in is loaded"));
}

void Automation::settle()
{
    tarn::wait_for_models(world());
    tarn::script::input::process_events();
}

Status Automation::take_box_failure(Status status)
{
    auto failure = m_boxes->take_failure();
    return failure ? status : failure;
}

void Automation::open_lua(const QStringList& args)
{
    if (const auto scene = model())
        m_reach.scene = &scene.value()->objects();
    m_lua.reset(luaL_newstate());
    lua_State* lua = m_lua.get();
    luaL_openlibs(lua);
    tarn::script::add_page_type(lua, *this);
    tarn::script::add_control_type(lua, *this);
    tarn::script::add_surface_type(lua, *this);
    tarn::script::add_object_type(lua, *this);

    lua_newtable(lua);
    for (const auto& functions :
         {tarn::script::program_functions(), tarn::script::box_functions(), tarn::script::page_functions(),
          tarn::script::model_functions(), tarn::script::world_functions()})
        tarn::script::set_functions(lua, *this, functions);
    tarn::script::Data(args).push(lua);
    lua_setfield(lua, -2, "args");
    tarn::script::push_view(lua, *this);
    lua_setfield(lua, -2, "view");
    tarn::script::push_timeline(lua, *this);
    lua_setfield(lua, -2, "timeline");
    lua_setglobal(lua, "studio");
}

Status Automation::run_file(const QString& path)
{
    lua_State* lua = m_lua.get();
    lua_pushcfunction(lua, add_traceback);
    if (luaL_loadfile(lua, QFile::encodeName(path).constData()) != LUA_OK)
        return take_error(lua);
    const CallScope scope(*this, lua);
    if (lua_pcall(lua, 0, 0, 1) != LUA_OK)
        return take_error(lua);
    return take_box_failure({});
}

int Automation::run(const QString& script_file, const QStringList& args)
{
    if (const QFileInfo file(script_file); !file.isFile() || !file.isReadable()) {
        std::fprintf(stderr, "tarn-studio: %s\n",
                     tarn::lang(u"无法读取 %1", u"%1 cannot be read").arg(script_file).toLocal8Bit().constData());
        return 2;
    }
    open_lua(args);
    const Status status = run_file(script_file);
    m_lua.reset();
    if (status)
        return 0;
    std::fprintf(stderr, "%s\n", status.message().toLocal8Bit().constData());
    return 1;
}
