// How long a 4K screen takes to become a PNG file, and how large that is, beside the toolkit's own encoder at
// its default. After the rows of times one line per screen gives the ratios of the medians and of the bytes.
#include "SampleScreens.h"
#include "base/PngWriter.h"

#include <QBuffer>
#include <QGuiApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

using namespace marrowfin;

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

struct Figures {
    std::vector<double> seconds;
    qsizetype bytes = 0;

    double median() {
        std::sort(seconds.begin(), seconds.end());
        return seconds[seconds.size() / 2];
    }
};

struct Pair {
    Figures ours;
    Figures theirs;
};

using Encoder = QByteArray (*)(const QImage&);

void measure(benchmark::State& state, const QImage& image, Encoder encode, Figures& figures) {
    for ([[maybe_unused]] auto each : state) {
        const auto start = std::chrono::steady_clock::now();
        figures.bytes = encode(image).size();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count());
        figures.seconds.push_back(took.count());
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
    std::printf("\n%-30s %10s %10s %8s %10s %10s %8s  %s\n", "4K screen (medians of 11)", "toolkit ms",
                "ours ms", "faster", "toolkit KB", "ours KB", "bytes", "pixels");
    for (auto& [name, pair] : figures) {
        if (pair.ours.seconds.empty() || pair.theirs.seconds.empty())
            continue;
        std::printf("%-30s %10.1f %10.1f %7.2fx %10.0f %10.0f %7.2fx  %s\n", name.c_str(),
                    pair.theirs.median() * 1000, pair.ours.median() * 1000,
                    pair.theirs.median() / pair.ours.median(), static_cast<double>(pair.theirs.bytes) / 1000,
                    static_cast<double>(pair.ours.bytes) / 1000,
                    static_cast<double>(pair.ours.bytes) / static_cast<double>(pair.theirs.bytes),
                    isExact(screens.at(name)) ? "identical" : "DIFFERENT");
    }
    return 0;
}
