// What the screen shows, as pixels: the displays and windows that can be captured, and streams of frames from
// them. Geometry is in points (ScreenRect: top left origin); frames are in native pixels. Called from any
// thread; content() settles on the main thread as every Outcome does, frames arrive on the queue given to
// addOutput.
#pragma once

#include "base/Coordinates.h"
#include "base/Outcome.h"
#include "base/SerialQueue.h"

#include <QImage>
#include <QRegion>
#include <QString>
#include <chrono>
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
    // Whether outputs of type Audio get what the desktop plays.
    bool capturesAudio = false;
    // Between two complete frames; 0 for as often as the backend gives them.
    std::chrono::nanoseconds minimumFrameInterval{0};
};

enum class FrameStatus {
    Complete, // pixels hold a whole picture
    Idle,     // nothing changed since the last one; no pixels
    Blank,    // there is nothing to show yet; no pixels
};

// 32 bits a pixel, blue in the lowest byte of the number.
enum class PixelFormat {
    Opaque,        // the highest byte is 0xFF
    Premultiplied, // the highest byte is the alpha
};

struct Frame {
    bool valid = true;
    int sampleCount = 1;
    FrameStatus status = FrameStatus::Complete;
    // Null when the frame carries no picture. The memory is the stream's and is used again for a later frame
    // once the last copy of this image is gone: who keeps one for long, of a stream that goes on, copies the
    // pixels. Not to be written to.
    QImage pixels;
    PixelFormat format = PixelFormat::Opaque;
    // In pixels of this frame: all that differs from the complete frame before is in it, perhaps more. The
    // whole picture in the first one.
    QRegion damage;
    // CLOCK_MONOTONIC at the grab.
    std::int64_t timestampNanoseconds = 0;
};

enum class OutputType { Screen = 0, Audio = 1 };

// One running grab of a display or a window. Keeps itself alive from startCapture() until it was stopped or
// has ended by itself; after that it holds none of the handlers.
class ScreenStream {
public:
    using FrameHandler = std::function<void(const Frame&, OutputType)>;
    // With why, where that is known.
    using EndedHandler = std::function<void(std::optional<Error>)>;

    virtual ~ScreenStream() = default;
    // Before the start. An output of type Audio is taken wherever there are streams; without sound (see
    // SystemAudio, which says why) it gets nothing.
    virtual Result<void> addOutput(OutputType type, std::shared_ptr<SerialQueue> sampleQueue,
                                   FrameHandler handler) = 0;
    // Before the start. Called at most once, on a queue of the platform's, when a started stream ends without
    // having been stopped: its window closed, its display went, the user took the permission back.
    virtual void setEndedHandler(EndedHandler handler) = 0;
    // Settles when it runs; perhaps after the user was asked.
    virtual Outcome<void> startCapture() = 0;
    // Settles when no further frame will be handed out; also for a stream that had ended.
    virtual Outcome<void> stopCapture() = 0;
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
