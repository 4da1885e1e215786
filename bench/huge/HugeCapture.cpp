// What a stitched capture of 2880x60,000 costs in the editor and as a pin: the longest that the main thread
// is away from its events, the times to the first and the last paint, and the memory at its peak above what
// the capture itself takes (691 MB).
#include "base/Shared.h"
#include "editor/EditorWindowController.h"
#include "pin/PinManager.h"
#include "platform/fake/FakeDesktop.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <utility>

namespace marrowfin {
namespace {

constexpr int secondsWatched = 6;

imaging::Image stitchedPage(QImage::Format format, int height) {
    QImage pixels(2880, height, format);
    for (int y = 0; y < pixels.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(pixels.scanLine(y));
        for (int x = 0; x < pixels.width(); ++x)
            line[x] = (x / 9 * 7 + y / 13 * 3) % 11 < 3 ? qRgb(40, 44, 52) : qRgb(240, 242, 245 - y % 100);
    }
    return imaging::Image::captured(pixels);
}

// A line of /proc/self/status, in MB.
double memory(const QByteArray& name) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(name))
            return line.mid(name.size()).simplified().split(' ').first().toDouble() / 1024;
    return 0;
}

void forgetPeak() {
    QFile control(QStringLiteral("/proc/self/clear_refs"));
    if (control.open(QIODevice::WriteOnly))
        control.write("5");
}

class Paints : public QObject {
public:
    Paints() { qApp->installEventFilter(this); }
    bool seen = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        seen = seen || event->type() == QEvent::Paint;
        return false;
    }
};

constexpr int pageHeight = 60'000;
constexpr int screenHeight = 1800; // what the same costs with an ordinary capture

void watch(benchmark::State& state, QImage::Format format, int height, void (*show)(const imaging::Image&),
           void (*afterwards)()) {
    for (auto _ : state) {
        fake::FakeDesktop desktop;
        desktop.addScreen(1, {0, 0, 1920, 1080});
        const imaging::Image image = stitchedPage(format, height);
        const double before = memory("VmRSS:");
        forgetPeak();
        double longest = 0;
        QElapsedTimer turn;
        QElapsedTimer whole;
        Paints paints;
        double firstPaint = 0;
        double lastPaint = 0;
        turn.start();
        whole.start();
        show(image);
        while (whole.elapsed() < secondsWatched * 1000) {
            QCoreApplication::processEvents();
            longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) / 1e6);
            turn.restart();
            if (!std::exchange(paints.seen, false))
                continue;
            lastPaint = static_cast<double>(whole.nsecsElapsed()) / 1e6;
            firstPaint = firstPaint > 0 ? firstPaint : lastPaint;
        }
        state.counters["stall_ms"] = longest;
        state.counters["first_paint_ms"] = firstPaint;
        state.counters["last_paint_ms"] = lastPaint;
        state.counters["peak_MB"] = memory("VmHWM:") - before;
        state.counters["kept_MB"] = memory("VmRSS:") - before;
        afterwards();
        QCoreApplication::processEvents();
        SharedObjects::destroyAll();
    }
}

void edit(const imaging::Image& image) {
    editor::EditorWindowController::make(image)->showWindow();
}
void closeEditors() {
    editor::EditorWindowController::openEditors().front()->window()->close();
}
void pinUp(const imaging::Image& image) {
    pin::PinManager::shared().pin(image);
}
void nothing() {}

void editor_opaque(benchmark::State& state) {
    watch(state, QImage::Format_RGB32, pageHeight, edit, closeEditors);
}
void editor_translucent(benchmark::State& state) {
    watch(state, QImage::Format_ARGB32, pageHeight, edit, closeEditors);
}
void editor_screen(benchmark::State& state) {
    watch(state, QImage::Format_RGB32, screenHeight, edit, closeEditors);
}
void pin_opaque(benchmark::State& state) {
    watch(state, QImage::Format_RGB32, pageHeight, pinUp, nothing);
}
void pin_translucent(benchmark::State& state) {
    watch(state, QImage::Format_ARGB32, pageHeight, pinUp, nothing);
}
void pin_screen(benchmark::State& state) {
    watch(state, QImage::Format_RGB32, screenHeight, pinUp, nothing);
}

BENCHMARK(editor_opaque)->Iterations(1);
BENCHMARK(editor_translucent)->Iterations(1);
BENCHMARK(editor_screen)->Iterations(1);
BENCHMARK(pin_opaque)->Iterations(1);
BENCHMARK(pin_translucent)->Iterations(1);
BENCHMARK(pin_screen)->Iterations(1);

} // namespace
} // namespace marrowfin

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
