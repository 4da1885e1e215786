// Owns what the services are made of: providers, and what several of them share. Destroys the youngest first,
// so that what was built on something goes before it. Main thread.
#pragma once

#include <memory>
#include <vector>

namespace marrowfin::platform {

class ServiceSet {
public:
    ServiceSet() = default;
    ~ServiceSet() {
        while (!parts.empty())
            parts.pop_back();
    }
    ServiceSet(ServiceSet&&) = default;
    ServiceSet& operator=(ServiceSet&&) = delete;

    template <class T>
    T& keep(std::unique_ptr<T> part) {
        T& kept = *part;
        parts.push_back(std::shared_ptr<void>(std::move(part)));
        return kept;
    }

private:
    std::vector<std::shared_ptr<void>> parts; // oldest first
};

} // namespace marrowfin::platform
