// Capturing the way the program does it, and waiting for the outcome.
#pragma once

#include "platform/x11/capture/X11ScreenSource.h"

#include <QEventLoop>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>

namespace marrowfin::test {

// The source on a display, with one display as large as its root.
struct Eye {
    explicit Eye(const QByteArray& displayName);
    // With the displays of somebody else's board.
    Eye(const QByteArray& displayName, std::shared_ptr<x11::LayoutBoard> board);

    std::shared_ptr<x11::LayoutBoard> board;
    std::unique_ptr<x11::X11ScreenSource> source;

    Result<platform::ShareableContent> content();
    std::optional<platform::Window> find(std::uint32_t id);
    // One frame, then stop: what a still capture does.
    Result<platform::Frame> frame(const platform::ContentFilter& filter,
                                  const platform::StreamConfiguration& configuration);
    Result<QImage> region(const QRect& rect, bool cursor = false);
    Result<QImage> window(std::uint32_t id);
};

// A running stream's frames as they come. Stops it at the end, and waits until it has.
class Recorder {
public:
    Recorder(platform::ScreenSource& source, const platform::ContentFilter& filter,
             const platform::StreamConfiguration& configuration);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    void stop();
    // Waits for the next frame of that status, forgetting those before it; nothing after twenty seconds.
    std::optional<platform::Frame> next(platform::FrameStatus status);
    // Waits for a complete frame with these pixels.
    std::optional<platform::Frame> nextShowing(const QImage& pixels);
    std::size_t count();
    // Waits until the stream told that it ended by itself, and says what it told; nothing after twenty
    // seconds.
    std::optional<std::optional<Error>> ended();
    std::size_t endingCount();

private:
    void add(const platform::Frame& frame);
    void end(const std::optional<Error>& error);

    std::shared_ptr<platform::ScreenStream> stream;
    std::mutex lock;
    std::condition_variable arrived;
    std::vector<platform::Frame> frames;
    std::vector<std::optional<Error>> endings;
    std::size_t read = 0;
};

template <class T>
Result<T> waitFor(const Outcome<T>& outcome) {
    std::optional<Result<T>> found;
    QEventLoop loop;
    outcome.then([&](Result<T> result) {
        found = std::move(result);
        loop.quit();
    });
    loop.exec();
    return *found;
}

platform::StreamConfiguration part(const QRect& rect, bool cursor = false);

// How many pixels differ; all of them when the sizes do.
int differences(const QImage& a, const QImage& b);

} // namespace marrowfin::test
