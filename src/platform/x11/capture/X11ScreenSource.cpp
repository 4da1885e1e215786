#include "platform/x11/capture/X11ScreenSource.h"

#include "platform/x11/capture/X11ScreenStream.h"
#include "platform/x11/layout/WindowQuery.h"

namespace marrowfin::x11 {

using namespace platform;

namespace {

Result<ShareableContent> readContent(GrabLink& link) {
    const auto grabber = link.grabber();
    if (!grabber)
        return tl::unexpected(grabber.error());
    const Connection& connection = (*grabber)->server();
    const auto layout = link.layouts().current();
    ShareableContent content;
    for (const NativeDisplay& display : layout->displays())
        content.displays.push_back(
            {display.id, layout->frame(display), display.points.width(), display.native.width()});
    const DesktopWindows desktop = readDesktopWindows(connection);
    std::vector<WindowFacts> facts = readWindows(connection, desktop.backToFront);
    addMissingPids(connection, facts);
    if (connection.isLost())
        return failure(QStringLiteral("The connection to the X server is lost."));
    content.windows = pickableWindows(facts, desktop.currentWorkspace, *layout);
    return content;
}

} // namespace

X11ScreenSource::X11ScreenSource(std::shared_ptr<GrabLink> given) : link(std::move(given)) {
    link->queue().async([link = link.get()] {
        if (const auto grabber = link->grabber())
            (*grabber)->warmUp();
    });
}

Outcome<ShareableContent> X11ScreenSource::content() {
    auto [settler, outcome] = makeOutcome<ShareableContent>();
    link->queue().async([link = link, settler = settler] {
        Result<ShareableContent> content = readContent(*link);
        if (!content)
            link->failed();
        settler.settle(std::move(content));
    });
    return outcome;
}

std::shared_ptr<ScreenStream> X11ScreenSource::makeStream(const ContentFilter& filter,
                                                          const StreamConfiguration& configuration) {
    return std::make_shared<X11ScreenStream>(link, filter, configuration);
}

} // namespace marrowfin::x11
