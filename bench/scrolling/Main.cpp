// Text needs an application; the offscreen plugin needs no display. One thread for the reference too.
#include "CorpusTable.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    marrowfin::bench::printCorpusTable({400, 300}, 1);
    marrowfin::bench::printCorpusTable({1200, 800}, 1);
    if (!qEnvironmentVariableIsSet("MARROWFIN_SMALL"))
        marrowfin::bench::printCorpusTable({2880, 1800}, 2);
}
