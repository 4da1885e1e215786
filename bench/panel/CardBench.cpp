// What a card costs: the main thread's time for presenting a 6K capture, a frame of each movement, wake-ups
// at rest, and memory. Prints medians; density 2 with QT_SCALE_FACTOR=2.
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "panel/CapturePanelController.h"
#include "platform/fake/FakeDesktop.h"
#include "settings/Defaults.h"
#include "settings/SettingsStore.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <malloc.h>

using namespace marrowfin;

namespace {
// Of this thread's own work: on a busy machine the wall clock shows the others'.
double threadMilliseconds() {
    timespec spent{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
    return static_cast<double>(spent.tv_sec) * 1e3 + static_cast<double>(spent.tv_nsec) / 1e6;
}
double milliseconds(const std::function<void()>& work) {
    const double start = threadMilliseconds();
    work();
    return threadMilliseconds() - start;
}

struct Spread {
    double median;
    double worst;
};
Spread spread(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    return {samples[samples.size() / 2], samples.back()};
}

// Like a screen: windows with text-like rows over a photo-like gradient.
QImage screenful(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, (x * y) % 251));
    QPainter painter(&pixels);
    for (int y = 100; y < height - 100; y += 24)
        painter.fillRect(width / 8, y, width / 2 - (y * 37) % 700, 12, QColor(40, 40, 48));
    return pixels;
}

long privateKilobytes() {
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    long sum = 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("Private_"))
            sum += line.simplified().split(' ').value(1).toLong();
    return sum;
}

CapturePanelController& controller() {
    return CapturePanelController::shared();
}
CapturePanelContentView& present(const Image& image) {
    controller().present(image, [](const Image&) {});
    return controller().panels().back()->content();
}
void clear() {
    controller().dismissAll(Animated::No);
    QCoreApplication::processEvents();
}
// Lets the clock go on and paints what that asks for.
double frame() {
    return milliseconds([] {
        chrome::AnimationClock::shared().advance(1 / 60.0);
        QCoreApplication::processEvents();
    });
}

void measurePresenting(const QImage& pixels) {
    std::vector<double> blocked;
    std::vector<double> painted;
    for (int run = 0; run < 11; ++run) {
        const Image image = Image::captured(pixels);
        image.startEncoding(); // as the capture has done by then
        CapturePanelContentView* view = nullptr;
        blocked.push_back(milliseconds([&] { view = &present(image); }));
        painted.push_back(milliseconds([] { QCoreApplication::processEvents(); }));
        fake::waitUntil([&] { return view->dragExport().isReady(); });
        clear();
    }
    std::printf("present, 6016 x 3384:        %6.2f ms median, %6.2f worst; first painting %.2f ms\n",
                spread(blocked).median, spread(blocked).worst, spread(painted).median);
}

void measureFrames(const Image& image) {
    std::vector<double> arrival;
    std::vector<double> entering;
    std::vector<double> leaving;
    for (int run = 0; run < 11; ++run) {
        CapturePanelContentView& view = present(image);
        QCoreApplication::processEvents();
        for (int step = 0; step < 36; ++step)
            arrival.push_back(frame());
        view.setHovered(true, HoverSource::Program);
        for (int step = 0; step < 30; ++step)
            entering.push_back(frame());
        view.setHovered(false, HoverSource::Program);
        for (int step = 0; step < 16; ++step)
            leaving.push_back(frame());
        clear();
    }
    const auto print = [](const char* name, const std::vector<double>& samples) {
        std::printf("frame of the %-10s     %6.2f ms median, %6.2f worst of %zu\n", name,
                    spread(samples).median, spread(samples).worst, samples.size());
    };
    print("arrival", arrival);
    print("entering", entering);
    print("leaving", leaving);
}

void measureRest(const Image& image) {
    class Counter : public QObject {
    public:
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            paints += event->type() == QEvent::Paint;
            return false;
        }
    };
    for (const PanelAutoClose setting : {PanelAutoClose::oneMinute, PanelAutoClose::never}) {
        SettingsStore::shared().setPanelAutoClose(setting);
        CapturePanelContentView& view = present(image);
        for (int step = 0; step < 180; ++step)
            frame();
        Counter counter;
        view.installEventFilter(&counter);
        double spent = 0;
        for (int step = 0; step < 1800; ++step)
            spent += frame();
        std::printf("30 s at rest, %-9s      %3d paintings, %.3f ms each; clock %s\n",
                    setting == PanelAutoClose::never ? "never:" : "1 minute:", counter.paints,
                    counter.paints ? spent / counter.paints : 0.0,
                    chrome::AnimationClock::shared().isRunning() ? "waits for the line" : "stopped");
        view.removeEventFilter(&counter);
        clear();
    }
}

void measureMemory(const Image& image) {
    present(image);
    for (int step = 0; step < 60; ++step)
        frame();
    clear();
    const long before = privateKilobytes();
    for (int count = 0; count < 4; ++count)
        present(image);
    for (int step = 0; step < 60; ++step)
        frame();
    const long up = privateKilobytes();
    clear();
    std::printf("memory of a card:            %6ld KB\n", (up - before) / 4);
    for (const int more : {100, 400}) {
        for (int count = 0; count < more; ++count) {
            CapturePanelContentView& view = present(image);
            frame();
            fake::waitUntil([&] { return view.dragExport().isReady(); });
        }
        clear();
        std::printf("left after %3d more:         %6ld KB\n", more, privateKilobytes() - before);
    }
}
} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Defaults::useFile(QString());
    {
        fake::FakeDesktop desktop;
        desktop.addScreen(1, {0, 0, 1920, 1080});
        chrome::AnimationClock::shared().hold();
        const QImage pixels = screenful(6016, 3384);
        std::printf("density %.1f\n", application.devicePixelRatio());
        measurePresenting(pixels);
        const Image image = Image::captured(pixels);
        fake::waitUntil([&] {
            image.startEncoding();
            return image.isEncoded();
        });
        measureFrames(image);
        measureRest(image);
        measureMemory(image);
        SharedObjects::destroyAll();
    }
    return 0;
}
