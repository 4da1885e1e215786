// Images kept on the screen above other windows until the user closes them, whatever becomes of the screen.
// Owns their windows. Points, DesktopRect. Main thread.
#pragma once

#include "base/Coordinates.h"
#include "imaging/Image.h"

#include <QObject>
#include <memory>
#include <vector>

namespace marrowfin::platform {
class Surface;
struct Screen;
} // namespace marrowfin::platform

namespace marrowfin::pin {

class PinnedContentView;

// One pin: lives exactly as long as it stands in the manager's list.
class PinnedWindow {
public:
    explicit PinnedWindow(const imaging::Image& image);
    ~PinnedWindow();
    PinnedWindow(const PinnedWindow&) = delete;

    PinnedContentView& content() { return *view; }
    platform::Surface& surface() { return *window; }
    // Of the image, without the shadow around it.
    DesktopRect frame() const { return current; }
    void setFrame(const DesktopRect& frame);
    void show();
    // After these have changed: as far from the bottom as before, and back where pins come up if it is on
    // none of them any more.
    void stayOn(const std::vector<platform::Screen>& screens);

private:
    void dragged(Qt::Edges held, const QPointF& delta);

    imaging::Image image;
    std::unique_ptr<PinnedContentView> view;
    std::unique_ptr<platform::Surface> window;
    DesktopRect current;
    DesktopRect dragStart;
    DesktopPoint pressedAt;
};

class PinManager : public QObject {
    Q_OBJECT
public:
    static PinManager& shared();
    PinManager();
    ~PinManager() override;

    // Nothing happens for an image without a size.
    void pin(const imaging::Image& image);
    // In the order of pinning.
    const std::vector<std::unique_ptr<PinnedWindow>>& pinnedWindows() const { return windows; }
    // Ignored for one that is closed already.
    void close(const PinnedWindow* window);

private:
    void screensChanged();

    std::vector<std::unique_ptr<PinnedWindow>> windows;
};

} // namespace marrowfin::pin
