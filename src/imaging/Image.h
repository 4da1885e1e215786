// An immutable picture that is shared, never copied: pixels, a size in points, and one PNG encoding that the
// history, the clipboard and drag-out all use. Copies of an Image are the same image (==); equal pixels alone
// are not. Safe to read from any thread.
#pragma once

#include "base/Outcome.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QSizeF>
#include <memory>

namespace marrowfin::imaging {

class Image {
public:
    // No image: null, no size.
    Image() = default;
    // A captured image: one size unit per pixel, whatever the display's scale. The pixels' device pixel ratio
    // is 1.
    static Image captured(QImage pixels);
    // An image of known density: size in points, pixels as they are.
    static Image withSize(QImage pixels, QSizeF size);

    bool isNull() const { return state == nullptr; }
    // Null pixels when the image is null.
    const QImage& pixels() const;
    // In points. (0, 0) when the image is null.
    QSizeF size() const;

    // Starts the one PNG encoding on the encoding queue, if nobody has yet.
    void startEncoding() const;
    // The PNG, when it is there; empty for an image without pixels.
    Outcome<QByteArray> encoded() const;
    // The PNG, waiting for it if it isn't there yet. Main thread callers have started the encoding long
    // before.
    QByteArray png() const;
    bool isEncoded() const;

    friend bool operator==(const Image& a, const Image& b) { return a.state == b.state; }

private:
    struct State;
    explicit Image(std::shared_ptr<State> state) : state(std::move(state)) {}
    std::shared_ptr<State> state;
};

// The true pixel count of an image of any origin; nothing when it has no pixels.
std::optional<QSize> realPixelSize(const Image& image);

} // namespace marrowfin::imaging
