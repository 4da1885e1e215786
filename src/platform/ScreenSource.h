// What the screen shows, as pixels: the displays and windows that can be captured, and streams of frames from
// them. Geometry is in points (ScreenRect: top left origin); frames are in native pixels. Called from any
// thread; content() settles on the main thread as every Outcome does, frames arrive on the queue given to
// addOutput.
#pragma once

#include "base/Coordinates.h"
#include "base/Outcome.h"
#include "base/SerialQueue.h"

#include <QImage>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace marrowfin::platform {

struct Display {
    std::uint32_t displayID = 0;
    ScreenRect frame;
    // The display's mode. The scale is pixelWidth / modeWidth; a mode that isn't known has a modeWidth of 0.
    int modeWidth = 0;  // points
    int pixelWidth = 0; // native pixels
};

struct Window {
    std::uint32_t windowID = 0;
    std::optional<std::int64_t> ownerPID;
    // The visible frame: decorations in, invisible shadow margins out.
    ScreenRect frame;
    QString title;
};

struct ShareableContent {
    std::vector<Display> displays; // the primary first
    std::vector<Window> windows;   // front to back; on this workspace, not hidden, no desktop and no panel
};

struct DisplayFilter {
    std::uint32_t displayID = 0;
};
// The window alone, whole, whatever covers it.
struct WindowFilter {
    std::uint32_t windowID = 0;
};
using ContentFilter = std::variant<DisplayFilter, WindowFilter>;

enum class CaptureResolution { Automatic = 0, Best = 1 };

struct StreamConfiguration {
    CaptureResolution captureResolution = CaptureResolution::Automatic;
    // Display-local, top left origin, points. Parts outside of all screens come out black. Windows have none.
    std::optional<QRectF> sourceRect;
    // Of the frame, in pixels.
    int width = 0;
    int height = 0;
    bool showsCursor = true;
};

enum class FrameStatus {
    Complete, // pixels hold a whole picture
    Idle,     // nothing changed since the last one; no pixels
    Blank,    // there is nothing to show yet; no pixels
};

struct Frame {
    bool valid = true;
    int sampleCount = 1;
    FrameStatus status = FrameStatus::Complete;
    // Null when the frame carries no picture. 32 bits, opaque or premultiplied.
    QImage pixels;
    // CLOCK_MONOTONIC at the grab.
    std::int64_t timestampNanoseconds = 0;
};

enum class OutputType { Screen = 0, Audio = 1 };

// One running grab of a display or a window. Keeps itself alive from start() until stop() has finished.
class ScreenStream {
public:
    using FrameHandler = std::function<void(const Frame&, OutputType)>;
    // No error when it worked. Called once, on a queue of the platform's.
    using CompletionHandler = std::function<void(std::optional<Error>)>;

    virtual ~ScreenStream() = default;
    virtual Result<void> addOutput(OutputType type, std::shared_ptr<SerialQueue> sampleQueue,
                                   FrameHandler handler) = 0;
    virtual void startCapture(CompletionHandler handler) = 0;
    virtual void stopCapture(CompletionHandler handler) = 0;
};

class ScreenSource {
public:
    virtual ~ScreenSource() = default;
    // Fails when capturing is not permitted here.
    virtual Outcome<ShareableContent> content() = 0;
    virtual std::shared_ptr<ScreenStream> makeStream(const ContentFilter& filter,
                                                     const StreamConfiguration& configuration) = 0;
};

} // namespace marrowfin::platform
