#include "scrolling/StitchingManager.h"

#include "base/Log.h"

#include <cmath>

namespace marrowfin::scrolling {

namespace {

bool hasBitmap(const imaging::Image& image) {
    return !image.pixels().isNull() && std::isfinite(image.size().height()) && image.size().height() > 0;
}

double densityOf(const imaging::Image& image) {
    return image.pixels().height() / image.size().height();
}

int wholeRows(double points, double density) {
    return static_cast<int>(std::lround(points * density));
}

} // namespace

StitchingManager::StitchingManager(FixedRows fixedRows, Registration registration)
    : fixedRows(fixedRows), registration(std::move(registration)) {}

void StitchingManager::begin(const imaging::Image& frame) {
    queue.sync([&] {
        runningImage.reset();
        previousImage.reset();
        latest.reset();
        if (frame.isNull())
            return;
        runningImage.emplace(RunningImage{Composite(frame.pixels()), frame.size(), densityOf(frame), frame});
        previousImage = frame;
    });
}

bool StitchingManager::addImage(const imaging::Image& frame) {
    bool joined = false;
    queue.sync([&] { joined = join(frame); });
    return joined;
}

std::optional<imaging::Image> StitchingManager::finalImage() {
    std::optional<imaging::Image> image;
    queue.sync([&] { image = putTogether(); });
    return image;
}

std::optional<double> StitchingManager::latestOffset() {
    std::optional<double> offset;
    queue.sync([&] { offset = latest; });
    return offset;
}

std::optional<StitchingManager::Offset>
StitchingManager::registrationOffset(const imaging::Image& previous, const imaging::Image& frame) const {
    if (!hasBitmap(previous) || !hasBitmap(frame))
        return std::nullopt;
    const Result<std::optional<Movement>> measured = registration(previous.pixels(), frame.pixels());
    if (!measured) {
        logLine(QStringLiteral("[Marrowfin] Vision registration failed: ") + measured.error().message);
        return std::nullopt;
    }
    if (!*measured)
        return std::nullopt;
    return Offset{(*measured)->offset / densityOf(previous), **measured};
}

bool StitchingManager::join(const imaging::Image& frame) {
    if (!previousImage || !runningImage)
        return false;
    const std::optional<Offset> offset = registrationOffset(*previousImage, frame);
    if (!offset)
        return false;
    // The direction plays no part: what was scrolled back comes below all the same.
    const double distance = std::abs(offset->points);
    if (!(distance >= minOffsetThreshold))
        return false;
    RunningImage& running = *runningImage;
    const double height = running.size.height() + distance;
    const int frameRows = wholeRows(frame.size().height(), running.density);
    const double stretch = densityOf(frame) / running.density;
    const int kept = fixedRows == FixedRows::Once ? wholeRows(offset->movement.stillTop, 1 / stretch) : 0;
    if (!running.pixels.extend(wholeRows(height, running.density), frame.pixels(), frameRows, kept))
        return false;
    running.size.setHeight(height);
    running.whole.reset();
    previousImage = frame;
    latest = offset->points;
    return true;
}

std::optional<imaging::Image> StitchingManager::putTogether() {
    if (!runningImage)
        return std::nullopt;
    RunningImage& running = *runningImage;
    if (!running.whole) {
        const QImage pixels = running.pixels.whole();
        if (pixels.isNull()) {
            logLine(QStringLiteral("[Marrowfin] There isn't enough memory for a scrolling capture of %1 rows")
                        .arg(running.pixels.rows()));
            return std::nullopt;
        }
        running.whole = imaging::Image::withSize(pixels, running.size);
    }
    return running.whole;
}

} // namespace marrowfin::scrolling
