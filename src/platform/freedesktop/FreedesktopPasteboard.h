// The clipboard through QClipboard. What we offer of an image is its one PNG encoding; pixels in other forms
// are made only when a program asks for them. At most one write waits for its encoding: a later call takes
// its place. Main thread; decoding of what others offer runs on a queue of its own.
#pragma once

#include "platform/Pasteboard.h"

#include "base/SerialQueue.h"

#include <QStringList>
#include <memory>

namespace marrowfin::freedesktop {

class FreedesktopPasteboard : public platform::Pasteboard {
public:
    FreedesktopPasteboard();
    ~FreedesktopPasteboard() override;

    void clearContents() override;
    Outcome<void> writeImage(const Image& image) override;
    Outcome<void> writeText(const QString& text) override;
    Outcome<std::optional<Image>> readImage() override;
    void handOver() override;

private:
    struct PendingWrite {
        Image image;
        Settler<void> settler;
    };
    void offer(const Image& image, const Settler<void>& settler);
    void supersedePendingWrite();

    // Set while an image's encoding is awaited.
    std::shared_ptr<PendingWrite> pending;
    SerialQueue decoding;
};

} // namespace marrowfin::freedesktop
