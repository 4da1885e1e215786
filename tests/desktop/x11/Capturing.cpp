#include "x11/Capturing.h"

namespace marrowfin::test {

using namespace platform;

namespace {
std::shared_ptr<x11::LayoutBoard> wholeRoot(const QByteArray& displayName) {
    auto board = std::make_shared<x11::LayoutBoard>();
    if (const auto connection = x11::Connection::open(displayName)) {
        const QRect root(0, 0, (*connection)->screen().width_in_pixels,
                         (*connection)->screen().height_in_pixels);
        board->publish(x11::DisplayLayout({{1, QStringLiteral("whole"), root, root.size(), root}}));
    }
    return board;
}
} // namespace

Eye::Eye(const QByteArray& displayName) : Eye(displayName, wholeRoot(displayName)) {}

Eye::Eye(const QByteArray& displayName, std::shared_ptr<x11::LayoutBoard> board)
    : board(board),
      source(std::make_unique<x11::X11ScreenSource>(std::make_shared<x11::GrabLink>(displayName, board))) {}

Result<ShareableContent> Eye::content() {
    return waitFor(source->content());
}

std::optional<Window> Eye::find(std::uint32_t id) {
    const auto all = content();
    if (!all)
        return std::nullopt;
    for (const Window& window : all->windows) {
        if (window.windowID == id)
            return window;
    }
    return std::nullopt;
}

Result<Frame> Eye::frame(const ContentFilter& filter, const StreamConfiguration& configuration) {
    auto [settler, outcome] = makeOutcome<Frame>();
    const auto stream = source->makeStream(filter, configuration);
    const auto queue = std::make_shared<SerialQueue>(QStringLiteral("test.samples"));
    std::weak_ptr<ScreenStream> weak = stream;
    EXPECT_TRUE(stream->addOutput(OutputType::Screen, queue,
                                  [settler = settler, weak](const Frame& frame, OutputType) {
                                      if (const auto alive = weak.lock())
                                          alive->stopCapture();
                                      settler.settle(frame);
                                  }));
    stream->startCapture().then([settler = settler](const Result<void>& started) {
        if (!started)
            settler.settle(tl::unexpected(started.error()));
    });
    return waitFor(outcome);
}

Result<QImage> Eye::region(const QRect& rect, bool cursor) {
    const x11::NativeDisplay display = board->current()->displays().front();
    StreamConfiguration configuration;
    const double scale = display.scale();
    configuration.sourceRect =
        QRectF(QPointF(rect.topLeft() - display.native.topLeft()) / scale, QSizeF(rect.size()) / scale);
    configuration.width = rect.width();
    configuration.height = rect.height();
    configuration.showsCursor = cursor;
    const auto got = frame(DisplayFilter{display.id}, configuration);
    if (!got)
        return tl::unexpected(got.error());
    return got->pixels;
}

Result<QImage> Eye::window(std::uint32_t id) {
    StreamConfiguration configuration;
    configuration.captureResolution = CaptureResolution::Best;
    configuration.showsCursor = false;
    const auto got = frame(WindowFilter{id}, configuration);
    if (!got)
        return tl::unexpected(got.error());
    return got->pixels;
}

StreamConfiguration part(const QRect& rect, bool cursor) {
    StreamConfiguration configuration;
    configuration.sourceRect = QRectF(rect);
    configuration.width = rect.width();
    configuration.height = rect.height();
    configuration.showsCursor = cursor;
    return configuration;
}

Recorder::Recorder(ScreenSource& source, const ContentFilter& filter,
                   const StreamConfiguration& configuration)
    : stream(source.makeStream(filter, configuration)) {
    const auto queue = std::make_shared<SerialQueue>(QStringLiteral("test.samples"));
    EXPECT_TRUE(
        stream->addOutput(OutputType::Screen, queue, [this](const Frame& frame, OutputType) { add(frame); }));
    stream->setEndedHandler([this](const std::optional<Error>& error) { end(error); });
    stream->startCapture().then(
        [](const Result<void>& started) { EXPECT_TRUE(started) << started.error().message.toStdString(); });
}

Recorder::~Recorder() {
    stop();
}

void Recorder::stop() {
    EXPECT_TRUE(waitFor(stream->stopCapture()));
}

void Recorder::end(const std::optional<Error>& error) {
    const std::lock_guard hold(lock);
    endings.push_back(error);
    arrived.notify_all();
}

std::optional<std::optional<Error>> Recorder::ended() {
    std::unique_lock hold(lock);
    if (!arrived.wait_for(hold, std::chrono::seconds(20), [this] { return !endings.empty(); }))
        return std::nullopt;
    return endings.front();
}

std::size_t Recorder::endingCount() {
    const std::lock_guard hold(lock);
    return endings.size();
}

std::optional<Frame> Recorder::nextShowing(const QImage& pixels) {
    for (;;) {
        const auto frame = next(FrameStatus::Complete);
        if (!frame || frame->pixels == pixels)
            return frame;
    }
}

void Recorder::add(const Frame& frame) {
    const std::lock_guard hold(lock);
    frames.push_back(frame);
    arrived.notify_all();
}

std::optional<Frame> Recorder::next(FrameStatus status) {
    std::unique_lock hold(lock);
    for (;;) {
        while (read < frames.size()) {
            const Frame& frame = frames[read++];
            if (frame.status == status)
                return frame;
        }
        if (arrived.wait_for(hold, std::chrono::seconds(20)) == std::cv_status::timeout)
            return std::nullopt;
    }
}

std::size_t Recorder::count() {
    const std::lock_guard hold(lock);
    return frames.size();
}

int differences(const QImage& a, const QImage& b) {
    if (a.size() != b.size())
        return a.width() * a.height() + b.width() * b.height();
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    }
    return count;
}

} // namespace marrowfin::test
