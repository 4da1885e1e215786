#include "platform/x11/layout/WindowList.h"

#include <ranges>

namespace marrowfin::x11 {

namespace {
constexpr std::uint32_t onEveryWorkspace = 0xFFFFFFFF;
}

QRect visibleFrame(const WindowFacts& window) {
    const QMargins border(window.border, window.border, window.border, window.border);
    return window.client.marginsAdded(border)
        .marginsAdded(window.frameExtents)
        .marginsRemoved(window.invisibleExtents);
}

bool canBePicked(const WindowFacts& window, std::optional<std::uint32_t> currentWorkspace) {
    if (!window.viewable || window.hidden || window.kind != WindowKind::Ordinary)
        return false;
    if (!window.workspace || !currentWorkspace || *window.workspace == onEveryWorkspace)
        return true;
    return *window.workspace == *currentWorkspace;
}

std::vector<platform::Window> pickableWindows(const std::vector<WindowFacts>& backToFront,
                                              std::optional<std::uint32_t> currentWorkspace,
                                              const DisplayLayout& layout) {
    std::vector<platform::Window> list;
    for (const WindowFacts& window : backToFront | std::views::reverse) {
        if (!canBePicked(window, currentWorkspace))
            continue;
        const QRect frame = visibleFrame(window);
        if (frame.isEmpty())
            continue;
        list.push_back({window.id, window.pid, layout.toPoints(frame), window.title});
    }
    return list;
}

} // namespace marrowfin::x11
