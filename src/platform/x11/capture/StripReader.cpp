#include "platform/x11/capture/StripReader.h"

#include <algorithm>
#include <cstring>
#include <sys/mman.h>
#include <xcb/shm.h>

namespace marrowfin::x11 {

namespace {

constexpr std::size_t strips = 2;
constexpr std::size_t stripBytes = StripReader::capacity / strips;
constexpr std::size_t largePage = 2 << 20;
constexpr std::uint32_t allPlanes = 0xFFFFFFFF;

struct Mapping {
    void* start;
    std::size_t length;
};

void unmap(void* info) {
    const std::unique_ptr<Mapping> mapping(static_cast<Mapping*>(info));
    ::munmap(mapping->start, mapping->length);
}

// The copy and, for depth 24, the fourth byte that the server leaves undefined, in one pass.
void copyPixels(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes, int depth) {
    if (depth != 24) {
        std::memcpy(to, from, bytes);
        return;
    }
    constexpr std::uint64_t opaqueTwice = 0xFF000000FF000000;
    std::size_t i = 0;
    for (; i + 8 <= bytes; i += 8) {
        std::uint64_t two = 0;
        std::memcpy(&two, from + i, 8);
        two |= opaqueTwice;
        std::memcpy(to + i, &two, 8);
    }
    if (i < bytes) {
        std::memcpy(to + i, from + i, bytes - i);
        fillUndefinedAlpha(to + i, bytes - i);
    }
}

} // namespace

StripReader::~StripReader() {
    if (segment)
        connection.ignore(xcb_shm_detach_checked(connection.raw(), segment->serverID));
}

bool StripReader::prepare() {
    if (segment)
        return true;
    auto made = SharedSegment::make(capacity);
    if (!made)
        return false;
    made->serverID = xcb_generate_id(connection.raw());
    const bool attached =
        connection.check(xcb_shm_attach_checked(connection.raw(), made->serverID,
                                                static_cast<std::uint32_t>(made->systemID()), 0)) == 0;
    made->forgetName();
    if (attached)
        segment = std::move(made);
    return attached;
}

QImage StripReader::read(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout) {
    const auto stride = static_cast<std::size_t>(layout.bytesPerLine(rect.width()));
    if (!prepare() || stride > stripBytes)
        return {};
    QImage picture = largeImage(rect.size(), layout.imageFormat());
    if (picture.isNull())
        return {};
    // One picture of one moment: between two strips nobody else may draw.
    const bool several = stride * static_cast<std::size_t>(rect.height()) > stripBytes;
    if (several)
        connection.ignore(xcb_grab_server_checked(connection.raw()));
    const bool whole = readStrips(drawable, rect, layout, picture);
    if (several) {
        connection.ignore(xcb_ungrab_server_checked(connection.raw()));
        connection.flush();
    }
    return whole ? picture : QImage();
}

bool StripReader::readStrips(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout,
                             QImage& picture) {
    const auto stride = static_cast<std::size_t>(layout.bytesPerLine(rect.width()));
    const int rows = static_cast<int>(stripBytes / stride);
    const int count = (rect.height() + rows - 1) / rows;
    const auto heightOf = [&](int strip) { return std::min(rows, rect.height() - strip * rows); };
    const auto placeOf = [](int strip) { return static_cast<std::size_t>(strip % 2) * stripBytes; };
    const auto ask = [&](int strip) {
        return xcb_shm_get_image(
            connection.raw(), drawable, static_cast<std::int16_t>(rect.x()),
            static_cast<std::int16_t>(rect.y() + strip * rows), static_cast<std::uint16_t>(rect.width()),
            static_cast<std::uint16_t>(heightOf(strip)), allPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP,
            segment->serverID, static_cast<std::uint32_t>(placeOf(strip)));
    };
    std::uint8_t* to = picture.bits();
    xcb_shm_get_image_cookie_t asked[strips] = {ask(0), {}};
    for (int strip = 0; strip < count; ++strip) {
        // The server fills the other place while this one is waited for and copied.
        if (strip + 1 < count)
            asked[(strip + 1) % 2] = ask(strip + 1);
        if (!connection.reply(xcb_shm_get_image_reply, asked[strip % 2])) {
            if (strip + 1 < count)
                xcb_discard_reply(connection.raw(), asked[(strip + 1) % 2].sequence);
            return false;
        }
        const std::size_t bytes = stride * static_cast<std::size_t>(heightOf(strip));
        copyPixels(to, segment->memory() + placeOf(strip), bytes, layout.depth);
        to += bytes;
    }
    return true;
}

QImage largeImage(const QSize& size, QImage::Format format) {
    const std::size_t stride = static_cast<std::size_t>(size.width()) * 4;
    const std::size_t bytes = stride * static_cast<std::size_t>(size.height());
    if (bytes < 2 * largePage)
        return {size, format};
    // Enough to begin at a large page's boundary.
    const std::size_t length = bytes + largePage;
    void* start = ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (start == MAP_FAILED)
        return {};
    const auto first = (reinterpret_cast<std::uintptr_t>(start) + largePage - 1) & ~(largePage - 1);
    auto* memory = reinterpret_cast<std::uint8_t*>(first);
    ::madvise(memory, bytes / largePage * largePage, MADV_HUGEPAGE); // a wish
    return {memory,
            size.width(),
            size.height(),
            static_cast<qsizetype>(stride),
            format,
            unmap,
            new Mapping{start, length}};
}

} // namespace marrowfin::x11
