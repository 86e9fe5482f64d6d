#include "api.h"
#include "scripted_boxes.h"

#include <algorithm>
#include <cmath>

namespace tarn::script {

/// A colour is a list of red, green and blue.
std::optional<QColor> read_color(const NumberList& parts)
{
    const auto is_part = [](double part) { return part >= 0 && part <= 255 && part == std::trunc(part); };
    if (parts.size() != 3 || !std::all_of(parts.begin(), parts.end(), is_part))
        return std::nullopt;
    return QColor(int(parts[0]), int(parts[1]), int(parts[2]));
}

template <>
struct Argument<Answer> {
    static Result<Answer> read(lua_State* lua, int index, QLatin1String name)
    {
        if (lua_isfunction(lua, index)) {
            lua_pushvalue(lua, index);
            return Answer(FunctionRef{luaL_ref(lua, LUA_REGISTRYINDEX)});
        }
        lua::ReadBudget unbounded;
        const Value value = lua::read_plain(lua, index, unbounded).value_or(Value());
        if (const auto* numbers = std::get_if<NumberList>(&value))
            if (const auto color = read_color(*numbers))
                return Answer(*color);
        if (const auto* text = std::get_if<QString>(&value))
            return Answer(*text);
        if (const auto* number = std::get_if<qint64>(&value))
            return Answer(*number);
        if (const auto* flag = std::get_if<bool>(&value); flag && !*flag)
            return Answer(false);
        return bad_argument(lua, index, name, "a text, false, a whole number, a colour {r, g, b} or a function");
    }
};

namespace {

Status answer(Automation& app, const std::vector<Answer>& answers)
{
    for (const Answer& each : answers)
        app.boxes().queue(each);
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
