// The reference: OpenCV's phaseCorrelate with a Hanning window on the brightness of two frames.
#pragma once

#include <QImage>
#include <optional>

namespace marrowfin::bench {

// As our own measure has it: above 0 the content went up. None below the response at which it is noise.
std::optional<int> phaseCorrelation(const QImage& older, const QImage& newer);

} // namespace marrowfin::bench
