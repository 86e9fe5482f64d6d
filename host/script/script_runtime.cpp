#include "script_runtime.h"

#include "config_scene.h"
#include "core/language.h"
#include "script_machine.h"

#include <QRandomGenerator>

namespace tarn {

using scene_script::Machine;

QString ScriptError::text() const
{
    if (line > 0)
        return lang(u"脚本“%1”第 %2 行：%3", u"Script \"%1\", line %2: %3").arg(function).arg(line).arg(message);
    return lang(u"脚本“%1”：%2", u"Script \"%1\": %2").arg(function, message);
}

ScriptRuntime::ScriptRuntime(CConfigScene& functions, ScriptApi api, const ScriptLimits& limits)
    : m_functions(functions),
      m_api(std::move(api)),
      m_limits(limits),
      m_random(std::make_shared<QRandomGenerator>(QRandomGenerator::securelySeeded()))
{
    auto verbs = scene_script::builtin_verbs(m_api.objects.get(), m_random);
    verbs.insert(verbs.end(), m_api.verbs.begin(), m_api.verbs.end());
    m_verbs = std::make_shared<const std::vector<ScriptVerb>>(std::move(verbs));
    m_machine = make_machine();
}

ScriptRuntime::~ScriptRuntime()
{
    m_machine->abandon();
}

std::shared_ptr<Machine> ScriptRuntime::make_machine()
{
    return std::make_shared<Machine>(*this, m_functions, m_api, m_verbs, m_limits);
}

ScriptResult ScriptRuntime::call(const QString& name, std::span<const ScriptValue> arguments, const ScriptObject& owner)
{
    // A verb may reset the runtime or delete it.
    const auto machine = m_machine;
    return machine->call(name, arguments, owner);
}

ScriptResult ScriptRuntime::call_text(const QString& name, const QString& text, std::span<const ScriptValue> arguments,
                                      const ScriptObject& owner)
{
    const auto machine = m_machine;
    return machine->call_text(name, text, arguments, owner);
}

Status ScriptRuntime::try_text(const QString& name, const QString& text)
{
    auto status = IFunc::check_text(name, text);
    if (status && m_machine->main())
        m_machine->try_text(name, text);
    return status;
}

void ScriptRuntime::tick(double now)
{
    if (m_paused)
        return;
    const auto machine = m_machine;
    m_now = now;
    machine->tick(now);
}

void ScriptRuntime::reset()
{
    const std::vector<quint64> dropped = m_machine->suspended_calls();
    m_machine->abandon();
    m_machine = make_machine();
    for (const quint64 call : dropped)
        if (on_ended)
            on_ended(call, {.suspended = true});
    *m_random = m_seed ? QRandomGenerator(*m_seed) : QRandomGenerator::securelySeeded();
}

std::size_t ScriptRuntime::suspended() const
{
    return m_machine->suspended();
}

std::size_t ScriptRuntime::memory() const
{
    return m_machine->memory();
}

QStringList ScriptRuntime::library()
{
    scene_script::Sandbox sandbox{ScriptLimits{}};
    lua_State* lua = sandbox.main();
    if (!lua)
        return {};
    QStringList names;
    const auto add_names = [&](const QString& prefix) {
        for (lua_pushnil(lua); lua_next(lua, -2); lua_pop(lua, 1))
            if (lua_type(lua, -2) == LUA_TSTRING)
                names.append(prefix + QLatin1String(lua_tostring(lua, -2)));
    };
    lua_getfield(lua, LUA_REGISTRYINDEX, "builtins");
    add_names({});
    const QStringList globals = names;
    for (const QString& name : globals) {
        // A library is an empty table in front of the real one, so that scripts cannot change it.
        lua_getfield(lua, -1, name.toLatin1());
        if (lua_istable(lua, -1) && luaL_getmetafield(lua, -1, "__index") == LUA_TTABLE)
            add_names(name + QLatin1Char('.'));
        lua_settop(lua, 1);
    }
    names.sort();
    return names;
}

std::vector<ScriptError> ScriptRuntime::check(const QString& text)
{
    scene_script::Sandbox sandbox{ScriptLimits{}};
    const QByteArray bytes = text.toUtf8();
    if (!sandbox.main())
        return {};
    auto load = [&](lua_State* lua) {
        if (sandbox.load(lua, bytes.constData(), std::size_t(bytes.size()), "=text") != LUA_OK)
            lua_error(lua);
    };
    if (scene_script::protect(sandbox.main(), load) == LUA_OK)
        return {};
    ScriptError error{.message = lua::read_text(sandbox.main(), -1)};
    QByteArray label;
    scene_script::split_place(lua::read_text(sandbox.main(), -1), label, error.line, error.message);
    return {error};
}

} // namespace tarn
