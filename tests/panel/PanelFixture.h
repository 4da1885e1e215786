// A played desktop with one display and cards on it; time stands still until a test moves it. Main thread.
#pragma once

#include "base/Log.h"
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "panel/CapturePanelController.h"
#include "panel/PanelLayout.h"
#include "platform/fake/FakeDesktop.h"
#include "settings/Defaults.h"
#include "settings/SettingsStore.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace marrowfin {

class PanelFixture : public testing::Test {
protected:
    PanelFixture() {
        Defaults::useFile(QString());
        chrome::AnimationClock::shared().hold();
    }
    ~PanelFixture() override { SharedObjects::destroyAll(); }

    // A display of this frame with no bars; the pointer is put on it.
    void addDisplay(std::uint32_t id, const QRectF& frame, double bottomStrut = 0, double topStrut = 0) {
        desktop.addScreen(id, frame, 1, bottomStrut, topStrut);
        pointAt(frame.center());
    }
    void pointAt(const QPointF& point) { desktop.screens.pointer = DesktopPoint{point}; }

    static Image capture(int width = 400, int height = 200) {
        QImage pixels(width, height, QImage::Format_RGB32);
        pixels.fill(QColor(40, 120, 200));
        return Image::captured(pixels);
    }
    CapturePanel* present(const Image& image = capture()) {
        controller().present(image, [this](const Image& saved) { savedImages.push_back(saved); });
        return controller().panels().empty() ? nullptr : controller().panels().back();
    }
    CapturePanelController& controller() { return CapturePanelController::shared(); }
    void pass(double seconds) {
        chrome::AnimationClock::shared().advance(seconds);
        QCoreApplication::processEvents();
    }
    // The card of a panel where it stands now.
    static QRectF card(const CapturePanel* panel) { return cardFrame(panel->frame()).rect; }
    std::vector<QRectF> cards() {
        std::vector<QRectF> result;
        for (const CapturePanel* panel : controller().panels())
            result.push_back(card(panel));
        return result;
    }

    fake::FakeDesktop desktop;
    std::vector<Image> savedImages;
};

} // namespace marrowfin
