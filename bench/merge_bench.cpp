// Two versions of a scene merged, beside reading the three packages, which whoever merges has to do first.

#include "bench_scene.h"
#include "commands/scene_files.h"
#include "commands/three_way_merge.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"

#include <QFileInfo>

namespace {

struct Paths {
    QString base;
    QString ours;
    QString theirs;
};

/// Saves what `change` makes of every tenth control from `first` on, and a dialog more.
template <class Change>
void save_version(const QString& base, const QString& path, std::size_t first, Change&& change)
{
    if (QFileInfo::exists(path))
        return;
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    (void)scene.open_scene(base);
    const auto controls = bench::controls_of(scene);
    for (std::size_t i = first; i < controls.size(); i += 10)
        change(*controls[i]);
    CDXUTDialog* dialog = scene.gui_core().create_dialog(QRect(10, 10, 640, 480));
    for (std::size_t i = first; i < controls.size(); i += 20)
        scene.gui_core().create_control(DXUT_CONTROL_BUTTON, dialog, QRectF(double(i % 600), 20, 40, 20));
    (void)scene.save_scene(path);
}

Paths versions(int count)
{
    const QString base = bench::package_path(count);
    Paths paths{base, base + QStringLiteral("-ours"), base + QStringLiteral("-theirs")};
    save_version(base, paths.ours, 3, [](CDXUTControl& control) { control.SetLocation(control.x() + 5, control.y()); });
    save_version(base, paths.theirs, 4, [](CDXUTControl& control) { control.SetSize(70, 30); });
    return paths;
}

void merge_versions(benchmark::State& state)
{
    const Paths paths = versions(int(state.range(0)));
    tarn::SceneTables tables;
    const auto base = tables.read(paths.base);
    const auto ours = tables.read(paths.ours);
    const auto theirs = tables.read(paths.theirs);
    for (auto _ : state) {
        const auto merged = tarn::merge_versions(tables.document(), base.value(), ours.value(), theirs.value());
        if (!merged || !merged.value().conflicts.empty())
            state.SkipWithError("the versions could not be merged");
    }
}

void read_versions(benchmark::State& state)
{
    const Paths paths = versions(int(state.range(0)));
    tarn::SceneTables tables;
    for (auto _ : state)
        for (const QString& path : {paths.base, paths.ours, paths.theirs})
            if (!tables.read(path))
                state.SkipWithError("a version could not be read");
}

BENCHMARK(merge_versions)->Name("merge_versions/tarn")->Apply(bench::growing);
BENCHMARK(read_versions)->Name("merge_versions/own_loads")->Apply(bench::growing);

} // namespace
