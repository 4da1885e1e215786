#include "capture/CaptureGeometry.h"

namespace marrowfin::capture {

using namespace platform;

std::optional<Display> displayFor(const ScreenRect& rect, const std::vector<Display>& displays) {
    for (const Display& display : displays)
        if (containsRect(display.frame.rect, rect.rect))
            return display;
    if (displays.empty())
        return std::nullopt;
    return displays.front();
}

double displayScale(const Display& display) {
    return display.modeWidth >= 1 ? static_cast<double>(display.pixelWidth) / display.modeWidth : 1.0;
}

double windowScale(const Window& window, const std::vector<Display>& displays,
                   std::optional<double> mainBackingScale) {
    const Display* kept = nullptr;
    double keptArea = 0;
    for (const Display& display : displays) {
        const std::optional<QRectF> common = intersection(display.frame.rect, window.frame.rect);
        const double area = common ? common->width() * common->height() : 0;
        // Strictly larger: the earlier display wins a tie.
        if (!kept || area > keptArea) {
            kept = &display;
            keptArea = area;
        }
    }
    if (!kept || !intersection(kept->frame.rect, window.frame.rect))
        return mainBackingScale.value_or(2.0);
    return displayScale(*kept);
}

StreamConfiguration rectConfiguration(const ScreenRect& rect, const Display& display) {
    const QRectF local = offset(rect.rect, -minX(display.frame.rect), -minY(display.frame.rect));
    const double scale = displayScale(display);
    StreamConfiguration configuration;
    configuration.captureResolution = CaptureResolution::Automatic;
    configuration.sourceRect = local;
    configuration.width = roundedToInt(scale * local.width());
    configuration.height = roundedToInt(scale * local.height());
    configuration.showsCursor = true;
    return configuration;
}

StreamConfiguration windowConfiguration(const Window& window, double scale) {
    StreamConfiguration configuration;
    configuration.captureResolution = CaptureResolution::Best;
    configuration.width = roundedToInt(scale * window.frame.rect.width());
    configuration.height = roundedToInt(scale * window.frame.rect.height());
    configuration.showsCursor = false;
    return configuration;
}

} // namespace marrowfin::capture
