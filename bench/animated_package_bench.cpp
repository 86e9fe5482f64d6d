// Packages of an animated interface, with ten keys for each control: loaded, saved, and kept as snapshots, beside
// what that takes at least.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "bench_scene.h"
#include "gui_core/dxut_control.h"
#include "plain_package.h"

#include <QFileInfo>

#include <optional>

namespace {

constexpr int keys_of_track = 10'000;

/// A tenth of `keys` controls, some of which fade.
void fill_animated(CGuiPlugScene& scene, int keys)
{
    bench::fill_scene(scene.gui_core(), keys / 10);
    CTimebar* bar = scene.animation().create_bar(keys_of_track / 64.f);
    const auto controls = bench::controls_of(scene);
    for (int track = 0; track < keys / keys_of_track; ++track) {
        CTimerObject* object = bar->create_object(tarn::TimerObjectType::Control, {controls[std::size_t(track)]->id()});
        std::vector<tarn::Key> all;
        for (int key = 0; key < keys_of_track; ++key)
            all.push_back({.time = float(key) / 64, .value = tarn::KeyValue::number(float(key % 97) / 97)});
        tarn::KeyTrack keys_at(tarn::VarType::Float);
        keys_at.edit({}, all);
        object->create_channel_var(tarn::Channel::Transparency)->set_keys(std::move(keys_at));
    }
}

QString animated_path(int keys)
{
    const QString path = bench::output_path() + QString::number(keys);
    if (QFileInfo::exists(path))
        return path;
    bench::WorldScene in_world;
    const tarn::RecordingOff off(in_world.scene.journal());
    fill_animated(in_world.scene, keys);
    return in_world.scene.save_scene(path) ? path : QString();
}

struct PlainAnimated {
    bench::PlainScene scene;
    std::vector<bench::PlainTrack> tracks;

    bool load(const std::string& path) { return bench::load_plain(path, scene) && load_plain_keys(path, tracks); }
};

void load_tarn(benchmark::State& state)
{
    const QString path = animated_path(int(state.range(0)));
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
    const std::string path = animated_path(int(state.range(0))).toStdString();
    std::optional<PlainAnimated> plain;
    for (auto _ : state) {
        state.PauseTiming();
        plain.emplace();
        state.ResumeTiming();
        if (!plain->load(path))
            state.SkipWithError("the package could not be loaded");
    }
}

void save_tarn(benchmark::State& state)
{
    bench::WorldScene in_world;
    (void)in_world.scene.open_scene(animated_path(int(state.range(0))));
    const QString output = bench::output_path();
    for (auto _ : state)
        if (!in_world.scene.save_scene(output))
            state.SkipWithError("the scene could not be saved");
}

void save_plain(benchmark::State& state)
{
    const std::string path = animated_path(int(state.range(0))).toStdString();
    PlainAnimated plain;
    if (!plain.load(path) || bench::animation_json(path).find(format_plain_keys(plain.tracks)) == std::string::npos)
        state.SkipWithError("the peer's text is not the product's");
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::pack_plain(bench::format_plain(plain.scene)));
        benchmark::DoNotOptimize(bench::pack_plain(format_plain_keys(plain.tracks)));
    }
}

void snapshot_tarn(benchmark::State& state)
{
    bench::WorldScene in_world;
    (void)in_world.scene.open_scene(animated_path(int(state.range(0))));
    for (auto _ : state) {
        std::optional<tarn::SceneSnapshot> snapshot = in_world.scene.document().snapshot();
        benchmark::DoNotOptimize(snapshot);
        state.PauseTiming();
        snapshot.reset();
        state.ResumeTiming();
    }
}

/// As many references copied from one list to another.
void snapshot_references(benchmark::State& state)
{
    std::vector<tarn::StatePtr> states;
    for (int i = 0; i < state.range(0) / 10; ++i)
        states.emplace_back(new tarn::DocumentState);
    for (auto _ : state) {
        std::optional<std::vector<tarn::StatePtr>> copy(states);
        benchmark::DoNotOptimize(copy);
        state.PauseTiming();
        copy.reset();
        state.ResumeTiming();
    }
}

#define KEYS Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)
BENCHMARK(load_tarn)->Name("load_animated/tarn")->KEYS;
BENCHMARK(load_plain)->Name("load_animated/inflate_parse")->KEYS;
BENCHMARK(save_tarn)->Name("save_animated/tarn")->KEYS;
BENCHMARK(save_plain)->Name("save_animated/format_deflate")->KEYS;
BENCHMARK(snapshot_tarn)->Name("snapshot_animated/tarn")->KEYS;
BENCHMARK(snapshot_references)->Name("snapshot_animated/references")->KEYS;

} // namespace
