// Fonts need an application; the offscreen plugin needs no display. One thread for the reference too.
#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
