// The blurs against OpenCV's GaussianBlur on the same 8-bit pixels, and against the exact Gaussian.
#include "annotation/Pictures.h"
#include "annotation/Ratio.h"

#include "annotation/ImageCompositor.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <opencv2/imgproc.hpp>

using namespace marrowfin;
using namespace annotation;
using namespace marrowfin::bench;

namespace {

cv::Mat asMat(const QImage& pixels) {
    return {pixels.height(), pixels.width(), CV_8UC4, const_cast<uchar*>(pixels.constBits()),
            static_cast<size_t>(pixels.bytesPerLine())};
}

// In double precision, far enough out, edges going on forever.
cv::Mat exactBlur(const QImage& pixels, double sigma) {
    cv::Mat wide;
    asMat(pixels).convertTo(wide, CV_64FC4);
    const int reach = static_cast<int>(std::ceil(5 * sigma));
    cv::Mat result;
    cv::GaussianBlur(wide, result, cv::Size(2 * reach + 1, 2 * reach + 1), sigma, sigma,
                     cv::BORDER_REPLICATE);
    return result;
}

double largestError(const QImage& ours, const cv::Mat& exact) {
    cv::Mat mine;
    asMat(ours).convertTo(mine, CV_64FC4);
    return cv::norm(mine, exact, cv::NORM_INF);
}

void report(benchmark::State& state, const Times& times, double error) {
    state.SetIterationTime(times.ours);
    state.counters["ms"] = times.ours * 1e3;
    state.counters["opencv_ms"] = times.reference * 1e3;
    state.counters["times_faster"] = times.ratio();
    state.counters["largest_error"] = error;
}

// A region of 800x600 pixels within a screen: the reference gets the region with the same padding.
void regionBlur(benchmark::State& state) {
    const double sigma = static_cast<double>(state.range(0));
    const QImage screen = screenful(1920, 1080);
    const QRectF region(500, 200, 800, 600);
    const QTransform toPixels = QTransform::fromScale(sigma / 12, sigma / 12);
    const QRectF box = toPixels.inverted().mapRect(region);
    const int pad = static_cast<int>(3 * sigma);
    const QRect padded = region.toRect().adjusted(-pad, -pad, pad, pad) & screen.rect();
    const QImage patch = screen.copy(padded);
    QImage ours;
    cv::Mat theirs;
    Times times;
    for (auto _ : state) {
        ours = screen.copy();
        times.take([&] { ImageCompositor::applyBlur(box, ours, toPixels); },
                   [&] {
                       cv::GaussianBlur(asMat(patch), theirs, {0, 0}, sigma, sigma, cv::BORDER_REPLICATE);
                   });
        state.SetIterationTime(times.ours);
    }
    const cv::Mat exact = exactBlur(patch, sigma);
    const QRect inPatch = region.toRect().translated(-padded.topLeft());
    const cv::Rect part(inPatch.x(), inPatch.y(), inPatch.width(), inPatch.height());
    report(state, times, largestError(ours.copy(region.toRect()), exact(part)));
}
BENCHMARK(regionBlur)
    ->Name("applyBlur_800x600/sigma")
    ->Arg(12)
    ->Arg(24)
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);

void wholeBlur(benchmark::State& state) {
    const double sigma = static_cast<double>(state.range(0));
    const QImage screen = screenful(3840, 2160);
    QImage ours;
    cv::Mat theirs;
    Times times;
    for (auto _ : state) {
        times.take([&] { ours = ImageCompositor::blurredImage(screen, sigma); },
                   [&] {
                       cv::GaussianBlur(asMat(screen), theirs, {0, 0}, sigma, sigma, cv::BORDER_REPLICATE);
                   });
        state.SetIterationTime(times.ours);
    }
    report(state, times, largestError(ours, exactBlur(screen, sigma)));
}
BENCHMARK(wholeBlur)
    ->Name("blurredImage_4K/sigma")
    ->Arg(12)
    ->Arg(24)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

} // namespace
