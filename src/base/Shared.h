// The process-wide instances: built on first use, destroyed in reverse order of building before QApplication
// goes, and reset by tests. There are no function-local statics beside these. Reaching an instance is safe
// from any thread; the ends and replace() belong to the main thread, and each class says which threads may
// use it.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace marrowfin {

class SharedObjects {
public:
    // Destroys every shared instance, the youngest first. The next use builds anew.
    static void destroyAll();
    // The same down to the oldest ones, this many.
    static void destroyAllBut(std::size_t oldest);
    static std::size_t count();

    // From here on building one is a broken invariant: what is built while the program goes down would
    // outlive what it needs. Those that are there may be used until they are destroyed.
    static void close();
    static void reopen();

private:
    template <class T>
    friend class Shared;
    static void aboutToBuild();
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
            SharedObjects::aboutToBuild();
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
