// Packages loaded, merged and saved, beside what it takes at least: unpacking and parsing into plain structures, and
// formatting and packing these.

#include "bench_scene.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/tex_path_info.h"
#include "plain_package.h"

#include "store/pak_file.h"

#include <optional>

namespace {

std::string plain_path(const benchmark::State& state)
{
    return bench::package_path(int(state.range(0))).toStdString();
}

void load_tarn(benchmark::State& state)
{
    const QString path = bench::package_path(int(state.range(0)));
    std::optional<bench::WorldScene> in_world;
    for (auto _ : state) {
        state.PauseTiming();
        in_world.emplace();
        state.ResumeTiming();
        if (!in_world->scene.open_scene(path))
            state.SkipWithError("the package could not be loaded");
    }
}

void load_plain(benchmark::State& state)
{
    const std::string path = plain_path(state);
    std::optional<bench::PlainScene> scene;
    for (auto _ : state) {
        state.PauseTiming();
        scene.emplace();
        state.ResumeTiming();
        if (!bench::load_plain(path, *scene))
            state.SkipWithError("the package could not be loaded");
    }
}

/// The package is opened in place of an equal one.
void reload_tarn(benchmark::State& state)
{
    const QString path = bench::package_path(int(state.range(0)));
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    (void)scene.open_scene(path);
    for (auto _ : state)
        if (!scene.open_scene(path))
            state.SkipWithError("the package could not be loaded");
}

void reload_plain(benchmark::State& state)
{
    const std::string path = plain_path(state);
    bench::PlainScene scene;
    (void)bench::load_plain(path, scene);
    for (auto _ : state)
        if (!bench::load_plain(path, scene))
            state.SkipWithError("the package could not be loaded");
}

void merge_tarn(benchmark::State& state)
{
    const QString path = bench::package_path(int(state.range(0)));
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    (void)scene.open_scene(path);
    for (auto _ : state) {
        if (!scene.on_merge_GUI(path, QStringLiteral("merged"), true))
            state.SkipWithError("the package could not be merged");
        state.PauseTiming();
        scene.journal().undo();
        scene.gui_core().document().forget_history();
        state.ResumeTiming();
    }
}

/// A whole import undone and done again, with the index that the next look at the scene makes.
void undo_import(benchmark::State& state)
{
    const QString path = bench::package_path(int(state.range(0)));
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    CPakFile package;
    if (!package.open(path) || !scene.load(package, CTexPathInfo(path, 1)))
        state.SkipWithError("the package could not be loaded");
    for (auto _ : state) {
        bench::cool_caches(state);
        scene.journal().undo();
        benchmark::DoNotOptimize(scene.gui_core().controls().size());
        scene.journal().redo();
        benchmark::DoNotOptimize(scene.gui_core().controls().size());
    }
}

void save_tarn(benchmark::State& state)
{
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    (void)scene.open_scene(bench::package_path(int(state.range(0))));
    const QString output = bench::output_path();
    for (auto _ : state)
        if (!scene.save_scene(output))
            state.SkipWithError("the scene could not be saved");
}

void save_plain(benchmark::State& state)
{
    const std::string path = plain_path(state);
    bench::PlainScene scene;
    if (!bench::load_plain(path, scene) || bench::format_plain(scene) != bench::scene_json(path))
        state.SkipWithError("the peer's text is not the product's");
    for (auto _ : state)
        benchmark::DoNotOptimize(bench::pack_plain(bench::format_plain(scene)));
}

using bench::growing;

BENCHMARK(load_tarn)->Name("load_package/tarn")->Apply(growing);
BENCHMARK(load_plain)->Name("load_package/inflate_parse")->Apply(growing);
BENCHMARK(reload_tarn)->Name("replace_package/tarn")->Apply(growing);
BENCHMARK(reload_plain)->Name("replace_package/inflate_parse")->Apply(growing);
BENCHMARK(merge_tarn)->Name("merge/tarn")->Apply(growing);
BENCHMARK(load_tarn)->Name("merge/own_load")->Apply(growing);
BENCHMARK(undo_import)->Name("undo_import/tarn")->Apply(bench::growing_cold);
BENCHMARK(save_tarn)->Name("save_package/tarn")->Apply(growing);
BENCHMARK(save_plain)->Name("save_package/format_deflate")->Apply(growing);

} // namespace
