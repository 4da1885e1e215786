// Process entry: one of the command-line modes, or the normal application in the status area.
#include "app/AppDelegate.h"
#include "app/ApplicationStyle.h"
#include "app/LaunchMode.h"
#include "app/TerminationSignals.h"
#include "base/AtomicFile.h"
#include "base/Corrections.h"
#include "base/Log.h"
#include "base/Memory.h"
#include "base/Shared.h"
#include "history/CaptureHistory.h"
#include "platform/Desktop.h"
#include "platform/Pasteboard.h"
#include "platform/Services.h"
#include "session/Session.h"
#include "settings/Defaults.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QTimer>
#include <chrono>
#include <cstdio>

using namespace marrowfin;
using namespace app;
using namespace history;
using namespace settings;

namespace {

QStringList argumentList(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

void logCorrections() {
    const QStringList active = Corrections::activeNames();
    if (!active.isEmpty())
        logLine(QStringLiteral("[Marrowfin] corrections: ") + active.join(u','));
}

// Where this user's files are; told once, before anything asks.
void chooseFiles(const platform::Folders& folders) {
    Defaults::useFile(QDir(folders.configuration()).filePath(QStringLiteral("Marrowfin/defaults.json")));
    CaptureHistory::useFolder(
        QDir(folders.applicationSupport()).filePath(QStringLiteral("Marrowfin/History")));
}

// What was captured is worth more than the desktop that went away: it reaches the disk, and nothing is left
// half-written.
void finishFiles() {
    using namespace std::chrono_literals;
    CaptureHistory::finishSaves();
    finishWrites(5s);
}

int runApplication(QApplication& application) {
    Result<std::unique_ptr<session::Session>> session = session::Session::open(finishFiles);
    if (!session) {
        printLine(session.error().message);
        return 1;
    }
    platform::install((*session)->services());
    chooseFiles(platform::services().folders);
    installApplicationStyle();
    logCorrections();

    AppDelegate delegate;
    TerminationSignals terminationSignals;
    QObject::connect(&terminationSignals, &TerminationSignals::received, &application, &QApplication::quit);
    QObject::connect(&application, &QApplication::aboutToQuit, &delegate, [&delegate] {
        delegate.applicationWillTerminate();
        platform::services().pasteboard.handOver();
    });
    QTimer::singleShot(0, &delegate, [&delegate] { delegate.applicationDidFinishLaunching(); });
    const int status = QApplication::exec();
    SharedObjects::destroyAll();
    return status;
}

} // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    giveLargeMemoryBack();
    if (const std::optional<LaunchMode> mode = launchMode(argumentList(argc, argv))) {
        printLine(QStringLiteral("%1 isn't built yet.").arg(flag(*mode)));
        return 1;
    }
    if (const Result<void> possible = session::Session::prepare(); !possible) {
        printLine(possible.error().message);
        return 1;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Marrowfin"));
    QApplication::setDesktopFileName(QStringLiteral("marrowfin"));
    // On the title bars and in the task lists of window managers that don't look for the desktop file.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/io.tessaly.marrowfin.svg")));
    // An accessory program: it never quits with a window.
    QApplication::setQuitOnLastWindowClosed(false);
    return runApplication(application);
}
