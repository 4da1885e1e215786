#include "platform/x11/surfaces/BackingMemory.h"

#include <QBackingStore>
#include <QImage>
#include <QWidget>
#include <cstdint>
#include <sys/mman.h>
#include <system_error>
#include <thread>

#ifndef MADV_POPULATE_WRITE
#define MADV_POPULATE_WRITE 23 // Linux 5.14; older ones refuse it
#endif

namespace marrowfin::x11 {

void prepareBackingMemory(QWidget& window) {
    QBackingStore* store = window.backingStore();
    if (!store)
        return;
    store->resize(window.size());
    QPaintDevice* device = store->paintDevice();
    if (!device || device->devType() != QInternal::Image)
        return;
    const auto* picture = static_cast<const QImage*>(device);
    constexpr std::uintptr_t page = 4096;
    const auto begin = (reinterpret_cast<std::uintptr_t>(picture->constBits()) + page - 1) & ~(page - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(picture->constBits()) +
                      static_cast<std::uintptr_t>(picture->sizeInBytes())) &
                     ~(page - 1);
    if (begin >= end)
        return;
    const auto populate = [](std::uintptr_t from, std::uintptr_t to) {
        ::madvise(reinterpret_cast<void*>(from), to - from, MADV_POPULATE_WRITE);
    };
    const std::uintptr_t middle = (begin + (end - begin) / 2) & ~(page - 1);
    std::thread other;
    try {
        other = std::thread([=] { populate(begin, middle); });
    } catch (const std::system_error&) {
        // No thread to be had: the first half comes as it is painted.
    }
    populate(middle, end);
    if (other.joinable())
        other.join();
}

} // namespace marrowfin::x11
