#pragma once

#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"

#include <benchmark/benchmark.h>

#include <QString>

#include <vector>

class CDXUTControl;
class CGuiCore;

namespace bench {

/// A scene without tools in a world of its own.
struct WorldScene {
    WorldScene() { scene.on_world_created(&world); }

    CBaseWorld world;
    CGuiPlugScene scene;
};

/// Adds `count` controls, fifty to a dialog: the four types that can be made, with the attributes that an author
/// changes; no two have the same name, text and place.
void fill_scene(CGuiCore& core, int count);

/// A package with that scene, in a folder that goes with the program; made when it is first asked for.
QString package_path(int count);
/// Where a case may save.
QString output_path();

/// A copy of the controls that are in the scene.
std::vector<CDXUTControl*> controls_of(CGuiPlugScene& scene);

/// An author's operations come one at a time, with drawing and other work between them: none finds the model in the
/// processor's caches. Called between two rounds of an operation that does little with each object; without it small
/// scenes would be measured in the cache and large ones in memory, and their growth would tell the cache's size.
void cool_caches(benchmark::State& state);

/// The sizes at which such an operation is measured. It takes a few rounds: cooling takes longer than the operation.
inline void growing_cold(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond)->Iterations(8);
}

/// The sizes at which an operation that grows is measured.
inline void growing(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);
}

} // namespace bench
