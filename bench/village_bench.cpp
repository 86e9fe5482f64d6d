// The sample with a world as its players see it, beside the time that a frame has at thirty a second.

#include "bench_scene.h"
#include "engine/world_models.h"
#include "engine/world_renderer.h"
#include "gui_core/gui_core.h"
#include "tools/gui_tools.h"
#include "world/world_scene.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace {

using namespace tarn;

constexpr QSize screen(1280, 720);
constexpr double frame_time = 1.0 / 30; ///< seconds

struct Village {
    Village()
    {
        scene.set_tools(make_gui_tools);
        scene.on_world_created(&world);
        opened = scene.open_scene(QStringLiteral(TARN_VILLAGE)).ok();
        scene.gui_core().set_screen_size(screen);
        while (opened && !has_models())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        scene.play(true);
    }
    ~Village() { scene.play(false); }

    bool has_models()
    {
        const auto& objects = world.objects().objects();
        return std::all_of(objects.begin(), objects.end(), [this](const WorldObject* object) {
            return !object->has_file() || world.models().pose(*object);
        });
    }
    /// What moved is drawn: the world, its pictures in the interface, and what changed of that.
    void show(QImage& overlay)
    {
        const RenderView view{world.camera().view_matrix(), world.camera().projection_matrix(screen), screen};
        benchmark::DoNotOptimize(world.renderer().picture(0, view, WorldRenderer::Eye::Camera));
        const QRectF damage = world.overlay()->take_damage();
        QPainter painter(&overlay);
        world.overlay()->paint(painter, damage, 1);
    }

    CBaseWorld world;
    CGuiPlugScene scene;
    bool opened = false;
};

void play_village_tarn(benchmark::State& state)
{
    Village village;
    if (!village.opened || !village.world.renderer().works())
        return state.SkipWithError("there is no OpenGL, or no sample");
    QImage overlay(screen, QImage::Format_ARGB32_Premultiplied);
    double now = 0;
    for (auto _ : state) {
        village.scene.advance(now += frame_time);
        village.show(overlay);
    }
}

void thirtieth_of_a_second(benchmark::State& state)
{
    for (auto _ : state)
        state.SetIterationTime(frame_time);
}

BENCHMARK(play_village_tarn)->Name("play_village/tarn")->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(thirtieth_of_a_second)
    ->Name("play_village/thirtieth_of_a_second")
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

} // namespace
