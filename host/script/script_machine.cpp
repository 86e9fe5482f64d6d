#include "script_machine.h"

#include "config_scene.h"
#include "core/language.h"

namespace tarn::scene_script {

namespace {

constexpr quint64 tried_revision = std::numeric_limits<quint64>::max();
constexpr qsizetype label_bytes = 40; ///< Lua cuts the names of chunks at 60

/// Of the table of globals on top.
void seed_library(lua_State* lua, quint32 seed)
{
    lua_getfield(lua, -1, "math");
    lua_getfield(lua, -1, "randomseed");
    lua_pushinteger(lua, seed);
    lua_call(lua, 1, 0);
    lua_pop(lua, 1);
}

} // namespace

Machine::Machine(ScriptRuntime& runtime, CConfigScene& functions, const ScriptApi& api,
                 std::shared_ptr<const std::vector<ScriptVerb>> verbs, const ScriptLimits& limits)
    : Sandbox(limits), m_runtime(&runtime), m_functions(&functions), m_objects(api.objects), m_verbs(std::move(verbs))
{
    if (main())
        open_api();
}

Machine::~Machine() = default;

void Machine::abandon()
{
    m_runtime = nullptr;
    m_functions = nullptr;
    m_waiting.clear();
    m_due.clear();
    request_stop(Stop::Reset);
}

void Machine::open_api()
{
    begin();
    auto open = [this](lua_State* lua) {
        lua_getfield(lua, LUA_REGISTRYINDEX, "builtins");
        open_builtins(lua);
        if (const auto seed = m_runtime->random_seed())
            seed_library(lua, *seed);
        const auto table_of = [&](const char* of) {
            const auto [place, is_new] = m_methods.try_emplace(of, LUA_NOREF);
            if (is_new) {
                lua_newtable(lua);
                place->second = luaL_ref(lua, LUA_REGISTRYINDEX);
            }
            return place->second;
        };
        table_of("object");
        open_objects(lua);
        for (const ScriptVerb& verb : *m_verbs) {
            if (!verb.run)
                continue;
            if (verb.of)
                lua_rawgeti(lua, LUA_REGISTRYINDEX, table_of(verb.of));
            else
                lua_pushvalue(lua, -1);
            lua_pushlightuserdata(lua, const_cast<ScriptVerb*>(&verb));
            lua_pushcclosure(lua, call_verb, 1);
            lua_setfield(lua, -2, verb.name);
            lua_pop(lua, 1);
        }
    };
    if (protect(main(), open) != LUA_OK)
        lua_pop(main(), 1);
}

// Compiling -----------------------------------------------------------------------------------------------------------

QByteArray Machine::label_of(const QString& name)
{
    QString readable = name;
    for (QChar& c : readable)
        if (c == u':' || c < u' ')
            c = u'_';
    while (readable.toUtf8().size() > label_bytes)
        readable.chop(1);
    QByteArray label = readable.toUtf8();
    // Errors name the place by this label, and from it the function is found again: two names must not share one.
    const auto known = m_names.constFind(label);
    if (readable != name || (known != m_names.constEnd() && *known != name))
        label += '#' + QByteArray::number(m_names.size());
    m_names.insert(label, name);
    return label;
}

Result<int> Machine::compile(const QString& name, const QString& source)
{
    const QByteArray text = source.toUtf8();
    const QByteArray label = '=' + label_of(name);
    int reference = LUA_NOREF;
    auto load = [&](lua_State* lua) {
        if (this->load(lua, text.constData(), std::size_t(text.size()), label.constData()) != LUA_OK)
            lua_error(lua);
        reference = luaL_ref(lua, LUA_REGISTRYINDEX);
    };
    const int status = protect(main(), load);
    if (status == LUA_OK)
        return reference;
    QString message = lang(u"脚本过长，内存不足", u"the script is too long for the memory");
    if (lua_type(main(), -1) == LUA_TSTRING && status != LUA_ERRMEM)
        message = lua::read_text(main(), -1);
    lua_pop(main(), 1);
    return Status::error(message);
}

void Machine::try_text(const QString& name, const QString& text)
{
    for (const QString& stale : {m_tried.name, name})
        luaL_unref(main(), LUA_REGISTRYINDEX, m_compiled.take(stale).reference);
    m_tried = {name, text};
}

Result<int> Machine::compiled(const QString& name, ScriptError& error)
{
    error.function = name;
    Compiled& known = m_compiled[name];
    // Three steps, by what they cost: nothing in the table changed; this function did not change; compile it.
    if (known.revision && known.checked_at == m_functions->changes())
        return known.reference;
    const bool is_tried = !m_tried.name.isNull() && m_tried.name == name;
    const FuncPtr function = is_tried ? nullptr : m_functions->find_function(name);
    const quint64 revision = is_tried ? tried_revision : function ? function->revision() : 0;
    if (revision && known.revision == revision) {
        known.checked_at = m_functions->changes();
        return known.reference;
    }
    luaL_unref(main(), LUA_REGISTRYINDEX, known.reference);
    m_compiled.remove(name);
    if (!revision) {
        error.message = lang(u"没有名为“%1”的脚本函数", u"there is no script function named \"%1\"").arg(name);
        return Status::error(error.message);
    }
    const auto reference = compile(name, is_tried ? m_tried.text : function->text());
    if (reference) {
        m_compiled.insert(name, {revision, m_functions->changes(), reference.value()});
        return reference;
    }
    QByteArray label;
    error.message = reference.status().message();
    split_place(reference.status().message(), label, error.line, error.message);
    return Status::error(error.message);
}

Result<int> Machine::compiled_text(const QString& name, const QString& text, ScriptError& error)
{
    constexpr qsizetype most_texts = 500;
    if (const auto known = m_compiled_texts.constFind(text); known != m_compiled_texts.constEnd())
        return *known;
    if (m_compiled_texts.size() >= most_texts) {
        for (const int reference : std::as_const(m_compiled_texts))
            luaL_unref(main(), LUA_REGISTRYINDEX, reference);
        m_compiled_texts.clear();
    }
    const auto reference = compile(name, text);
    if (reference) {
        m_compiled_texts.insert(text, reference.value());
        return reference;
    }
    QByteArray label;
    error.function = name;
    error.message = reference.status().message();
    split_place(reference.status().message(), label, error.line, error.message);
    return Status::error(error.message);
}

// Errors --------------------------------------------------------------------------------------------------------------

bool split_place(const QString& text, QByteArray& label, int& line, QString& message)
{
    const auto first = text.indexOf(u':');
    const auto second = first < 0 ? -1 : text.indexOf(u':', first + 1);
    if (second < 0)
        return false;
    bool is_number = false;
    const int number = text.mid(first + 1, second - first - 1).toInt(&is_number);
    if (!is_number)
        return false;
    label = text.left(first).toUtf8();
    line = number;
    message = text.mid(second + 1).trimmed();
    return true;
}

namespace {

QString reason_text(Stop reason, const ScriptLimits& limits)
{
    constexpr std::size_t mebi = 1024 * 1024;
    switch (reason) {
    case Stop::Memory:
        return lang(u"脚本使用的内存过多（最多 %1 MiB），已停止",
                    u"the script was stopped: it used too much memory (at most %1 MiB)")
            .arg(limits.memory / mebi);
    case Stop::Text:
        return lang(u"文本过长（最多 %1 KiB），脚本已停止",
                    u"the script was stopped: a text became too long (at most %1 KiB)")
            .arg(limits.text / 1024);
    case Stop::List:
        return lang(u"列表中的文本总共过长（最多 %1 KiB），脚本已停止",
                    u"the script was stopped: the texts of a list are too long together (at most %1 KiB)")
            .arg(limits.text / 1024);
    case Stop::Block:
        return lang(u"函数调用层次过深或表过大，脚本已停止",
                    u"the script was stopped: functions called each other too deeply, or a table became too large");
    case Stop::Reset: return lang(u"脚本已被停止", u"the script was stopped");
    case Stop::None:
    case Stop::Steps:
    case Stop::Time: break;
    }
    return lang(u"脚本运行时间过长，已停止", u"the script was stopped: it ran too long");
}

} // namespace

void Machine::locate(lua_State* thread, ScriptError& error) const
{
    lua_Debug at{};
    for (int level = 0; lua_getstack(thread, level, &at) && level < 1000; ++level) {
        lua_getinfo(thread, "Sl", &at);
        if (at.currentline <= 0)
            continue;
        error.line = at.currentline;
        error.function = m_names.value(at.short_src, error.function);
        return;
    }
}

/// The text of the error value on top of the thread's stack, which is taken off.
QString Machine::take_error_text(lua_State* thread)
{
    if (lua_type(thread, -1) == LUA_TSTRING) {
        const QString text = lua::read_text(thread, -1);
        lua_pop(thread, 1);
        return text;
    }
    // Turning it into a text may run the script's own function.
    const QString type = QLatin1String(luaL_typename(thread, -1));
    QString text = lang(u"错误值的类型为 %1", u"the error is a %1").arg(type);
    if (!lua_checkstack(main(), 4))
        return text;
    lua_xmove(thread, main(), 1);
    lua_pushcfunction(main(), [](lua_State* lua) {
        luaL_tolstring(lua, 1, nullptr);
        return 1;
    });
    lua_insert(main(), -2);
    lua_State* before = enter(main());
    if (lua_pcall(main(), 1, 1, 0) == LUA_OK && !stopped())
        text = lua::read_text(main(), -1);
    enter(before);
    lua_pop(main(), 1);
    return text;
}

ScriptError Machine::error_of(const Call& call, int status)
{
    ScriptError error{.function = call.name};
    if (!stopped()) {
        locate(call.thread, error);
        if (status == LUA_ERRMEM) {
            request_stop(refusal());
        } else {
            const QString text = take_error_text(call.thread);
            QByteArray label;
            if (int line = 0; !split_place(text, label, line, error.message) || !m_names.contains(label)) {
                error.message = text;
            } else {
                error.function = m_names.value(label);
                error.line = line;
            }
        }
    }
    if (!stopped())
        return error;
    error.stopped = true;
    error.message = reason_text(reason(), limits());
    if (place().line > 0) {
        error.line = place().line;
        error.function = m_names.value(place().chunk, call.name);
    }
    return error;
}

} // namespace tarn::scene_script
