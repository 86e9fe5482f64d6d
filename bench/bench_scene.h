#pragma once

#include <benchmark/benchmark.h>

#include <QString>

#include <vector>

class CDXUTControl;
class CGuiCore;
class CGuiPlugScene;

namespace bench {

/// Adds `count` controls, fifty to a dialog: the four types that can be made, with the attributes that an author
/// changes; no two have the same name, text and place.
void fill_scene(CGuiCore& core, int count);

/// A package with that scene, in a folder that goes with the program; made when it is first asked for.
QString package_path(int count);
/// Where a case may save.
QString output_path();

/// A copy of the controls that are in the scene.
std::vector<CDXUTControl*> controls_of(CGuiPlugScene& scene);

/// The sizes at which an operation that grows is measured.
inline void growing(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);
}

} // namespace bench
