// What cards ask of the rest of the program, which hands it in once. Main thread.
#pragma once

#include "imaging/Image.h"

#include <QObject>
#include <functional>
#include <memory>

namespace marrowfin::panel {

struct CardEditor {
    std::shared_ptr<QObject> controller; // held until its window closes
    std::function<void()> show;
};

struct CardRequests {
    // Builds an editor that isn't shown yet; the block is to run when its window is about to close.
    std::function<CardEditor(const imaging::Image& image, std::function<void()> windowWillClose)> makeEditor;
    std::function<void(const imaging::Image& image)> pin;
};

} // namespace marrowfin::panel
