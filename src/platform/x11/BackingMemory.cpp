#include "platform/x11/BackingMemory.h"

#include <QBackingStore>
#include <QImage>
#include <QWidget>
#include <cstdint>
#include <sys/mman.h>

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
    if (begin < end)
        ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
}

} // namespace marrowfin::x11
