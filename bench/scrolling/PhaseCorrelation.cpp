#include "PhaseCorrelation.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

namespace marrowfin::bench {

namespace {

cv::Mat brightness(const QImage& frame) {
    const cv::Mat pixels(frame.height(), frame.width(), CV_8UC4, const_cast<uchar*>(frame.constBits()),
                         static_cast<size_t>(frame.bytesPerLine()));
    cv::Mat grey;
    cv::cvtColor(pixels, grey, cv::COLOR_BGRA2GRAY);
    cv::Mat wide;
    grey.convertTo(wide, CV_32F);
    return wide;
}

} // namespace

std::optional<int> PhaseCorrelation::offset(const QImage& older, const QImage& newer) {
    const cv::Mat before = brightness(older);
    const cv::Mat now = brightness(newer);
    if (window.size() != before.size())
        cv::createHanningWindow(window, before.size(), CV_32F);
    double response = 0;
    const cv::Point2d shift = cv::phaseCorrelate(before, now, window, &response);
    if (response < 0.05 || std::abs(shift.x) > 1)
        return std::nullopt;
    return static_cast<int>(std::lround(-shift.y));
}

} // namespace marrowfin::bench
