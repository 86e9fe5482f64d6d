// Aligning, sizing and spreading a selection of many controls, each as one step of undo.

#include "bench_scene.h"
#include "design/align_selection.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"

namespace {

/// All controls are in one dialog and selected, in an order that has nothing to do with their places.
class Selection {
public:
    explicit Selection(const benchmark::State& state)
    {
        const int count = int(state.range(0));
        const tarn::RecordingOff off(scene.journal());
        bench::fill_scene(scene.gui_core(), count);
        auto controls = bench::controls_of(scene);
        scene.gui_core().move_controls_to(controls, scene.gui_core().GetDialogs().first());
        quint32 random = 1;
        for (CDXUTControl* control : controls) {
            random = random * 1664525u + 1013904223u;
            control->SetLocation(float(random >> 8 & 0xffff), float(random >> 16));
            scene.gui_core().SelectControl(control, true);
        }
    }
    template <class Operation>
    void act(Operation operation)
    {
        {
            const tarn::UserAction action(scene.journal());
            operation(scene.gui_core());
        }
        scene.journal().undo();
    }

    bench::WorldScene in_world;

    CGuiPlugScene& scene = in_world.scene;
};

template <class Operation>
void measure(benchmark::State& state, Operation operation)
{
    Selection selection(state);
    for (auto _ : state) {
        bench::cool_caches(state);
        selection.act(operation);
    }
}

void align(benchmark::State& state)
{
    measure(state, [](CGuiCore& core) { tarn::align_selection(core, tarn::Edge::MiddleX); });
}

void match(benchmark::State& state)
{
    measure(state, [](CGuiCore& core) { tarn::match_selection(core, tarn::Dimension::Both); });
}

void distribute(benchmark::State& state)
{
    measure(state, [](CGuiCore& core) { tarn::distribute_selection(core, Qt::Horizontal); });
}

void align_to_area(benchmark::State& state)
{
    measure(state, [](CGuiCore& core) { tarn::align_selection_to_area(core, tarn::Edge::Bottom); });
}

using bench::growing_cold;

BENCHMARK(align)->Name("align/tarn")->Apply(growing_cold);
BENCHMARK(match)->Name("same_size/tarn")->Apply(growing_cold);
BENCHMARK(distribute)->Name("distribute/tarn")->Apply(growing_cold);
BENCHMARK(align_to_area)->Name("align_to_area/tarn")->Apply(growing_cold);

} // namespace
