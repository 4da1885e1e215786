// A labelled queue that runs its blocks one after the other on one thread of its own. The thread starts with
// the first block and sleeps without waking while there is nothing to do. Destroying the queue finishes what
// is in it.
#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>

namespace marrowfin {

class SerialQueue {
public:
    enum class QualityOfService { Default, UserInitiated, UserInteractive };

    explicit SerialQueue(QString label, QualityOfService quality = QualityOfService::Default);
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    const QString& label() const;
    QualityOfService quality() const;

    // Returns at once; the block runs after those already queued.
    void async(std::function<void()> block);
    // Returns when the block has run. Must not be called from the queue itself.
    void sync(const std::function<void()>& block);
    // Waits until all that is queued now has run, no longer than this; false when the time was up. Must not
    // be called from the queue itself.
    bool finish(std::chrono::milliseconds patience);
    // True on the queue's own thread.
    bool isCurrent() const;

private:
    struct Worker;
    std::shared_ptr<Worker> worker; // the thread holds it too
};

} // namespace marrowfin
