// The desktop as the rest of the program sees it: one reference to each interface, installed once by Runtime
// or by a test and asked for by whoever needs it. What they are made of belongs to a ServiceSet of whoever
// installed them. Main thread, but for ScreenSource, ScreenStream and SystemAudio (see there).
//
// There is one way to answer: an Outcome for what comes later, a Result for what may fail, a signal for what
// changes.
#pragma once

namespace marrowfin::platform {

class Appearance;
class Folders;
class HotKeyService;
class InputPoster;
class MovieReader;
class MovieWriter;
class Opener;
class Pasteboard;
class ScreenAccess;
class Screens;
class ScreenSource;
class ScrollGestures;
class ScrollPoster;
class StatusBar;
class SurfaceHost;
class SystemAudio;
class TextDetector;
class TextRecognizer;
class UpdateDriver;

struct Services {
    ScreenSource& screenSource;
    ScreenAccess& screenAccess;
    Screens& screens;
    SurfaceHost& surfaceHost;
    ScrollGestures& scrollGestures;
    HotKeyService& hotKeys;
    Pasteboard& pasteboard;
    StatusBar& statusBar;
    Opener& opener;
    Folders& folders;
    Appearance& appearance;
    TextRecognizer& textRecognizer;
    TextDetector& textDetector;
    MovieWriter& movieWriter;
    MovieReader& movieReader;
    SystemAudio& systemAudio;
    ScrollPoster& scrollPoster;
    InputPoster& inputPoster;
    UpdateDriver& updateDriver;
};

// The services must outlive their use; a test may install others after uninstall().
void install(const Services& services);
void uninstall();
bool isInstalled();
// Broken invariant when nothing is installed.
const Services& services();

} // namespace marrowfin::platform
