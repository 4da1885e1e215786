// How long a 4K screen takes to become a PNG file, and how large that is, beside the toolkit's own encoder at
// its default. After the rows of times one line per screen gives the ratios of the medians and of the bytes.
#include "SampleScreens.h"
#include "imaging/PngWriter.h"

#include <QBuffer>
#include <QGuiApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <map>
#include <string>
#include <vector>

using namespace marrowfin;
using namespace imaging;

namespace {

constexpr QSize screenSize(3840, 2160);
constexpr int trials = 11;

QByteArray toolkitPng(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

double processorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

struct Figures {
    std::vector<double> seconds;
    std::vector<double> processor;
    qsizetype bytes = 0;
};

struct Pair {
    Figures ours;
    Figures theirs;
};

using Encoder = QByteArray (*)(const QImage&);

void measure(benchmark::State& state, const QImage& image, Encoder encode, Figures& figures) {
    for ([[maybe_unused]] auto each : state) {
        const double before = processorSeconds();
        const auto start = std::chrono::steady_clock::now();
        figures.bytes = encode(image).size();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count());
        figures.seconds.push_back(took.count());
        figures.processor.push_back(processorSeconds() - before);
    }
    state.counters["KB"] = static_cast<double>(figures.bytes) / 1000;
}

bool isExact(const QImage& image) {
    QImage decoded = QImage::fromData(encodePng(image), "PNG");
    return decoded.convertToFormat(image.format()) == image;
}

void add(const std::string& name, const QImage& image, Encoder encode, Figures& figures) {
    benchmark::RegisterBenchmark(
        name.c_str(),
        [&image, encode, &figures](benchmark::State& state) { measure(state, image, encode, figures); })
        ->UseManualTime()
        ->Iterations(trials)
        ->Unit(benchmark::kMillisecond);
}

void printRatio(const char* name, double theirs, double ours) {
    if (name != nullptr)
        std::printf("%-28s", name);
    std::printf(" %6.0f %6.1f %5.1fx ", theirs, ours, theirs / ours);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    using namespace marrowfin::bench;
    QImage flat(screenSize, QImage::Format_RGB32);
    flat.fill(0xff336699U);
    const std::map<std::string, QImage> screens{
        {"1 windows", sampleScreen(screenSize, Wallpaper::Gradient, PictureWindow::None)},
        {"2 windows, one with a photo", sampleScreen(screenSize, Wallpaper::Gradient, PictureWindow::Photo)},
        {"3 windows over a photo", sampleScreen(screenSize, Wallpaper::Photo, PictureWindow::Photo)},
        {"4 photo", samplePhoto(screenSize, 1)},
        {"5 noise", sampleNoise(screenSize)},
        {"6 one colour", flat},
    };
    std::map<std::string, Pair> figures;
    for (const auto& [name, image] : screens) {
        add(name + "/toolkit", image, toolkitPng, figures[name].theirs);
        add(name + "/ours", image, encodePng, figures[name].ours);
    }
    benchmark::RunSpecifiedBenchmarks();
    std::printf("\n%-28s %21s %21s %21s\n", "4K screen, medians of 11", "ms by the clock", "ms of processor",
                "KB");
    for (const auto& [name, pair] : figures) {
        const auto& [ours, theirs] = pair;
        if (ours.seconds.empty() || theirs.seconds.empty())
            continue;
        printRatio(name.c_str(), median(theirs.seconds) * 1000, median(ours.seconds) * 1000);
        printRatio(nullptr, median(theirs.processor) * 1000, median(ours.processor) * 1000);
        const double bytes = static_cast<double>(ours.bytes) / static_cast<double>(theirs.bytes);
        std::printf(" %6.0f %6.0f %5.2fx  pixels %s\n", static_cast<double>(theirs.bytes) / 1000,
                    static_cast<double>(ours.bytes) / 1000, bytes,
                    isExact(screens.at(name)) ? "identical" : "DIFFERENT");
    }
    return 0;
}
