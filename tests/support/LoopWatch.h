// Notices an event loop that runs inside another one while this lives: a dialog's exec() or a menu's. What it
// finds is closed, so that the test goes on and can say so. Tests of ring 3.
#pragma once

#include <QApplication>
#include <QThread>
#include <QTimer>
#include <QWidget>

namespace marrowfin::testsupport {

class LoopWatch {
public:
    LoopWatch() : level(QThread::currentThread()->loopLevel()), deepest(level) {
        // Every loop runs timers, whatever else it leaves out.
        QObject::connect(&pulse, &QTimer::timeout, [this] { look(); });
        pulse.start(0);
    }
    // How many loops ran inside the one that was there.
    int nested() const { return deepest - level; }

private:
    void look() {
        const int now = QThread::currentThread()->loopLevel();
        if (now <= level)
            return;
        deepest = std::max(deepest, now);
        if (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        else if (QWidget* modal = QApplication::activeModalWidget())
            modal->close();
    }

    int level;
    int deepest;
    QTimer pulse;
};

} // namespace marrowfin::testsupport
