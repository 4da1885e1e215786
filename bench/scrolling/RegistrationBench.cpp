// One measure of two frames beside OpenCV's phase correlation of the same two.
#include "PhaseCorrelation.h"
#include "annotation/Ratio.h"
#include "scrolling/ImageRegistration.h"
#include "scrolling/corpus/Pages.h"

#include <benchmark/benchmark.h>

using namespace marrowfin;
using namespace marrowfin::bench;
using namespace marrowfin::testsupport;

namespace {

void registration(benchmark::State& state, PageKind kind, const Furniture& furniture) {
    const QSize area(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const double density = area.width() > 2000 ? 2 : 1;
    const QImage whole = page(kind, {area.width(), area.height() * 2}, density, 4);
    const QImage older = look(whole, area, 100, 1, furniture, density);
    const QImage newer = look(whole, area, 100 + area.height() * 4 / 10, 2, furniture, density);
    PhaseCorrelation reference;
    Times times;
    for (auto _ : state) {
        times.take([&] { benchmark::DoNotOptimize(scrolling::ImageRegistration::movement(older, newer)); },
                   [&] { benchmark::DoNotOptimize(reference.offset(older, newer)); });
        state.SetIterationTime(times.ours);
    }
    state.counters["ms"] = times.ours * 1e3;
    state.counters["opencv_ms"] = times.reference * 1e3;
    state.counters["times_faster"] = times.ratio();
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Args({400, 300})->Args({1200, 800})->Args({2880, 1800});
    bench->UseManualTime()->Iterations(11)->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(registration, prose, PageKind::Prose, {})->Apply(sizes);
BENCHMARK_CAPTURE(registration, photo, PageKind::Photo, {})->Apply(sizes);
// Nothing is the same to the last bit: the fallback has to do it.
BENCHMARK_CAPTURE(registration, photo_with_grain, PageKind::Photo, {.grain = true})->Apply(sizes);

} // namespace
