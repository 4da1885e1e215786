// Grows one tall image out of overlapping frames of one area: measures how far the content moved since the
// last frame that it took, and extends the image by as much. A frame that hasn't moved far enough is refused.
// One instance serves one session. Lengths are points. Any thread; every operation waits for the stitching
// queue.
#pragma once

#include "base/SerialQueue.h"
#include "imaging/Image.h"
#include "scrolling/Composite.h"
#include "scrolling/ImageRegistration.h"

#include <functional>
#include <optional>

namespace marrowfin::scrolling {

class StitchingManager {
public:
    // Rows at the top that stand still while the page moves: part of every frame, or of the first one alone.
    // (Those at the bottom are always the last frame's: what comes after a frame lies over them.)
    enum class FixedRows { InEveryFrame, Once };
    using Registration =
        std::function<Result<std::optional<Movement>>(const QImage& older, const QImage& newer)>;

    explicit StitchingManager(FixedRows fixedRows = FixedRows::InEveryFrame,
                              Registration registration = ImageRegistration::movement);

    // Replaces whatever was there.
    void begin(const imaging::Image& frame);
    // True: joined. False: refused, and nothing changed.
    bool addImage(const imaging::Image& frame);
    // None before begin(). Answers the same image until a further frame is joined.
    std::optional<imaging::Image> finalImage();
    // By how much the content had moved in the frame that was joined last, above 0 for up; none before the
    // first join.
    std::optional<double> latestOffset();

private:
    // The image so far: in pieces, and put together when it was asked for.
    struct RunningImage {
        Composite pixels;
        QSizeF size;
        double density; // pixel rows in a point, the first frame's for good
        std::optional<imaging::Image> whole;
    };
    struct Offset {
        double points = 0;
        Movement movement;
    };

    std::optional<Offset> registrationOffset(const imaging::Image& previous,
                                             const imaging::Image& frame) const;
    bool join(const imaging::Image& frame);
    std::optional<imaging::Image> putTogether();

    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.stitching"),
                      SerialQueue::QualityOfService::UserInitiated};
    std::optional<RunningImage> runningImage;
    std::optional<imaging::Image> previousImage;
    static constexpr double minOffsetThreshold = 5.0;

    std::optional<double> latest;
    const FixedRows fixedRows;
    const Registration registration;
};

} // namespace marrowfin::scrolling
