#include "platform/x11/surfaces/SurfaceContext.h"

#include "base/Outcome.h"
#include "platform/x11/surfaces/WindowRequests.h"
#include "platform/x11/surfaces/X11Surface.h"

#include <QMenu>
#include <algorithm>

namespace marrowfin::x11 {

namespace {

// What was asked of a compositor longer ago has been on the screen for a long time; a capture needn't look.
constexpr std::chrono::seconds remembered(3);

} // namespace

SurfaceContext::SurfaceContext(std::unique_ptr<Connection> connection, std::shared_ptr<GrabLink> link)
    : qt(std::move(connection)), compositor(*qt), contents(*qt), focus(*qt), keyboard(*qt), gone(*qt),
      grabs(std::move(link)), stack([this] { return visibleBackToFront(); }) {}

void SurfaceContext::add(X11Surface& surface) {
    surfaces.push_back(&surface);
}

void SurfaceContext::remove(X11Surface& surface) {
    std::erase(surfaces, &surface);
}

void SurfaceContext::bringToFront(X11Surface& surface) {
    const auto at = std::find(surfaces.begin(), surfaces.end(), &surface);
    std::rotate(at, at + 1, surfaces.end());
    raise(*qt, surface.window());
    restack(surface.level());
    stack.startAnew();
    stack.listen();
}

std::vector<const X11Surface*> SurfaceContext::visibleAbove(int level) const {
    const auto levelOf = [](const X11Surface* surface) { return platform::windowLevel(surface->level()); };
    std::vector<const X11Surface*> above;
    std::copy_if(surfaces.begin(), surfaces.end(), std::back_inserter(above), [&](const X11Surface* surface) {
        return surface->isVisible() && surface->window() && levelOf(surface) > level;
    });
    std::stable_sort(above.begin(), above.end(), [&](const X11Surface* one, const X11Surface* other) {
        return levelOf(one) < levelOf(other);
    });
    return above;
}

std::vector<xcb_window_t> SurfaceContext::visibleBackToFront() const {
    std::vector<xcb_window_t> windows;
    for (const X11Surface* surface : visibleAbove(0))
        windows.push_back(surface->window());
    return windows;
}

void SurfaceContext::add(QMenu& menu) {
    std::erase_if(menus, [](const QPointer<QMenu>& m) { return !m; });
    menus.emplace_back(&menu);
}

// Everything that belongs above the level, lowest first.
void SurfaceContext::restack(platform::SurfaceLevel from) {
    for (const X11Surface* surface : visibleAbove(platform::windowLevel(from)))
        raise(*qt, surface->window());
    for (const QPointer<QMenu>& menu : menus) {
        if (menu && menu->isVisible())
            raise(*qt, windowOf(menu));
    }
}

std::future<QImage> SurfaceContext::still(const QRect& native) {
    qt->sync();
    auto promise = std::make_shared<std::promise<QImage>>();
    grabs->queue().async([promise, grabs = grabs.get(), native] {
        const auto grabbed = grabs->grabber().and_then(
            [&](Grabber* grabber) { return grabber->grabScreen(native, WithCursor::No); });
        promise->set_value(grabbed.value_or(QImage()));
    });
    return promise->get_future();
}

void SurfaceContext::appears(xcb_window_t window) {
    if (lastVanished == window)
        lastVanished = XCB_WINDOW_NONE;
}

void SurfaceContext::vanished(xcb_window_t window, SeenGone seen) {
    lastVanished = window;
    if (seen == SeenGone::NotYet)
        unseenSince = std::chrono::steady_clock::now();
    if (visibleBackToFront().empty())
        stack.stop();
}

void SurfaceContext::departureEnded() {
    if (--departing > 0)
        return;
    for (auto& done : std::exchange(waitingForDepartures, {}))
        whenClean(std::move(done));
}

void SurfaceContext::whenClean(std::function<void()> done) {
    if (departing > 0) {
        waitingForDepartures.push_back(std::move(done));
        return;
    }
    if (!lastVanished) {
        postToMain(std::move(done));
        return;
    }
    const auto unmapped = [this, window = lastVanished, done = std::move(done)] {
        gone.whenUnmapped(window, done);
    };
    const bool unseen = std::chrono::steady_clock::now() - unseenSince < remembered;
    if (unseen && compositor.isRunning())
        gone.whenShown(unmapped);
    else
        unmapped();
}

} // namespace marrowfin::x11
