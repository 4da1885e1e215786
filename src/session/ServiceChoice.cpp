#include "session/ServiceChoice.h"

#include "base/Log.h"
#include "platform/HotKeyService.h"
#include "platform/Pasteboard.h"
#include "platform/ProviderChoice.h"
#include "platform/ScreenAccess.h"
#include "platform/ScreenSource.h"
#include "platform/Screens.h"
#include "platform/ScrollGestures.h"
#include "platform/SurfaceHost.h"
#include "platform/UnavailableServices.h"
#include "platform/freedesktop/FreedesktopAppearance.h"
#include "platform/freedesktop/FreedesktopFolders.h"
#include "platform/freedesktop/FreedesktopOpener.h"
#include "platform/freedesktop/FreedesktopStatusBar.h"
#include "platform/x11/X11Backend.h"
#include "platform/x11/surfaces/X11SurfaceHost.h"
#include "session/UnseenScreen.h"

namespace marrowfin::session {

using namespace platform;

namespace {

const QString x11Name = QStringLiteral("x11");
const QString freedesktopName = QStringLiteral("freedesktop");
const QString noneName = QStringLiteral("none");

// One that stands already.
template <class T>
Provider<T> standing(const QString& name, T& service) {
    return {name, [&service]() -> Result<T*> { return &service; }};
}

// One that is made when it is chosen.
template <class Made, class T, class... Arguments>
Provider<T> making(const QString& name, ServiceSet& set, Arguments... arguments) {
    return {name,
            [&set, arguments...]() -> Result<T*> { return &set.keep(std::make_unique<Made>(arguments...)); }};
}

Provider<SurfaceHost> x11Surfaces(ServiceSet& set, x11::X11Backend& backend) {
    return {x11Name, [&set, &backend]() -> Result<SurfaceHost*> {
                Result<std::unique_ptr<SurfaceHost>> host = x11::makeSurfaceHost(backend.grabs());
                if (!host)
                    return tl::unexpected(host.error());
                return &set.keep(std::move(*host));
            }};
}

std::vector<Provider<ScreenSource>> screenSources(ServiceSet& set, x11::X11Backend& backend) {
    std::vector<Provider<ScreenSource>> inOrder{standing(x11Name, backend.screenSource())};
    if (isUnseenWaylandDesktop())
        inOrder.insert(inOrder.begin(),
                       {QStringLiteral("unseen"), [&set, &backend]() -> Result<ScreenSource*> {
                            return &set.keep(std::make_unique<UnseenScreen>(backend.screenSource()));
                        }});
    return inOrder;
}

// Remembers the first service that nothing provides.
class Picker {
public:
    template <class T>
    T* pick(const QString& service, const std::vector<Provider<T>>& inOrder) {
        const Result<T*> chosen = choice.choose(service, inOrder);
        if (!chosen && !missing)
            missing = chosen.error();
        return chosen.value_or(nullptr);
    }
    // What can be done without: the last resort is a stand-in that says so.
    template <class Absent, class T>
    T* pickOrNone(const QString& service, ServiceSet& set, std::vector<Provider<T>> inOrder = {}) {
        inOrder.push_back(making<Absent, T>(noneName, set));
        return pick(service, inOrder);
    }

    ProviderChoice choice{[](const QString& variable) {
        return QString::fromLocal8Bit(qgetenv(variable.toLatin1().constData()));
    }};
    std::optional<Error> missing;
};

} // namespace

Result<std::unique_ptr<ChosenServices>> chooseServices(std::unique_ptr<x11::X11Backend> made) {
    ServiceSet set;
    Picker picker;
    x11::X11Backend& x11 = set.keep(std::move(made));
    const TrayIconMaker trayIcon = [&x11](TrayIcon::Click click) {
        return x11.makeTrayIcon(std::move(click));
    };
    auto* screenSource = picker.pick<ScreenSource>(QStringLiteral("screenSource"), screenSources(set, x11));
    auto* screenAccess =
        picker.pick<ScreenAccess>(QStringLiteral("screenAccess"), {standing(x11Name, x11.screenAccess())});
    auto* screens = picker.pick<Screens>(QStringLiteral("screens"), {standing(x11Name, x11.screens())});
    auto* surfaceHost = picker.pick<SurfaceHost>(QStringLiteral("surfaceHost"), {x11Surfaces(set, x11)});
    auto* gestures = picker.pick<ScrollGestures>(QStringLiteral("scrollGestures"),
                                                 {standing(x11Name, x11.scrollGestures())});
    auto* hotKeys = picker.pick<HotKeyService>(QStringLiteral("hotKeys"), {standing(x11Name, x11.hotKeys())});
    auto* pasteboard =
        picker.pick<Pasteboard>(QStringLiteral("pasteboard"), {standing(x11Name, x11.pasteboard())});
    auto* statusBar = picker.pick<StatusBar>(
        QStringLiteral("statusBar"),
        {making<freedesktop::FreedesktopStatusBar, StatusBar>(freedesktopName, set, trayIcon)});
    auto* opener = picker.pick<Opener>(
        QStringLiteral("opener"), {making<freedesktop::FreedesktopOpener, Opener>(freedesktopName, set)});
    auto* folders = picker.pick<Folders>(
        QStringLiteral("folders"), {making<freedesktop::FreedesktopFolders, Folders>(freedesktopName, set)});
    auto* appearance = picker.pick<Appearance>(
        QStringLiteral("appearance"),
        {making<freedesktop::FreedesktopAppearance, Appearance>(freedesktopName, set)});
    auto* recognizer =
        picker.pickOrNone<UnavailableTextRecognizer, TextRecognizer>(QStringLiteral("textRecognizer"), set);
    auto* detector =
        picker.pickOrNone<UnavailableTextDetector, TextDetector>(QStringLiteral("textDetector"), set);
    auto* writer = picker.pickOrNone<UnavailableMovieWriter, MovieWriter>(QStringLiteral("movieWriter"), set);
    auto* reader = picker.pickOrNone<UnavailableMovieReader, MovieReader>(QStringLiteral("movieReader"), set);
    auto* audio = picker.pickOrNone<UnavailableSystemAudio, SystemAudio>(QStringLiteral("systemAudio"), set);
    auto* scrollPoster = picker.pickOrNone<UnavailableScrollPoster, ScrollPoster>(
        QStringLiteral("scrollPoster"), set, {standing(x11Name, x11.scrollPoster())});
    auto* input = picker.pickOrNone<UnavailableInputPoster, InputPoster>(QStringLiteral("inputPoster"), set);
    auto* updates =
        picker.pickOrNone<UnavailableUpdateDriver, UpdateDriver>(QStringLiteral("updateDriver"), set);
    if (picker.missing)
        return tl::unexpected(*picker.missing);
    if (const QString line = picker.choice.overrideLine(); !line.isEmpty())
        logLine(line);
    return std::unique_ptr<ChosenServices>(
        new ChosenServices{std::move(set),
                           {*screenSource, *screenAccess, *screens, *surfaceHost, *gestures, *hotKeys,
                            *pasteboard, *statusBar, *opener, *folders, *appearance, *recognizer, *detector,
                            *writer, *reader, *audio, *scrollPoster, *input, *updates}});
}

} // namespace marrowfin::session
