// The clipboard through QClipboard. What we offer of an image is its one PNG encoding; pixels in other forms
// are made only when a program asks for them. At most one write is under way (its encoding is awaited, or the
// server's time): a later call takes its place. Main thread; what others offer is read and decoded on a
// queue of its own.
#pragma once

#include "platform/Pasteboard.h"

#include "base/SerialQueue.h"
#include "platform/x11/server/Connection.h"

#include <atomic>
#include <memory>

class QMimeData;

namespace marrowfin::x11 {

class X11Pasteboard : public platform::Pasteboard {
public:
    // The connection is the toolkit's.
    explicit X11Pasteboard(const Connection& connection);
    ~X11Pasteboard() override;

    void clearContents() override;
    Outcome<void> writeImage(const imaging::Image& image) override;
    Outcome<void> writeText(const QString& text) override;
    Outcome<std::optional<imaging::Image>> readImage() override;
    void handOver() override;

private:
    struct Write;
    void offerIfStillWanted(const std::weak_ptr<Write>& write);
    void supersedePendingWrite();

    const Connection& connection;
    // Set from the call until the contents are on the clipboard.
    std::shared_ptr<Write> pending;
    // Waits for other programs, over a connection of its own; what it finds is decoded there too.
    SerialQueue reading;
    const std::shared_ptr<std::atomic<bool>> ending = std::make_shared<std::atomic<bool>>(false);
};

} // namespace marrowfin::x11
