// Text needs an application; the offscreen plugin needs no display. One thread for the reference too.
#include "CorpusTable.h"
#include "JoinTable.h"

#include "base/Memory.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    marrowfin::giveLargeMemoryBack(); // as the program does
    cv::setNumThreads(1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    marrowfin::bench::printJoinTable();
    marrowfin::bench::printCorpusTable({400, 300}, 1);
    marrowfin::bench::printCorpusTable({1200, 800}, 1);
    marrowfin::bench::printCorpusTable({2880, 1800}, 2);
}
