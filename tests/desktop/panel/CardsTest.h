// Cards on the session's own desktop, seen by another program: its clock stands only where a test stops it.
// Points of a card are its own (y up), those of the screen native pixels.
#pragma once

#include "app/Introductions.h"
#include "desktop/x11surfaces/SessionTest.h"
#include "panel/CapturePanelController.h"
#include "panel/PanelLayout.h"
#include "platform/Screens.h"
#include "settings/Defaults.h"
#include "settings/SettingsStore.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace marrowfin {

class CardsTest : public SessionTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(SessionTest::SetUp());
        settings::Defaults::useFile(QString());
        settings::SettingsStore::shared().setPanelAutoClose(settings::PanelAutoClose::never);
        app::introduceCards();
        other.movePointer({600, 60});
    }
    void TearDown() override {
        if (session) {
            controller().dismissAll(panel::Animated::No);
            QCoreApplication::processEvents();
        }
        SessionTest::TearDown();
    }

    panel::CapturePanelController& controller() { return panel::CapturePanelController::shared(); }
    panel::CapturePanel* present() {
        QImage pixels(640, 400, QImage::Format_RGB32);
        pixels.fill(captureColor);
        controller().present(imaging::Image::captured(pixels), [](const imaging::Image&) {});
        panel::CapturePanel* panel = controller().panels().back();
        // Until the capture itself is to be seen: then the card has arrived.
        EXPECT_TRUE(desk::waitFor([&] { return other.pixel(onScreen(panel, 120, 90)) == captureColor; }));
        return panel;
    }
    static double scale() { return qGuiApp->devicePixelRatio(); }
    // A place on the desktop (points, y up) in pixels; every monitor of a lane has one scale.
    static QPoint onScreen(const QPointF& desktop) {
        const QPointF down(desktop.x(), platform::services().screens.primaryHeight() - desktop.y());
        return (down * scale()).toPoint();
    }
    static QPoint onScreen(const panel::CapturePanel* panel, double x, double y) {
        return onScreen(panel::cardFrame(panel->frame()).rect.topLeft() + QPointF(x, y));
    }
    static int roomOn(const platform::Screen& screen) {
        int count = 1;
        while (count < panel::maximumCardsPerDisplay &&
               panel::stackHasRoom(screen.visibleFrame, count, panel::cardSize.height()))
            ++count;
        return count;
    }

    const QColor captureColor{200, 60, 30};
};

} // namespace marrowfin
