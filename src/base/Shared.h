// The process-wide instances: built on first use, destroyed in reverse order of building before QApplication
// goes, and reset by tests. There are no function-local statics beside these. Reaching an instance is safe
// from any thread; destroyAll() and replace() belong to the main thread, and each class says which threads
// may use it.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace marrowfin {

class SharedObjects {
public:
    // Destroys every shared instance, the youngest first. The next use builds anew.
    static void destroyAll();

private:
    template <class T>
    friend class Shared;
    // Recursive, because an instance may build another while it is built itself.
    static std::recursive_mutex& lock();
    static void remember(std::function<void()> destroy);
};

// class CaptureHistory { public: static CaptureHistory& shared() { return Shared<CaptureHistory>::instance();
// } };
template <class T>
class Shared {
public:
    static T& instance() {
        const std::lock_guard hold(SharedObjects::lock());
        if (!object) {
            // Remembered after its making: what T's constructor builds is older than T and outlives it.
            object = std::make_unique<T>();
            SharedObjects::remember(destroy);
        }
        return *object;
    }
    // Tests: puts this object in the place of one that instance() would build.
    static void replace(std::unique_ptr<T> with) {
        std::unique_ptr<T> old;
        const std::lock_guard hold(SharedObjects::lock());
        old = std::exchange(object, std::move(with));
        if (!old)
            SharedObjects::remember(destroy);
    }
    static bool exists() {
        const std::lock_guard hold(SharedObjects::lock());
        return object != nullptr;
    }

private:
    // The lock is free again when T's destructor runs: that may wait for a thread which needs a shared
    // object.
    static void destroy() {
        std::unique_ptr<T> dying;
        const std::lock_guard hold(SharedObjects::lock());
        dying = std::move(object);
    }

    static inline std::unique_ptr<T> object;
};

} // namespace marrowfin
