// Memory that the X server writes pixels into and that a QImage then owns, without a copy between. A segment
// never outlives its users: the kernel frees it when the last one lets go, also after a crash.
#pragma once

#include <QImage>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace marrowfin::x11 {

class SharedSegment {
public:
    // Null when the system gives none.
    static std::unique_ptr<SharedSegment> make(std::size_t bytes);
    ~SharedSegment();
    SharedSegment(const SharedSegment&) = delete;
    SharedSegment& operator=(const SharedSegment&) = delete;

    std::uint8_t* memory() const { return address; }
    std::size_t size() const { return bytes; }
    int systemID() const { return id; }
    // To be called once the server has it: from now on it goes with its last user.
    void forgetName();

    // The server's number for it; 0 while the server doesn't have it.
    std::uint32_t serverID = 0;

private:
    SharedSegment(int id, std::uint8_t* address, std::size_t bytes);

    int id;
    std::uint8_t* address;
    std::size_t bytes;
    bool named = true;
};

// Segments that come back when their image is gone, while a stream of frames runs. Any thread.
class SegmentPool {
public:
    enum class Reuse { No, Yes };
    explicit SegmentPool(Reuse reuse) : open(reuse == Reuse::Yes) {}

    bool reuses() const;
    // One of exactly this size that nobody uses, or null.
    std::unique_ptr<SharedSegment> take(std::size_t bytes);
    void giveBack(std::unique_ptr<SharedSegment> segment);
    // Frees what is unused, and from now on what comes back.
    void close();

private:
    mutable std::mutex lock;
    bool open;
    std::vector<std::unique_ptr<SharedSegment>> unused;
};

// An image over the segment's memory; the segment goes back to the pool with the image's last copy.
QImage imageOver(std::unique_ptr<SharedSegment> segment, const QSize& size, int bytesPerLine,
                 QImage::Format format, std::shared_ptr<SegmentPool> pool);

} // namespace marrowfin::x11
