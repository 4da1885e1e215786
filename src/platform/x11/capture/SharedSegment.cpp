#include "platform/x11/capture/SharedSegment.h"

#include <algorithm>
#include <sys/ipc.h>
#include <sys/shm.h>

namespace marrowfin::x11 {

std::unique_ptr<SharedSegment> SharedSegment::make(std::size_t bytes) {
    // Captures hold secrets: nobody but this user (and the server) may look.
    const int id = ::shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (id < 0)
        return nullptr;
    void* address = ::shmat(id, nullptr, 0);
    if (address == reinterpret_cast<void*>(-1)) {
        ::shmctl(id, IPC_RMID, nullptr);
        return nullptr;
    }
    return std::unique_ptr<SharedSegment>(new SharedSegment(id, static_cast<std::uint8_t*>(address), bytes));
}

SharedSegment::SharedSegment(int id, std::uint8_t* address, std::size_t bytes)
    : id(id), address(address), bytes(bytes) {}

SharedSegment::~SharedSegment() {
    ::shmdt(address);
    forgetName();
}

void SharedSegment::forgetName() {
    if (named)
        ::shmctl(id, IPC_RMID, nullptr);
    named = false;
}

bool SegmentPool::reuses() const {
    const std::lock_guard hold(lock);
    return open;
}

std::unique_ptr<SharedSegment> SegmentPool::take(std::size_t bytes) {
    const std::lock_guard hold(lock);
    const auto at = std::find_if(unused.begin(), unused.end(),
                                 [bytes](const auto& segment) { return segment->size() == bytes; });
    if (at == unused.end())
        return nullptr;
    std::unique_ptr<SharedSegment> segment = std::move(*at);
    unused.erase(at);
    return segment;
}

void SegmentPool::giveBack(std::unique_ptr<SharedSegment> segment) {
    const std::lock_guard hold(lock);
    if (open)
        unused.push_back(std::move(segment));
}

void SegmentPool::close() {
    const std::lock_guard hold(lock);
    open = false;
    unused.clear();
}

namespace {
struct Lent {
    std::unique_ptr<SharedSegment> segment;
    std::shared_ptr<SegmentPool> pool;
};
} // namespace

QImage imageOver(std::unique_ptr<SharedSegment> segment, const QSize& size, int bytesPerLine,
                 QImage::Format format, std::shared_ptr<SegmentPool> pool) {
    auto* lent = new Lent{std::move(segment), std::move(pool)};
    const auto giveBack = [](void* info) {
        const std::unique_ptr<Lent> ending(static_cast<Lent*>(info));
        ending->pool->giveBack(std::move(ending->segment));
    };
    return {lent->segment->memory(), size.width(), size.height(), bytesPerLine, format, giveBack, lent};
}

} // namespace marrowfin::x11
