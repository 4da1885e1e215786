// The reference: OpenCV's phaseCorrelate with a Hanning window on the brightness of two frames.
#pragma once

#include <QImage>
#include <opencv2/core.hpp>
#include <optional>

namespace marrowfin::bench {

class PhaseCorrelation {
public:
    // As our own measure has it: above 0 the content went up. None below the response at which it is noise.
    std::optional<int> offset(const QImage& older, const QImage& newer);

private:
    cv::Mat window; // one serves all frames of a size
};

} // namespace marrowfin::bench
