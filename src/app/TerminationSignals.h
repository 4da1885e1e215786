// SIGTERM, SIGINT and SIGHUP as a Qt signal on the main thread, so that they end the program the way "Quit"
// does.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace marrowfin::app {

// One per process, while it lives.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    TerminationSignals();
    ~TerminationSignals() override;

Q_SIGNALS:
    void received();

private:
    int descriptor = -1;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace marrowfin::app
