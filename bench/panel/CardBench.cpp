// What a card costs: how long presenting a 6K capture blocks the main thread, a frame of each movement,
// wake-ups at rest, and memory. Prints medians, by the clock and of the thread's own work (on a busy machine
// the clock shows the others' too), each beside what it may take, and how often this thread waited for
// something. At density 1 and then at 2; at one alone with QT_SCALE_FACTOR.
#include "base/Shared.h"
#include "base/SystemFonts.h"
#include "chrome/AnimationClock.h"
#include "panel/CapturePanelController.h"
#include "platform/fake/FakeDesktop.h"
#include "settings/Defaults.h"
#include "settings/SettingsStore.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QLoggingCategory>
#include <QPainter>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace marrowfin;
using namespace panel;
using namespace imaging;
using namespace settings;

namespace {
double millisecondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}
struct Time {
    double byTheClock;
    double own;
    long waits; // how often the thread gave its core away
};
Time timeNow() {
    rusage used{};
    getrusage(RUSAGE_THREAD, &used);
    return {millisecondsOf(CLOCK_MONOTONIC), millisecondsOf(CLOCK_THREAD_CPUTIME_ID), used.ru_nvcsw};
}
Time timeOf(const std::function<void()>& work) {
    const Time start = timeNow();
    work();
    const Time end = timeNow();
    return {end.byTheClock - start.byTheClock, end.own - start.own, end.waits - start.waits};
}

struct Spread {
    double median;
    double worst;
};
Spread spread(const std::vector<Time>& samples, double Time::*which) {
    std::vector<double> values;
    for (const Time& sample : samples)
        values.push_back(sample.*which);
    std::sort(values.begin(), values.end());
    return {values[values.size() / 2], values.back()};
}
void printTimes(const char* what, const std::vector<Time>& samples, double limit) {
    const Spread clock = spread(samples, &Time::byTheClock);
    const Spread own = spread(samples, &Time::own);
    double waits = 0;
    for (const Time& sample : samples)
        waits += static_cast<double>(sample.waits) / static_cast<double>(samples.size());
    std::printf("%-22s by the clock %6.2f ms (worst %6.2f), own %6.2f (%6.2f), waits %4.1f, of %3zu; "
                "at most %g: %s\n",
                what, clock.median, clock.worst, own.median, own.worst, waits, samples.size(), limit,
                clock.median <= limit ? "yes" : "NO");
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
void encode(const Image& image) {
    image.startEncoding();
    fake::waitUntil([&] { return image.isEncoded(); });
}
// Lets the clock go on and paints what that asks for.
Time frame() {
    return timeOf([] {
        chrome::AnimationClock::shared().advance(1 / 60.0);
        QCoreApplication::processEvents();
    });
}

void measurePresenting(const QImage& pixels) {
    std::vector<Time> blocked;
    std::vector<Time> painted;
    for (int run = 0; run < 11; ++run) {
        const Image image = Image::captured(pixels);
        encode(image); // a capture is, before its card comes
        CapturePanelContentView* view = nullptr;
        blocked.push_back(timeOf([&] { view = &present(image); }));
        painted.push_back(timeOf([] { QCoreApplication::processEvents(); }));
        fake::waitUntil([&] { return view->dragExport().isReady(); });
        clear();
    }
    printTimes("present, 6016 x 3384", blocked, 16);
    printTimes("its first painting", painted, 4);
}

void measureFrames(const Image& image) {
    std::vector<Time> arrival;
    std::vector<Time> entering;
    std::vector<Time> leaving;
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
    printTimes("frame of the arrival", arrival, 4);
    printTimes("frame as it is hovered", entering, 4);
    printTimes("frame as it is left", leaving, 4);
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
            spent += frame().own;
        std::printf("30 s at rest, %-9s      %3d paintings, %.3f ms each; clock %s\n",
                    setting == PanelAutoClose::never ? "never:" : "1 minute:", counter.paints,
                    counter.paints ? spent / counter.paints : 0.0,
                    chrome::AnimationClock::shared().isRunning() ? "waits for the line" : "stopped");
        view.removeEventFilter(&counter);
        clear();
    }
}

// On the real clock: how often the process wakes for a card that stands still.
void measureWakeUps(const Image& image) {
    constexpr int seconds = 10;
    for (const PanelAutoClose setting : {PanelAutoClose::oneMinute, PanelAutoClose::never}) {
        SettingsStore::shared().setPanelAutoClose(setting);
        CapturePanelContentView& view = present(image);
        fake::waitUntil([&] { return view.dragExport().isReady(); });
        QEventLoop loop;
        QTimer::singleShot(3000, &loop, &QEventLoop::quit); // it has arrived
        loop.exec();
        int awake = 0;
        QObject counter;
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &counter,
                         [&awake] { ++awake; });
        const double before = millisecondsOf(CLOCK_PROCESS_CPUTIME_ID);
        QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit); // itself one
        loop.exec();
        std::printf("%d s at rest, %-9s      %3d wake-ups, %.2f ms of the processor in all\n", seconds,
                    setting == PanelAutoClose::never ? "never:" : "1 minute:", awake - 1,
                    millisecondsOf(CLOCK_PROCESS_CPUTIME_ID) - before);
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
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false")); // of what this plugin can't do
    Defaults::useFile(QString());
    QApplication::setFont(systemFont(13)); // the program has read its fonts before the first card, too
    {
        fake::FakeDesktop desktop;
        desktop.addScreen(1, {0, 0, 1920, 1080});
        const QImage pixels = screenful(6016, 3384);
        std::printf("density %.1f\n", application.devicePixelRatio());
        const Image image = Image::captured(pixels);
        encode(image);
        measureWakeUps(image);
        chrome::AnimationClock::shared().hold();
        measurePresenting(pixels);
        measureFrames(image);
        measureRest(image);
        measureMemory(image);
        SharedObjects::destroyAll();
    }
    if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) { // which is a process's own
        std::fflush(stdout);
        qputenv("QT_SCALE_FACTOR", "2");
        execv("/proc/self/exe", argv);
    }
    return 0;
}
