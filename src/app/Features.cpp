#include "app/Features.h"

#include "base/Log.h"
#include "pin/PinManager.h"

namespace marrowfin::app {

using namespace imaging;
using namespace pin;

namespace {

void sayAbsent(const QString& what) {
    printLine(QStringLiteral("%1 isn't built yet.").arg(what));
}

class AbsentRecorder : public RecorderFeature {
public:
    RecorderState state() const override { return RecorderState::idle; }
    QString formattedDuration() const override { return {}; }
    Flow<> toggle() override {
        sayAbsent(QStringLiteral("Screen recording"));
        co_return;
    }
};

class AbsentScrolling : public ScrollingFeature {
public:
    Flow<std::optional<Image>> run() override {
        sayAbsent(QStringLiteral("Scrolling capture"));
        co_return std::nullopt;
    }
};

class AbsentTextCapture : public TextCaptureFeature {
public:
    Flow<> start() override {
        sayAbsent(QStringLiteral("Text capture"));
        co_return;
    }
};

class AbsentWindow : public WindowFeature {
public:
    explicit AbsentWindow(QString name) : what(std::move(name)) {}
    void show() override { sayAbsent(what); }

private:
    QString what;
};

class Pins : public ImageFeature {
public:
    void open(const Image& image) override { PinManager::shared().pin(image); }
};

} // namespace

Features makeFeatures() {
    Features features;
    features.recorder = std::make_unique<AbsentRecorder>();
    features.scrolling = std::make_unique<AbsentScrolling>();
    features.textCapture = std::make_unique<AbsentTextCapture>();
    features.history = std::make_unique<AbsentWindow>(QStringLiteral("The capture history window"));
    features.settings = std::make_unique<AbsentWindow>(QStringLiteral("The settings window"));
    features.updates = std::make_unique<AbsentWindow>(QStringLiteral("The update check"));
    features.pins = std::make_unique<Pins>();
    return features;
}

} // namespace marrowfin::app
