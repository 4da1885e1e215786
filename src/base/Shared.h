// The process-wide instances: built on first use, destroyed in reverse order of building before QApplication
// goes, and reset by tests. Main thread only. There are no function-local statics beside these.
#pragma once

#include <functional>
#include <memory>

namespace marrowfin {

class SharedObjects {
public:
    // Destroys every shared instance, the youngest first. The next use builds anew.
    static void destroyAll();

private:
    template <class T>
    friend class Shared;
    static void remember(std::function<void()> destroy);
};

// class CaptureHistory { public: static CaptureHistory& shared() { return Shared<CaptureHistory>::instance();
// } };
template <class T>
class Shared {
public:
    static T& instance() {
        if (!object) {
            object = std::make_unique<T>();
            SharedObjects::remember([] { object.reset(); });
        }
        return *object;
    }
    // Tests: puts this object in the place of one that instance() would build.
    static void replace(std::unique_ptr<T> with) {
        const bool known = object != nullptr;
        object = std::move(with);
        if (!known)
            SharedObjects::remember([] { object.reset(); });
    }
    static bool exists() { return object != nullptr; }

private:
    static inline std::unique_ptr<T> object;
};

} // namespace marrowfin
