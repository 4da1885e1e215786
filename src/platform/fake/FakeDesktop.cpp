#include "platform/fake/FakeDesktop.h"

#include "base/Shared.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace marrowfin::fake {

using namespace platform;

FakeDesktop::FakeDesktop() {
    install({screenSource, screenAccess, screens, surfaceHost, scrollGestures, hotKeys, pasteboard, statusBar,
             opener, folders, appearance, textRecognizer, textDetector, movieWriter, movieReader, systemAudio,
             scrollPoster, inputPoster, updateDriver});
}

FakeDesktop::~FakeDesktop() {
    SharedObjects::destroyAll();
    uninstall();
}

void FakeDesktop::addScreen(std::uint32_t id, const QRectF& frame, int scale, double bottomStrut,
                            double topStrut) {
    screens.add(id, frame, scale, bottomStrut, topStrut);
    screenSource.addDisplay(id, toScreen(DesktopRect{frame}, screens.primaryHeight()).rect, scale);
}

void FakeDesktop::answerLate() {
    for (LateAnswers* late :
         {&screenSource.late, &screenAccess.late, &screens.late, &hotKeys.late, &pasteboard.late})
        late->hold = true;
    surfaceHost.holdBarriers = true;
}

void FakeDesktop::releaseAnswers() {
    for (LateAnswers* late :
         {&screenSource.late, &screenAccess.late, &screens.late, &hotKeys.late, &pasteboard.late})
        late->release();
    surfaceHost.releaseBarriers();
}

void FakeDesktop::removeScreen(std::uint32_t id) {
    screens.remove(id);
    std::erase_if(screenSource.shown.displays,
                  [id](const Display& display) { return display.displayID == id; });
    screens.tellChanged();
}

bool waitUntil(const std::function<bool()>& condition) {
    constexpr int limitMilliseconds = 20000;
    QDeadlineTimer deadline(limitMilliseconds);
    // Something has to end a wait for events that never come; the condition is tested after each batch of
    // events.
    QTimer pulse;
    pulse.start(50);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace marrowfin::fake
