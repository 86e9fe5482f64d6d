#include "api.h"
#include "mouse_surface.h"
#include "report_list_api.h"
#include "surface_handle.h"
#include "user_input.h"

#include <QMetaEnum>

#include <algorithm>
#include <cmath>

namespace tarn::script {

namespace {

using Text = std::optional<QString>;

constexpr int hold_time = 120;      ///< milliseconds between the press and the first move of a drag
constexpr double longest_step = 10; ///< pixels from one move of a drag to the next

Result<Qt::MouseButton> read_button(const Text& name)
{
    if (!name || *name == QLatin1String("left"))
        return Qt::LeftButton;
    if (*name == QLatin1String("right"))
        return Qt::RightButton;
    if (*name == QLatin1String("middle"))
        return Qt::MiddleButton;
    return Status::error(QStringLiteral("bad argument \"button\": there is no mouse button \"%1\"").arg(*name));
}

/// What a button and modifiers stand for, both checked.
struct Press {
    Qt::MouseButton button;
    Qt::KeyboardModifiers modifiers;
};

Result<Press> read_press(const Text& button, const Text& mods)
{
    const auto which = read_button(button);
    if (!which)
        return which.status();
    const auto modifiers = read_modifiers(mods);
    if (!modifiers)
        return modifiers.status();
    return Press{which.value(), modifiers.value()};
}

Status settled(Automation& app, Status status)
{
    app.settle();
    return status;
}

Status press(Automation& app, SurfaceHandle* self, double x, double y, const Text& button, const Text& mods)
{
    const auto how = read_press(button, mods);
    if (!how)
        return how.status();
    return settled(app, (*self)->press({x, y}, how.value().button, how.value().modifiers));
}

Status move(Automation& app, SurfaceHandle* self, double x, double y, const Text& mods)
{
    const auto modifiers = read_modifiers(mods);
    if (!modifiers)
        return modifiers.status();
    return settled(app, (*self)->move({x, y}, modifiers.value()));
}

Status release(Automation& app, SurfaceHandle* self, double x, double y, const Text& button, const Text& mods)
{
    const auto how = read_press(button, mods);
    if (!how)
        return how.status();
    return settled(app, (*self)->release({x, y}, how.value().button, how.value().modifiers));
}

Status click(Automation& app, SurfaceHandle* self, double x, double y, const Text& button, const Text& mods)
{
    if (auto status = press(app, self, x, y, button, mods); !status)
        return status;
    return release(app, self, x, y, button, mods);
}

Status double_click(Automation& app, SurfaceHandle* self, double x, double y)
{
    return settled(app, (*self)->double_click({x, y}));
}

Status drag(Automation& app, SurfaceHandle* self, double x1, double y1, double x2, double y2, const Text& mods,
            const Text& button)
{
    const QPointF from(x1, y1);
    const QPointF way = QPointF(x2, y2) - from;
    if (auto status = press(app, self, x1, y1, button, mods); !status)
        return status;
    input::wait(hold_time);
    const int steps = std::max(1, int(std::ceil(std::hypot(way.x(), way.y()) / longest_step)));
    for (int step = 1; step <= steps; ++step) {
        const QPointF place = from + way * (double(step) / steps);
        if (auto status = move(app, self, place.x(), place.y(), mods); !status)
            return status;
    }
    return release(app, self, x2, y2, button, mods);
}

Status wheel(Automation& app, SurfaceHandle* self, double x, double y, double steps, const Text& mods)
{
    const auto modifiers = read_modifiers(mods);
    if (!modifiers)
        return modifiers.status();
    return settled(app, (*self)->wheel({x, y}, steps, modifiers.value()));
}

Status key(Automation& app, SurfaceHandle* self, const QString& name, const Text& mods)
{
    const auto modifiers = read_modifiers(mods);
    if (!modifiers)
        return modifiers.status();
    const auto code = read_key(name);
    return code ? settled(app, (*self)->key(code.value(), modifiers.value())) : code.status();
}

Data size(Automation&, SurfaceHandle* self)
{
    const QSize size = (*self)->size();
    return Data::Several{{size.width(), size.height()}};
}

constexpr Binding methods[] = {
    {"press", "self x y button mods", binding<press>},
    {"move", "self x y mods", binding<move>},
    {"release", "self x y button mods", binding<release>},
    {"click", "self x y button mods", binding<click>},
    {"double_click", "self x y", binding<double_click>},
    {"drag", "self x1 y1 x2 y2 mods button", binding<drag>},
    {"wheel", "self x y steps mods", binding<wheel>},
    {"key", "self name mods", binding<key>},
    {"size", "self", binding<size>},
};

} // namespace

Result<int> read_key(const QString& name)
{
    bool known = false;
    const int code = QMetaEnum::fromType<Qt::Key>().keyToValue(("Key_" + name.toLatin1()).constData(), &known);
    if (!known)
        return Status::error(QStringLiteral("bad argument \"name\": there is no key \"%1\"").arg(name));
    return code;
}

Result<Qt::KeyboardModifiers> read_modifiers(const std::optional<QString>& mods)
{
    static constexpr std::pair<const char*, Qt::KeyboardModifier> known[] = {
        {"shift", Qt::ShiftModifier}, {"ctrl", Qt::ControlModifier}, {"alt", Qt::AltModifier}};
    Qt::KeyboardModifiers modifiers;
    QString rest = mods.value_or(QString());
    for (const auto& [name, modifier] : known) {
        if (!rest.contains(QLatin1String(name)))
            continue;
        rest.remove(QLatin1String(name));
        modifiers |= modifier;
    }
    const bool only_separators = std::all_of(rest.begin(), rest.end(), [](QChar c) { return !c.isLetterOrNumber(); });
    if (!only_separators)
        return Status::error(QStringLiteral("bad argument \"mods\": there is no such key in \"%1\"").arg(*mods));
    return modifiers;
}

void add_surface_type(lua_State* lua, Automation& app)
{
    static const std::vector<Binding> all = [] {
        std::vector<Binding> rows(std::begin(methods), std::end(methods));
        rows.insert(rows.end(), timeline_methods().begin(), timeline_methods().end());
        return rows;
    }();
    add_type<SurfaceHandle>(lua, app, all);
}

void push_view(lua_State* lua, Automation& app)
{
    to_lua(SurfaceHandle{&app.view()}).push(lua);
}

void push_timeline(lua_State* lua, Automation& app)
{
    if (app.timeline())
        to_lua(SurfaceHandle{app.timeline(), app.timeline_state()}).push(lua);
    else
        lua_pushnil(lua);
}

} // namespace tarn::script
