// Events of the running interface: a click that calls a function, and a mouse that moves over many controls with
// events. The peers are a button of Qt Widgets whose click calls the bare interpreter, and a QGraphicsScene whose items
// call it when the mouse comes and goes.

#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_event.h"
#include "gui_scene/gui_plug_scene.h"
#include "script/script_log.h"
#include "tools/gui_tools.h"

#include <lua.hpp>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPushButton>

#include <cmath>

namespace {

constexpr QSize screen(1920, 1080);
constexpr const char* function_text = "count = (count or 0) + 1";

/// Places all over the screen in rows.
std::vector<QRectF> grid(int count)
{
    const int columns = int(std::ceil(std::sqrt(count * 16.0 / 9)));
    const QSizeF cell(double(screen.width()) / columns, double(screen.height()) * columns / count);
    std::vector<QRectF> places;
    for (int i = 0; i < count; ++i)
        places.emplace_back(QPointF(i % columns * cell.width(), i / columns * cell.height()), cell * 0.9);
    return places;
}

/// The mouse goes to and fro over the screen.
QPointF mouse_place(int step)
{
    const double way = step % 400 / 200.0;
    const double share = way < 1 ? way : 2 - way;
    return {share * (screen.width() - 1), 0.37 * screen.height() + share * 50};
}

class Interface {
public:
    explicit Interface(int count)
    {
        m_scene.set_tools(tarn::make_gui_tools);
        m_scene.on_world_created(&m_world);
        const tarn::RecordingOff off(m_scene.journal());
        CDXUTDialog* dialog = m_scene.gui_core().create_dialog(QRect(QPoint(), screen));
        (void)m_scene.functions().set_function(QStringLiteral("f"), QLatin1String(function_text));
        for (const QRectF& place : grid(count)) {
            const quint32 id = m_scene.gui_core().create_control(DXUT_CONTROL_BUTTON, dialog, place)->id();
            for (const quint32 type : {EVENT_BUTTON_CLICKED, EVENT_BUTTON_MOUSE_ENTERED, EVENT_BUTTON_MOUSE_LEFT})
                m_scene.events().CreateEventW(id, type, QStringLiteral("f"));
        }
        m_scene.play(true);
    }
    void send(tarn::MouseEvent::Kind kind, QPointF place)
    {
        const auto button = kind == tarn::MouseEvent::Kind::Move ? Qt::NoButton : Qt::LeftButton;
        m_world.mouse_tool()->mouse({kind, place, button, Qt::NoModifier});
    }
    std::size_t answered() { return m_world.script_log().added(); }

private:
    CBaseWorld m_world;
    CGuiPlugScene m_scene;
};

void click_tarn(benchmark::State& state)
{
    Interface gui(1);
    const QPointF place(100, 100);
    for (auto _ : state) {
        gui.send(tarn::MouseEvent::Kind::Press, place);
        gui.send(tarn::MouseEvent::Kind::Release, place);
    }
    if (gui.answered() < std::size_t(state.iterations()))
        state.SkipWithError("the clicks called nothing");
    state.SetItemsProcessed(state.iterations());
}

/// The bare interpreter with the function compiled.
class Lua {
public:
    Lua() { luaL_loadstring(m_lua, function_text); }
    ~Lua() { lua_close(m_lua); }
    Lua(const Lua&) = delete;
    Lua& operator=(const Lua&) = delete;
    void call()
    {
        lua_pushvalue(m_lua, 1);
        lua_call(m_lua, 0, 0);
    }

private:
    lua_State* m_lua = luaL_newstate();
};

void click_qt(benchmark::State& state)
{
    Lua lua;
    QPushButton button;
    button.resize(100, 30);
    QObject::connect(&button, &QPushButton::clicked, &button, [&lua] { lua.call(); });
    const QPointF place(50, 15);
    for (auto _ : state) {
        QMouseEvent press(QEvent::MouseButtonPress, place, place, Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&button, &press);
        QMouseEvent release(QEvent::MouseButtonRelease, place, place, Qt::LeftButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(&button, &release);
    }
    state.SetItemsProcessed(state.iterations());
}

void hover_tarn(benchmark::State& state)
{
    Interface gui(int(state.range(0)));
    int step = 0;
    for (auto _ : state)
        gui.send(tarn::MouseEvent::Kind::Move, mouse_place(step++));
    if (gui.answered() == 0 && step > 400) // a short warm-up may pass between the rows only
        state.SkipWithError("the mouse called nothing");
}

class HoverItem : public QGraphicsRectItem {
public:
    HoverItem(const QRectF& place, Lua& lua) : QGraphicsRectItem(place), m_lua(lua) { setAcceptHoverEvents(true); }

protected:
    void hoverEnterEvent(QGraphicsSceneHoverEvent*) override { m_lua.call(); }
    void hoverLeaveEvent(QGraphicsSceneHoverEvent*) override { m_lua.call(); }

private:
    Lua& m_lua;
};

void hover_qt(benchmark::State& state)
{
    Lua lua;
    QGraphicsScene scene(QRectF(QPointF(), screen));
    for (const QRectF& place : grid(int(state.range(0))))
        scene.addItem(new HoverItem(place, lua));
    QGraphicsView view(&scene);
    view.resize(screen);
    view.viewport()->setMouseTracking(true);
    view.show();
    QCoreApplication::processEvents();
    int step = 0;
    for (auto _ : state) {
        const QPointF place = mouse_place(step++);
        QMouseEvent move(QEvent::MouseMove, place, view.viewport()->mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(view.viewport(), &move);
    }
}

BENCHMARK(click_tarn)->Name("click/tarn")->Arg(1);
BENCHMARK(click_qt)->Name("click/QPushButton")->Arg(1);
BENCHMARK(hover_tarn)->Name("hover/tarn")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(hover_qt)->Name("hover/QGraphicsView")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

} // namespace
