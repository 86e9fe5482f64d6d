// What reads no more of its input than it keeps: its time must not grow with what is there.

#include "core/field.h"
#include "gui_core/swf_header.h"

#include <benchmark/benchmark.h>

namespace {

/// A compressed movie that unpacks to that many bytes.
void read_swf_header(benchmark::State& state)
{
    const QByteArray content(state.range(0), '\0');
    const QByteArray movie = "CWS\x06" + QByteArray("\0\0\0\3", 4) + qCompress(content, 9).mid(4);
    for (auto _ : state)
        if (!tarn::read_swf_header(movie).ok())
            state.SkipWithError("the header was not read");
}

void cut_text(benchmark::State& state)
{
    const QString text(state.range(0), QLatin1Char('x'));
    for (auto _ : state)
        benchmark::DoNotOptimize(tarn::cut_text(text, 31));
}

BENCHMARK(read_swf_header)->Name("read_swf_header/tarn")->Arg(1'000'000)->Arg(10'000'000);
BENCHMARK(cut_text)->Name("cut_text/tarn")->Arg(1'000'000)->Arg(10'000'000);

} // namespace
