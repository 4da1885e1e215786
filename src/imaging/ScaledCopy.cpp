#include "imaging/ScaledCopy.h"

#include "base/MainThread.h"
#include "base/SerialQueue.h"
#include "base/Shared.h"
#include "imaging/Resampling.h"

#include <atomic>
#include <utility>

namespace marrowfin::imaging {

namespace {

struct ResamplingQueue {
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.resampling"),
                      SerialQueue::QualityOfService::UserInitiated};
};

QImage madeElsewhere(const QImage& pixels, const QSize& size, const std::atomic<bool>& stop) {
    if (stop)
        return {};
    const bool isHalfOrLess = 2 * size.width() <= pixels.width() && 2 * size.height() <= pixels.height();
    return isHalfOrLess ? areaAveraged(pixels, size, stop) : resampled(pixels, size);
}

} // namespace

struct ScaledCopy::Job {
    explicit Job(ScaledCopy& asking) : owner(&asking) {}

    ScaledCopy* owner; // main thread; it lives as long as the job is wanted
    std::atomic<bool> unwanted = false;
};

ScaledCopy::ScaledCopy(std::function<void()> told) : arrived(std::move(told)) {}

ScaledCopy::~ScaledCopy() {
    if (job)
        job->unwanted = true;
}

const QImage& ScaledCopy::of(const Image& image, const QSize& size) {
    if (image == source && copy.size() == size)
        return copy;
    if (const std::shared_ptr<Job> before = std::exchange(job, nullptr))
        before->unwanted = true;
    if (image != source)
        lastFine = {};
    source = image;
    const QImage& pixels = image.pixels();
    if (pixels.isNull()) {
        copy = {};
    } else if (!isLongToResample(pixels) || pixels.size() == size) {
        copy = resampled(pixels, size);
    } else {
        copy = lastFine.isNull() ? picked(pixels, size) : resampled(lastFine, size);
        startJob(size);
    }
    return copy;
}

void ScaledCopy::startJob(const QSize& size) {
    job = std::make_shared<Job>(*this);
    Shared<ResamplingQueue>::instance().queue.async([job = job, image = source, size] {
        QImage made = madeElsewhere(image.pixels(), size, job->unwanted);
        postToMain([job, made] {
            if (!job->unwanted)
                job->owner->finish(made);
        });
    });
}

void ScaledCopy::finish(const QImage& fine) {
    job = nullptr;
    if (fine.isNull())
        return; // no memory for it: what stands in stays
    copy = lastFine = fine;
    arrived();
}

} // namespace marrowfin::imaging
