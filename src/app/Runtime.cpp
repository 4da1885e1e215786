#include "app/Runtime.h"

#include "app/AppDelegate.h"
#include "app/ApplicationStyle.h"
#include "app/TerminationSignals.h"
#include "base/AtomicFile.h"
#include "base/Corrections.h"
#include "base/Log.h"
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "history/CaptureHistory.h"
#include "platform/Desktop.h"
#include "platform/Pasteboard.h"
#include "settings/Defaults.h"

#include <QDir>
#include <QIcon>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <unistd.h>

namespace marrowfin::app {

using namespace history;
using namespace settings;

namespace {

void logCorrections() {
    const QStringList active = Corrections::activeNames();
    if (!active.isEmpty())
        logLine(QStringLiteral("[Marrowfin] corrections: ") + active.join(u','));
}

// Windows that belong to nobody any more: on their way out, or dialogs that close themselves.
void deleteLeftoverWindows() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QList<QPointer<QWidget>> left;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (!window->parent())
            left << window;
    for (const QPointer<QWidget>& window : left)
        delete window;
}

} // namespace

Runtime::Runtime(RuntimeOptions told) : options(std::move(told)) {
    argumentValues[0] = options.program.data();
}

Runtime::~Runtime() {
    end();
}

int Runtime::run(const QStringList& arguments) {
    for (const LaunchMode mode : launchModes(arguments))
        if (const std::optional<int> ended = runMode(mode))
            return *ended;
    if (const Result<void> possible = open(); !possible) {
        printLine(possible.error().message);
        return 1;
    }
    return runApplication();
}

void Runtime::finish(int with) {
    status = with;
    QApplication::quit();
}

Result<void> Runtime::open() {
    if (desktop)
        return {};
    if (!application) {
        if (const Result<void> chosen = options.chooseWindowSystem(); !chosen)
            return chosen;
        application = std::make_unique<QApplication>(argumentCount, argumentValues);
        QApplication::setApplicationName(QStringLiteral("Marrowfin"));
        QApplication::setDesktopFileName(QStringLiteral("marrowfin"));
        // On the title bars and in the task lists of window managers that don't look for the desktop file.
        QApplication::setWindowIcon(QIcon(QStringLiteral(":/io.tessaly.marrowfin.svg")));
        // An accessory program: it never quits with a window.
        QApplication::setQuitOnLastWindowClosed(false);
    }
    Result<OpenDesktop> opened = options.openDesktop({options.busName, desktopLost});
    if (!opened)
        return tl::unexpected(opened.error());
    desktop.emplace(*std::move(opened));
    platform::install(desktop->services);
    // What moves needs it to its last breath.
    chrome::AnimationClock::shared();
    foundation = SharedObjects::count();
    chooseFiles();
    installApplicationStyle();
    return {};
}

// Told once, before anything asks.
void Runtime::chooseFiles() const {
    const platform::Folders& folders = desktop->services.folders;
    Defaults::useFile(options.settingsFile.isEmpty()
                          ? QDir(folders.configuration()).filePath(QStringLiteral("Marrowfin/defaults.json"))
                          : options.settingsFile);
    CaptureHistory::useFolder(
        options.historyFolder.isEmpty()
            ? QDir(folders.applicationSupport()).filePath(QStringLiteral("Marrowfin/History"))
            : options.historyFolder);
}

std::optional<int> Runtime::runMode(LaunchMode which) {
    const std::unique_ptr<Mode> mode = options.makeMode(which);
    if (const std::optional<int> done = mode->runWithoutDesktop())
        return done;
    if (const Result<void> possible = open(); !possible)
        return mode->desktopMissing(possible.error());
    FlowScope running;
    const QObject thisMode; // a loop that is left before it began starts nothing later
    QTimer::singleShot(0, &thisMode, [&] { running.start(mode->run(this)); });
    QApplication::exec();
    return status;
}

int Runtime::runApplication() {
    logCorrections();
    delegate = std::make_unique<AppDelegate>();
    terminationSignals = std::make_unique<TerminationSignals>();
    QObject::connect(terminationSignals.get(), &TerminationSignals::received, application.get(),
                     &QApplication::quit);
    QTimer::singleShot(0, delegate.get(), [this] { delegate->applicationDidFinishLaunching(); });
    const int left = QApplication::exec();
    delegate->applicationWillTerminate();
    desktop->services.pasteboard.handOver();
    return status.value_or(left);
}

void Runtime::end() {
    if (!application)
        return;
    // From the top down. What works for the user ends first, with its flows and their overlays; then cards,
    // pins and editors, and the queues, which finish what they were given; then what nobody owns; then what
    // all of them stood on.
    SharedObjects::close();
    delegate.reset();
    SharedObjects::destroyAllBut(foundation);
    deleteLeftoverWindows();
    SharedObjects::destroyAll();
    // Not earlier: a second signal mustn't end what the queues were finishing.
    terminationSignals.reset();
    if (desktop)
        platform::uninstall();
    desktop.reset();
    application.reset();
    SharedObjects::reopen();
}

// What was captured is worth more than the desktop that went away: it reaches the disk, and nothing is left
// half-written. No destructor runs, because windows can't be touched any more.
void Runtime::desktopLost(const QString& line) {
    using namespace std::chrono_literals;
    logLine(line);
    CaptureHistory::finishSaves();
    finishWrites(5s);
    ::_exit(1);
}

} // namespace marrowfin::app
