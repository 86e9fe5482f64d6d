#include "api.h"
#include "scripted_boxes.h"

namespace tarn::script {

namespace {

std::optional<QColor> read_color(lua_State* lua, int index)
{
    int parts[3];
    for (int i = 0; i < 3; ++i) {
        lua_rawgeti(lua, index, i + 1);
        const auto part = Argument<int>::read(lua, lua_gettop(lua));
        lua_pop(lua, 1);
        if (!part || *part < 0 || *part > 255)
            return std::nullopt;
        parts[i] = *part;
    }
    return QColor(parts[0], parts[1], parts[2]);
}

std::optional<Answer> read_answer(lua_State* lua, int index)
{
    if (lua_isfunction(lua, index)) {
        lua_pushvalue(lua, index);
        return FunctionRef{luaL_ref(lua, LUA_REGISTRYINDEX)};
    }
    if (lua_istable(lua, index)) {
        const auto color = read_color(lua, index);
        return color ? std::optional<Answer>(*color) : std::nullopt;
    }
    const auto value = Argument<Value>::read(lua, index);
    if (!value)
        return std::nullopt;
    if (const auto* text = std::get_if<QString>(&*value))
        return *text;
    if (const auto* number = std::get_if<qint64>(&*value))
        return *number;
    if (const auto* flag = std::get_if<bool>(&*value); flag && !*flag)
        return false;
    return std::nullopt;
}

Status answer(Automation& app, Rest rest)
{
    std::vector<Answer> answers;
    for (int i = 0; i < rest.count(); ++i) {
        auto next = read_answer(rest.lua, rest.index(i));
        if (!next)
            return bad_argument(rest.lua, rest.index(i), QLatin1String("a"),
                                "a text, false, a whole number, a colour {r, g, b} or a function");
        answers.push_back(std::move(*next));
    }
    for (Answer& each : answers)
        app.boxes().queue(std::move(each));
    return {};
}

Data shown(Automation& app)
{
    return app.boxes().take_shown();
}

Data pending(Automation& app)
{
    return app.boxes().pending();
}

constexpr Binding functions[] = {
    {"answer", "a", binding<answer>},
    {"boxes", "", binding<shown>},
    {"pending", "", binding<pending>},
};

} // namespace

std::span<const Binding> box_functions()
{
    return functions;
}

} // namespace tarn::script
