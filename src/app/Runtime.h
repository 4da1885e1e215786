// The one owner of the program's start and end: QApplication, the desktop's services, the shared objects and
// the delegate are built here in their order and destroyed in the reverse of it. One at a time; main thread.
#pragma once

#include "app/RuntimeOptions.h"

#include <QApplication>
#include <QStringList>
#include <memory>
#include <optional>

namespace marrowfin::app {

class AppDelegate;
class TerminationSignals;

class Runtime {
public:
    explicit Runtime(RuntimeOptions options);
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    // The modes that the arguments ask for, one after the other while none ends the process, and then the
    // normal application; the process's exit status. Called once.
    int run(const QStringList& arguments);
    // Leaves the main loop and ends the process with this status.
    void finish(int status);

    // Of the normal application, from its launch to its end.
    AppDelegate* appDelegate() const { return delegate.get(); }

private:
    Result<void> open();
    void chooseFiles() const;
    std::optional<int> runMode(LaunchMode which);
    int runApplication();
    void end();
    [[noreturn]] void desktopLost(const QString& line);

    RuntimeOptions options;
    int argumentCount = 1;
    char* argumentValues[2] = {nullptr, nullptr};
    std::optional<int> status;

    std::unique_ptr<QApplication> application;
    std::optional<OpenDesktop> desktop;
    std::size_t foundation = 0; // the shared objects that outlive every window
    std::unique_ptr<TerminationSignals> terminationSignals;
    std::unique_ptr<AppDelegate> delegate;
};

} // namespace marrowfin::app
