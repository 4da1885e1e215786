// The X11 backend's own share of a capture, on the display it is run on, beside the toolkit's screen grab:
//     tests/desktop/session --size 3840x2160 -- build/release/bench/x11/bench_x11
#include "base/Outcome.h"
#include "platform/x11/X11Backend.h"
#include "platform/x11/capture/Grabber.h"
#include "platform/x11/input/X11HotKeys.h"
#include "platform/x11/layout/WindowQuery.h"
#include "platform/x11/layout/X11Screens.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <benchmark/benchmark.h>
#include <future>

using namespace marrowfin;
using namespace marrowfin::platform;

namespace {

x11::X11Backend* backend = nullptr;

QRect wholeScreen() {
    return backend->nativeScreens().layout().displays().front().native;
}

void toolkitGrab(benchmark::State& state) {
    for (auto unused : state)
        benchmark::DoNotOptimize(QGuiApplication::primaryScreen()->grabWindow(0).toImage());
}

void grab(benchmark::State& state, x11::SegmentPool::Reuse reuse, x11::WithCursor cursor) {
    const auto connection = *x11::Connection::open();
    x11::Grabber grabber(*connection, reuse);
    for (auto unused : state)
        benchmark::DoNotOptimize(grabber.grabScreen(wholeScreen(), cursor));
}

void connect(benchmark::State& state) {
    for (auto unused : state)
        benchmark::DoNotOptimize(x11::Connection::open());
}

void listWindows(benchmark::State& state) {
    const auto connection = *x11::Connection::open();
    for (auto unused : state) {
        auto facts = x11::readWindows(*connection, x11::readDesktopWindows(*connection).backToFront);
        x11::addMissingPids(*connection, facts);
        benchmark::DoNotOptimize(facts);
        state.counters["windows"] = static_cast<double>(facts.size());
    }
}

// From asking for a stream to the frame in the taker's hands, threads and all.
void oneFrame(benchmark::State& state) {
    const QRect screen = wholeScreen();
    StreamConfiguration configuration;
    configuration.width = screen.width();
    configuration.height = screen.height();
    const DisplayFilter filter{backend->nativeScreens().layout().displays().front().id};
    for (auto unused : state) {
        std::promise<void> got;
        const auto stream = backend->screenSource().makeStream(filter, configuration);
        const auto queue = std::make_shared<SerialQueue>(QStringLiteral("bench"));
        bool first = true;
        const auto take = [&](const Frame&, OutputType) {
            if (std::exchange(first, false)) {
                stream->stopCapture();
                got.set_value();
            }
        };
        if (!stream->addOutput(OutputType::Screen, queue, take))
            state.SkipWithError("no output");
        stream->startCapture();
        got.get_future().wait();
    }
}

// A reading of the keyboard, then three keys under every lock. Destroying the service gives them back.
void registerThreeKeys(benchmark::State& state) {
    for (auto unused : state) {
        auto keys = std::make_unique<x11::X11HotKeys>(backend->connection());
        for (const std::uint32_t key : {keyCode3, keyCode4, keyCode5})
            keys->registerHotKey({key, modifierCommand + modifierShift, {0, key}, {}, 0});
        state.PauseTiming();
        keys.reset();
        state.ResumeTiming();
    }
}

void mainScreen(benchmark::State& state) {
    for (auto unused : state)
        benchmark::DoNotOptimize(backend->screens().mainScreen());
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    auto made = x11::X11Backend::make();
    if (!made)
        return 1;
    backend = made->get();
    const auto unit = benchmark::kMillisecond;
    using Reuse = x11::SegmentPool::Reuse;
    using x11::WithCursor;
    benchmark::RegisterBenchmark("reference: QScreen::grabWindow", toolkitGrab)->Unit(unit);
    benchmark::RegisterBenchmark("grab, fresh memory", grab, Reuse::No, WithCursor::No)
        ->Unit(unit)
        ->UseRealTime();
    benchmark::RegisterBenchmark("grab, fresh memory, cursor", grab, Reuse::No, WithCursor::Yes)
        ->Unit(unit)
        ->UseRealTime();
    benchmark::RegisterBenchmark("grab, reused memory", grab, Reuse::Yes, WithCursor::No)
        ->Unit(unit)
        ->UseRealTime();
    benchmark::RegisterBenchmark("one frame of a stream", oneFrame)->Unit(unit)->UseRealTime();
    benchmark::RegisterBenchmark("list the windows", listWindows)->Unit(unit)->UseRealTime();
    benchmark::RegisterBenchmark("main screen", mainScreen)->Unit(unit)->UseRealTime();
    benchmark::RegisterBenchmark("connect", connect)->Unit(unit)->UseRealTime();
    benchmark::RegisterBenchmark("register three hot keys", registerThreeKeys)->Unit(unit)->UseRealTime();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
