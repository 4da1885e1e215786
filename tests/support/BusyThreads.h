// Keeps every thread busy that the toolkit may hand work to, for as long as it lives. Main thread.
#pragma once

#include <QSemaphore>
#include <QThreadPool>
#include <atomic>

namespace marrowfin::testsupport {

class BusyThreads {
public:
    BusyThreads() : count(QThreadPool::globalInstance()->maxThreadCount()) {
        for (int i = 0; i < count; ++i)
            QThreadPool::globalInstance()->start([this] {
                begun.release();
                if (!ended.tryAcquire(1, patience))
                    waitedFor = true;
            });
        begun.acquire(count);
    }
    ~BusyThreads() {
        ended.release(count);
        QThreadPool::globalInstance()->waitForDone();
    }
    BusyThreads(const BusyThreads&) = delete;
    BusyThreads& operator=(const BusyThreads&) = delete;

    // Somebody needed one of them, so that they gave way in the end.
    bool wereWaitedFor() const { return waitedFor; }

private:
    static constexpr int patience = 30'000; // ms; turns a hang into a failure
    int count;
    QSemaphore begun;
    QSemaphore ended;
    std::atomic<bool> waitedFor = false;
};

} // namespace marrowfin::testsupport
