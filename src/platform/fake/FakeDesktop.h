// A whole played desktop, installed as the services while it lives:
//
//     fake::FakeDesktop desktop;
//     desktop.addScreen(1, {0, 0, 1440, 900}, 2);
//
// Tests only.
#pragma once

#include "platform/Services.h"
#include "platform/UnavailableServices.h"
#include "platform/fake/FakeScreenSource.h"
#include "platform/fake/FakeScrollGestures.h"
#include "platform/fake/FakeServices.h"
#include "platform/fake/FakeSurfaceHost.h"

namespace marrowfin::fake {

class FakeDesktop {
public:
    FakeDesktop();
    // Shared objects that were built on this desktop go with it.
    ~FakeDesktop();
    FakeDesktop(const FakeDesktop&) = delete;

    FakeScreenSource screenSource;
    FakeScreenAccess screenAccess;
    FakeScreens screens;
    FakeSurfaceHost surfaceHost;
    FakeScrollGestures scrollGestures;
    FakeHotKeys hotKeys;
    FakePasteboard pasteboard;
    FakeStatusBar statusBar;
    FakeOpener opener;
    FakeFolders folders;
    FakeAppearance appearance;
    platform::UnavailableTextRecognizer textRecognizer;
    platform::UnavailableTextDetector textDetector;
    platform::UnavailableMovieWriter movieWriter;
    platform::UnavailableMovieReader movieReader;
    platform::UnavailableSystemAudio systemAudio;
    FakeScrollPoster scrollPoster;
    platform::UnavailableInputPoster inputPoster;
    platform::UnavailableUpdateDriver updateDriver;

    // The same display for windows and for the capture; frame in DesktopRect coordinates. The first is the
    // primary.
    void addScreen(std::uint32_t id, const QRectF& frame, int scale = 1, double bottomStrut = 0,
                   double topStrut = 0);
    // Every service that may answer late does from now on: what was asked so far is answered by
    // releaseAnswers(), what is asked afterwards by the next.
    void answerLate();
    void releaseAnswers();
    // As a monitor being unplugged: gone from both lists, changed() told.
    void removeScreen(std::uint32_t id);
};

// Runs the event loop until the condition holds; false when it never did within a generous limit. The only
// way for a test to wait.
bool waitUntil(const std::function<bool()>& condition);

} // namespace marrowfin::fake
