// Frames of a drag in the view: the mouse moves, the selection follows, and what changed is drawn.

#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "tools/gui_tools.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

#include <cmath>

namespace {

constexpr QSize screen(1920, 1080);

class View {
public:
    explicit View(const benchmark::State& state) : m_image(screen, QImage::Format_ARGB32_Premultiplied)
    {
        scene.set_tools(tarn::make_gui_tools);
        scene.on_world_created(&m_world);
        m_world.overlay()->set_screen_size(screen);
        fill(int(state.range(0)));
        draw();
    }
    /// The topmost control, pressed at its middle.
    void press()
    {
        m_place = scene.gui_core().GetDialogs().first()->controls().last()->screen_rect().center();
        send(tarn::MouseEvent::Kind::Press);
        for (int i = 0; i < 3; ++i) { // Far enough for a drag; what the selection changed is drawn.
            move();
            draw();
        }
    }
    void move()
    {
        m_place += QPointF(m_steps++ % 20 < 10 ? 4 : -4, 0);
        send(tarn::MouseEvent::Kind::Move);
    }
    void release() { send(tarn::MouseEvent::Kind::Release); }
    void draw()
    {
        const QRectF damage = m_world.overlay()->take_damage().intersected(QRectF(QPointF(), screen));
        QPainter painter(&m_image);
        painter.setClipRect(damage);
        m_world.overlay()->paint(painter, damage, 1);
        painter.setClipping(false);
        m_world.mouse_tool()->paint(painter);
    }

private:
    /// Buttons in rows all over the screen, in one dialog.
    void fill(int count)
    {
        const tarn::RecordingOff off(scene.journal());
        CDXUTDialog* dialog = scene.gui_core().create_dialog(QRect(QPoint(), screen));
        const int columns = int(std::ceil(std::sqrt(count * 16.0 / 9)));
        const QSizeF cell(double(screen.width()) / columns, double(screen.height()) * columns / count);
        for (int i = 0; i < count; ++i) {
            const QPointF place(i % columns * cell.width(), i / columns * cell.height());
            scene.gui_core().create_control(DXUT_CONTROL_BUTTON, dialog, QRectF(place, QSizeF(96, 28)));
        }
    }
    void send(tarn::MouseEvent::Kind kind)
    {
        m_world.mouse_tool()->mouse({kind, m_place, Qt::LeftButton, Qt::NoModifier});
    }

    CBaseWorld m_world;
    QImage m_image;
    QPointF m_place;
    int m_steps = 0;

public:
    CGuiPlugScene scene; ///< goes before the world that it knows
};

void drag_one(benchmark::State& state)
{
    View view(state);
    view.press();
    for (auto _ : state) {
        view.move();
        view.draw();
    }
    view.release();
}

/// With the aids switched on: the dragged control snaps to those of its dialog, and rulers and distances are drawn.
void drag_snapping(benchmark::State& state)
{
    View view(state);
    CGuiCore& core = view.scene.gui_core();
    core.view_aids() = {.ruler = 1, .coordinate_display = 0, .guide_lines = 1, .snap = 1};
    CDXUTDialog* home = core.GetDialogs().last();
    core.move_controls_to(std::vector<CDXUTControl*>(core.controls()), home);
    view.press();
    for (auto _ : state) {
        view.move();
        view.draw();
    }
    view.release();
}

void drag_all(benchmark::State& state)
{
    View view(state);
    CGuiCore& core = view.scene.gui_core();
    core.SelectControls(core.controls());
    view.press();
    for (auto _ : state) {
        view.move();
        view.draw();
    }
    view.release();
}

BENCHMARK(drag_one)->Name("drag_one/tarn")->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(drag_snapping)->Name("drag_snapping/tarn")->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(drag_all)->Name("drag_all/tarn")->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
