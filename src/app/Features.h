// What the menu can start that lives in folders of its own. A feature that isn't built yet is one of the
// absent ones: it says so in one line on standard output and does nothing else. Main thread.
#pragma once

#include "base/Flow.h"
#include "imaging/Image.h"

#include <QString>
#include <memory>
#include <optional>

namespace marrowfin::app {

enum class RecorderState { idle, recording, stopping };

class RecorderFeature {
public:
    virtual ~RecorderFeature() = default;
    virtual RecorderState state() const = 0;
    // "00:12", while recording.
    virtual QString formattedDuration() const = 0;
    virtual Flow<> toggle() = 0;
};

class ScrollingFeature {
public:
    virtual ~ScrollingFeature() = default;
    virtual Flow<std::optional<imaging::Image>> run() = 0;
};

class TextCaptureFeature {
public:
    virtual ~TextCaptureFeature() = default;
    virtual Flow<> start() = 0;
};

class WindowFeature {
public:
    virtual ~WindowFeature() = default;
    virtual void show() = 0;
};

class ImageFeature {
public:
    virtual ~ImageFeature() = default;
    virtual void open(const imaging::Image& image) = 0;
};

struct Features {
    std::unique_ptr<RecorderFeature> recorder;
    std::unique_ptr<ScrollingFeature> scrolling;
    std::unique_ptr<TextCaptureFeature> textCapture;
    std::unique_ptr<WindowFeature> history;
    std::unique_ptr<WindowFeature> settings;
    std::unique_ptr<WindowFeature> updates;
    std::unique_ptr<ImageFeature> pins;
};

// Those that are built, and the absent ones for the rest.
Features makeFeatures();

} // namespace marrowfin::app
