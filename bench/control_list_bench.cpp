// The list of controls over a real scene, as the page fills and sorts it.

#include "bench_scene.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "manager/report_list_control.h"

#include <benchmark/benchmark.h>

#include <QApplication>

namespace {

constexpr int controls_in_dialog = 5000; ///< the most that a case can share out evenly and that still show layers

/// A list that stands open over a scene of large dialogs.
class OpenList {
public:
    explicit OpenList(const benchmark::State& state)
    {
        CDXUTDialog* dialog = nullptr;
        const tarn::UserAction action(scene.journal());
        for (int i = 0; i < state.range(0); ++i) {
            if (i % controls_in_dialog == 0)
                dialog = scene.gui_core().create_dialog(QRect(0, 0, 640, 480));
            scene.gui_core().create_control(i % 4, dialog, QRectF(i % 500, i % 400, 96, 28));
        }
        list.resize(400, 800);
        list.show();
        QApplication::processEvents();
    }
    void refill()
    {
        const auto& controls = scene.gui_core().controls();
        list.refill_list(std::vector<void*>(controls.begin(), controls.end()));
    }
    void paint()
    {
        QApplication::processEvents();
        list.viewport()->repaint();
    }
    /// The lowest control of a dialog goes to the top, so that every other one has another layer.
    void turn_layers()
    {
        for (CDXUTDialog* dialog : scene.gui_core().GetDialogs())
            dialog->SetCtrlLayer(dialog->controls().first(), 0);
    }

    bench::WorldScene in_world;

    CGuiPlugScene& scene = in_world.scene;
    CReportListControl list;
};

void refill(benchmark::State& state)
{
    OpenList open(state);
    for (auto _ : state) {
        open.list.refill_list({});
        open.refill();
        open.paint();
    }
}

void sort_by(benchmark::State& state, int column)
{
    OpenList open(state);
    for (auto _ : state) {
        open.refill();
        open.turn_layers();
        open.list.sort_by_column(column, true);
        open.paint();
    }
}

void sort_by_layer(benchmark::State& state)
{
    sort_by(state, CReportListControl::Layer);
}

void sort_by_number(benchmark::State& state)
{
    sort_by(state, CReportListControl::Id);
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(refill)->Name("control_list_refill/tarn")->Apply(sizes);
BENCHMARK(sort_by_layer)->Name("control_list_sort_layer/tarn")->Apply(sizes);
BENCHMARK(sort_by_number)->Name("control_list_sort_number/tarn")->Apply(sizes);

} // namespace
