// Which windows can be picked, in which order and with which frame: the rules, on plain facts. Facts are in
// native pixels of the root, the list in points. Values; any thread.
#pragma once

#include "platform/ScreenSource.h"
#include "platform/x11/layout/DisplayLayout.h"

#include <QMargins>
#include <QRect>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace marrowfin::x11 {

enum class WindowKind { Ordinary, Desktop, Dock };

struct WindowFacts {
    std::uint32_t id = 0;
    // On the screen, with all its ancestors, and able to show pixels.
    bool viewable = false;
    bool hidden = false; // minimised
    WindowKind kind = WindowKind::Ordinary;
    // Nothing where the window manager has no workspaces.
    std::optional<std::uint32_t> workspace;
    QRect client; // without its border
    int border = 0;
    QMargins frameExtents;     // the window manager's decorations
    QMargins invisibleExtents; // margins that the program itself keeps for its shadow
    std::optional<std::int64_t> pid;
    QString title;
};

// Client, border and decorations in, invisible shadow margins out.
QRect visibleFrame(const WindowFacts& window);
bool canBePicked(const WindowFacts& window, std::optional<std::uint32_t> currentWorkspace);
// Back to front in, front to back out.
std::vector<platform::Window> pickableWindows(const std::vector<WindowFacts>& backToFront,
                                              std::optional<std::uint32_t> currentWorkspace,
                                              const DisplayLayout& layout);

} // namespace marrowfin::x11
