#include "imaging/Image.h"

#include "base/SerialQueue.h"
#include "base/Shared.h"
#include "imaging/PngWriter.h"

#include <condition_variable>
#include <utility>
#include <vector>

namespace marrowfin::imaging {

namespace {
const QImage noPixels;

// One worker for all encodings: they are short, and the captures come one at a time.
struct EncodingQueue {
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.encoding"),
                      SerialQueue::QualityOfService::UserInitiated};
};
} // namespace

struct Image::State {
    QImage pixels;
    QSizeF size;

    std::mutex lock;
    std::condition_variable done;
    bool started = false;
    bool finished = false;
    QByteArray png;
    std::vector<Settler<QByteArray>> waiting;

    // True for the one caller who is to encode.
    bool claim() {
        const std::lock_guard hold(lock);
        return !std::exchange(started, true);
    }
    void encode() {
        QByteArray bytes = encodePng(pixels);
        std::vector<Settler<QByteArray>> toSettle;
        {
            const std::lock_guard hold(lock);
            png = std::move(bytes);
            finished = true;
            toSettle.swap(waiting);
        }
        done.notify_all();
        for (const Settler<QByteArray>& settler : toSettle)
            settler.settle(png);
    }
};

Image Image::captured(QImage pixels) {
    const QSizeF size = pixels.size();
    return withSize(std::move(pixels), size);
}

Image Image::withSize(QImage pixels, QSizeF size) {
    if (pixels.isNull())
        return {};
    pixels.setDevicePixelRatio(1);
    auto state = std::make_shared<State>();
    state->pixels = std::move(pixels);
    state->size = size;
    return Image(std::move(state));
}

const QImage& Image::pixels() const {
    return state ? state->pixels : noPixels;
}
QSizeF Image::size() const {
    return state ? state->size : QSizeF(0, 0);
}

void Image::startEncoding() const {
    if (!state || !state->claim())
        return;
    Shared<EncodingQueue>::instance().queue.async([state = state] { state->encode(); });
}

Outcome<QByteArray> Image::encoded() const {
    if (!state)
        return settled<QByteArray>(QByteArray());
    startEncoding();
    auto [settler, outcome] = makeOutcome<QByteArray>();
    const std::lock_guard hold(state->lock);
    if (state->finished)
        settler.settle(state->png);
    else
        state->waiting.push_back(settler);
    return outcome;
}

QByteArray Image::png() const {
    if (!state)
        return {};
    // A thread that waits anyway does the work itself.
    if (state->claim())
        state->encode();
    std::unique_lock hold(state->lock);
    state->done.wait(hold, [this] { return state->finished; });
    return state->png;
}

bool Image::isEncoded() const {
    if (!state)
        return false;
    const std::lock_guard hold(state->lock);
    return state->finished;
}

std::optional<QSize> realPixelSize(const Image& image) {
    const QSize size = image.pixels().size();
    if (size.width() < 1 || size.height() < 1)
        return std::nullopt;
    return size;
}

} // namespace marrowfin::imaging
