#include "core/language.h"
#include "script_machine.h"

#include <array>
#include <exception>

namespace tarn {

QString ScriptText::text() const
{
    return lang(chinese, english);
}

bool ScriptCall::has(std::size_t i) const
{
    if (i >= arguments().size())
        return false;
    const auto* value = std::get_if<Value>(&arguments()[i]);
    return !value || !std::holds_alternative<std::monostate>(*value);
}

double ScriptCall::number(std::size_t i) const
{
    const auto* whole = std::get_if<qint64>(&value(i));
    return whole ? double(*whole) : std::get<double>(value(i));
}

} // namespace tarn

namespace tarn::scene_script {

namespace {

constexpr std::size_t verb_cost = 30;

QString name_of(ScriptType type)
{
    switch (type) {
    case ScriptType::Bool: return lang(u"true 或 false", u"true or false");
    case ScriptType::Integer: return lang(u"整数", u"a whole number");
    case ScriptType::Number: return lang(u"数字", u"a number");
    case ScriptType::Text: return lang(u"文本", u"a text");
    case ScriptType::TextOrNumber: return lang(u"文本或数字", u"a text or a number");
    case ScriptType::Object: return lang(u"对象", u"an object");
    case ScriptType::Function: return lang(u"函数", u"a function");
    case ScriptType::Any: break;
    }
    return lang(u"可用的值", u"a value that can be used here");
}

/// Makes a whole float an integer where one is needed; answers whether the value is of the type.
bool fits(ScriptValue& value, ScriptType type)
{
    const auto* plain = std::get_if<Value>(&value);
    const auto is = [&]<class T>() { return plain && std::holds_alternative<T>(*plain); };
    const bool number = is.operator()<qint64>() || is.operator()<double>();
    switch (type) {
    case ScriptType::Any: return true;
    case ScriptType::Bool: return is.operator()<bool>();
    case ScriptType::Number: return number;
    case ScriptType::Text: return is.operator()<QString>();
    case ScriptType::TextOrNumber: return number || is.operator()<QString>();
    case ScriptType::Object: return std::holds_alternative<ScriptObject>(value);
    case ScriptType::Function: return std::holds_alternative<ScriptFunction>(value);
    case ScriptType::Integer: break;
    }
    if (!is.operator()<double>())
        return is.operator()<qint64>();
    const double given = std::get<double>(*plain);
    if (!(given > -9e15 && given < 9e15) || given != double(qint64(given)))
        return false;
    value = Value(qint64(given));
    return true;
}

bool read_argument(Machine& machine, lua_State* lua, int index, const ScriptParameter& parameter, Frame& frame)
{
    if (lua_isnoneornil(lua, index) && (parameter.optional || parameter.type == ScriptType::Any)) {
        frame.arguments.emplace_back(Value());
        return true;
    }
    const bool handle = lua_type(lua, index) == LUA_TUSERDATA;
    if (handle && !lua::object_at(lua, index, frame.message) && !frame.message.isNull())
        return false;
    auto value = machine.read(lua, index);
    if (value && fits(*value, parameter.type)) {
        frame.arguments.push_back(std::move(*value));
        return true;
    }
    frame.message = lang(u"参数“%1”：需要%2，而不是 %3", u"the argument \"%1\" has to be %2, not %3")
                        .arg(QLatin1String(parameter.name), name_of(parameter.type),
                             lua_isnone(lua, index) ? lang(u"空", u"nothing")
                                                    : QString::fromLatin1(luaL_typename(lua, index)));
    return false;
}

bool read_arguments(Machine& machine, lua_State* lua, const ScriptVerb& verb, Frame& frame)
{
    static const ScriptParameter self{"self", ScriptType::Object};
    static const ScriptParameter further{"..."};
    int index = 0;
    if (verb.of && !read_argument(machine, lua, ++index, self, frame))
        return false;
    for (const ScriptParameter& parameter : verb.parameters)
        if (!read_argument(machine, lua, ++index, parameter, frame))
            return false;
    const int given = lua_gettop(lua);
    if (given > index && !verb.more) {
        frame.message = lang(u"参数过多（最多 %1 个）", u"there are too many arguments (at most %1)").arg(index);
        return false;
    }
    while (index < given)
        if (!read_argument(machine, lua, ++index, further, frame))
            return false;
    return true;
}

/// Stack: a function and a span of the values to call it with.
int call_with_values(lua_State* lua)
{
    const auto values = *static_cast<std::span<const ScriptValue>*>(lua_touserdata(lua, 2));
    lua_settop(lua, 1);
    luaL_checkstack(lua, int(values.size()) + 4, nullptr);
    for (const ScriptValue& value : values)
        lua::push(lua, value);
    lua_call(lua, int(values.size()), 1);
    return 1;
}

class VerbCall final : public ScriptCall {
public:
    VerbCall(Machine& machine, lua_State* lua, Frame& frame) : m_machine(machine), m_lua(lua), m_frame(frame) {}

    std::span<const ScriptValue> arguments() const override { return m_frame.arguments; }

    Result<ScriptValue> invoke(const ScriptFunction& function, std::span<const ScriptValue> arguments) override
    {
        if (m_machine.stopped() || !lua_checkstack(m_lua, 4))
            return failure();
        lua_pushcfunction(m_lua, call_with_values);
        lua_pushvalue(m_lua, function.index);
        lua_pushlightuserdata(m_lua, &arguments);
        const auto depth = m_machine.depth();
        const int status = lua_pcall(m_lua, 2, 1, 0);
        m_machine.set_depth(depth);
        auto value = status == LUA_OK ? m_machine.read(m_lua, -1) : std::nullopt;
        if (status != LUA_OK && lua_type(m_lua, -1) == LUA_TSTRING)
            m_frame.script_error = lua::read_text(m_lua, -1);
        lua_pop(m_lua, 1);
        if (status != LUA_OK)
            return failure();
        // A function cannot be handed on: it is no argument of this verb.
        return value && !std::holds_alternative<ScriptFunction>(*value) ? *value : ScriptValue(Value());
    }

private:
    Status failure() const
    {
        return Status::error(m_frame.script_error.isNull() ? lang(u"脚本函数未能完成", u"the script's function failed")
                                                           : m_frame.script_error);
    }

    Machine& m_machine;
    lua_State* m_lua;
    Frame& m_frame;
};

bool run_verb(Machine& machine, lua_State* lua, Frame& frame)
{
    const auto& verb = *static_cast<const ScriptVerb*>(lua_touserdata(lua, lua_upvalueindex(1)));
    if (!read_arguments(machine, lua, verb, frame)) {
        frame.message = QLatin1String(verb.name) + QStringLiteral(": ") + frame.message;
        return false;
    }
    VerbCall call(machine, lua, frame);
    auto result = verb.run(call);
    if (result)
        frame.result = std::move(result.value());
    else
        frame.message = result.status().message();
    return result.ok();
}

} // namespace

int call_verb(lua_State* lua)
{
    return Machine::run_frame(lua, run_verb);
}

Frame& Machine::open_frame()
{
    if (m_open_frames == m_frames.size())
        m_frames.emplace_back();
    return m_frames[m_open_frames++];
}

void Machine::close_frame()
{
    Frame& frame = m_frames[--m_open_frames];
    frame.arguments.clear();
    frame.result = Value();
    frame.on_stack = false;
    if (!frame.message.isNull())
        frame.message = QString();
    if (!frame.script_error.isNull())
        frame.script_error = QString();
}

int Machine::run_frame(lua_State* lua, bool (*work)(Machine&, lua_State*, Frame&))
{
    Machine& machine = of(lua);
    machine.charge(lua, verb_cost);
    luaL_checkstack(lua, 8, nullptr);
    Frame& frame = machine.open_frame();
    bool done = false;
    try {
        done = work(machine, lua, frame);
    } catch (const std::exception& error) {
        frame.message = lang(u"程序出错：%1", u"the program failed here: %1").arg(QString::fromUtf8(error.what()));
    } catch (...) {
        frame.message = lang(u"程序出错", u"the program failed here");
    }
    if (machine.stopped()) {
        machine.close_frame();
        machine.charge(lua, 0);
    }
    if (done) {
        if (!frame.on_stack)
            lua::push(lua, frame.result);
        machine.close_frame();
        return 1;
    }
    // An error of the script's own function tells its place already.
    const bool has_place = !frame.script_error.isNull() && frame.message == frame.script_error;
    luaL_where(lua, 1);
    lua::push_text(lua, frame.message);
    machine.close_frame();
    if (!has_place)
        lua_concat(lua, 2);
    return lua_error(lua);
}

std::optional<ScriptValue> Machine::read(lua_State* lua, int index)
{
    lua::ReadBudget budget{.limit = limits().text};
    auto value = lua::read(lua, index, budget);
    charge_quietly(budget.used / bytes_per_step);
    if (budget.used > budget.limit)
        request_stop(Stop::List);
    return value;
}

} // namespace tarn::scene_script
