#include "base/MainThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>
#include <deque>
#include <mutex>
#include <utility>

namespace marrowfin {

namespace {

// What blocks hold is handed over under our own lock and not within the toolkit's events: the thread
// sanitizer sees the first and not the second. Each block has an event of its own, so it keeps its turn among
// other events.
class BlockReceiver : public QObject {
public:
    explicit BlockReceiver(QObject* parent) : QObject(parent) {
        const std::lock_guard hold(lock);
        current = this;
    }
    ~BlockReceiver() override {
        std::deque<std::function<void()>> dropped; // destroyed without the lock: that may post again
        const std::lock_guard hold(lock);
        current = nullptr;
        dropped.swap(blocks);
    }

    static void post(std::function<void()> block) {
        const std::lock_guard hold(lock);
        if (current == nullptr)
            return;
        blocks.push_back(std::move(block));
        QCoreApplication::postEvent(current, new QEvent(QEvent::User));
    }

    bool event(QEvent* event) override {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        if (const std::function<void()> block = next())
            block();
        return true;
    }

private:
    static std::function<void()> next() {
        const std::lock_guard hold(lock);
        if (blocks.empty())
            return {};
        std::function<void()> block = std::move(blocks.front());
        blocks.pop_front();
        return block;
    }

    static inline std::mutex lock;
    static inline BlockReceiver* current = nullptr; // the application's child
    static inline std::deque<std::function<void()>> blocks;
};

void makeReceiver() {
    new BlockReceiver(QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(makeReceiver)

void postToMain(std::function<void()> block) {
    BlockReceiver::post(std::move(block));
}

bool isMainThread() {
    const QCoreApplication* application = QCoreApplication::instance();
    return application != nullptr && QThread::currentThread() == application->thread();
}

} // namespace marrowfin
