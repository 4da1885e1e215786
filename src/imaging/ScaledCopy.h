// One image at the size in which a widget shows it. Of a large image the copy is made off the main thread,
// and a rough one stands in until then. A member of whoever shows it. Pixels. Main thread.
#pragma once

#include "imaging/Image.h"

#include <QImage>
#include <QSize>
#include <functional>
#include <memory>

namespace marrowfin::imaging {

class ScaledCopy {
public:
    // Told from the event loop, when the next `of` gives the copy that the last one asked for.
    explicit ScaledCopy(std::function<void()> arrived);
    ~ScaledCopy();
    ScaledCopy(const ScaledCopy&) = delete;
    ScaledCopy& operator=(const ScaledCopy&) = delete;

    // The very same picture (by its cache key) until it is another image or size, or the copy has arrived.
    // Null for a null image. 32 bits, opaque or premultiplied.
    const QImage& of(const Image& image, const QSize& size);
    // False while a rough copy stands in.
    bool isFine() const { return job == nullptr; }

private:
    struct Job;
    void startJob(const QSize& size);
    void finish(const QImage& fine);

    std::function<void()> arrived;
    Image source;
    QImage copy;
    QImage lastFine; // of the same image: where the size changes again and again, better than a rough one
    std::shared_ptr<Job> job;
};

} // namespace marrowfin::imaging
