#include "base/SerialQueue.h"

#include "base/Invariant.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <pthread.h>
#include <thread>

namespace marrowfin {

struct SerialQueue::Worker {
    QString label;
    QualityOfService quality;
    std::mutex lock;
    std::condition_variable wake;
    std::deque<std::function<void()>> blocks;
    std::thread thread;
    std::atomic<std::thread::id> id;
    bool running = false; // a block
    bool finishing = false;

    void run() {
        id = std::this_thread::get_id();
        // The kernel keeps 15 bytes of a thread's name; the last ones tell the queues apart.
        pthread_setname_np(pthread_self(), label.right(15).toLatin1().constData());
        std::unique_lock hold(lock);
        for (;;) {
            wake.wait(hold, [this] { return finishing || !blocks.empty(); });
            if (blocks.empty())
                return;
            std::function<void()> block = std::move(blocks.front());
            blocks.pop_front();
            running = true;
            hold.unlock();
            block();
            block = nullptr; // what it holds goes before the next wait
            hold.lock();
            running = false;
        }
    }
};

SerialQueue::SerialQueue(QString label, QualityOfService quality) : worker(std::make_shared<Worker>()) {
    worker->label = std::move(label);
    worker->quality = quality;
}

SerialQueue::~SerialQueue() {
    {
        const std::lock_guard hold(worker->lock);
        worker->finishing = true;
    }
    worker->wake.notify_one();
    if (isCurrent())
        worker->thread.detach(); // the last block let go of the queue; a thread can't wait for itself
    else if (worker->thread.joinable())
        worker->thread.join();
}

const QString& SerialQueue::label() const {
    return worker->label;
}
SerialQueue::QualityOfService SerialQueue::quality() const {
    return worker->quality;
}

void SerialQueue::async(std::function<void()> block) {
    {
        const std::lock_guard hold(worker->lock);
        // What is left in the queue may still ask for more; anybody else is using a dead queue.
        MARROWFIN_INVARIANT(!worker->finishing || isCurrent());
        worker->blocks.push_back(std::move(block));
        if (!worker->thread.joinable())
            worker->thread = std::thread([w = worker] { w->run(); });
    }
    worker->wake.notify_one();
}

void SerialQueue::sync(const std::function<void()>& block) {
    MARROWFIN_INVARIANT(!isCurrent());
    std::mutex lock;
    std::condition_variable done;
    bool finished = false;
    async([&] {
        block();
        const std::lock_guard hold(lock);
        finished = true;
        done.notify_one();
    });
    std::unique_lock hold(lock);
    done.wait(hold, [&] { return finished; });
}

bool SerialQueue::finish(std::chrono::milliseconds patience) {
    MARROWFIN_INVARIANT(!isCurrent());
    {
        const std::lock_guard hold(worker->lock);
        if (!worker->running && worker->blocks.empty())
            return true;
    }
    struct Finish {
        std::mutex lock;
        std::condition_variable reached;
        bool isReached = false;
    };
    // Whoever waits may have gone by the time that it is reached.
    const auto finish = std::make_shared<Finish>();
    async([finish] {
        const std::lock_guard hold(finish->lock);
        finish->isReached = true;
        finish->reached.notify_one();
    });
    std::unique_lock hold(finish->lock);
    return finish->reached.wait_for(hold, patience, [&] { return finish->isReached; });
}

bool SerialQueue::isCurrent() const {
    return worker->id == std::this_thread::get_id();
}

} // namespace marrowfin
