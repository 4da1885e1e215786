// A played desktop with one display and cards on it; time stands still until a test moves it. Main thread.
#pragma once

#include "base/Log.h"
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "editor/EditorWindowController.h"
#include "panel/CapturePanelController.h"
#include "panel/PanelLayout.h"
#include "pin/PinManager.h"
#include "platform/fake/FakeDesktop.h"
#include "settings/Defaults.h"
#include "settings/HintCounters.h"
#include "settings/SettingsStore.h"
#include "support/Input.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace marrowfin::panel {

class PanelFixture : public testing::Test {
protected:
    PanelFixture() {
        settings::Defaults::useFile(QString());
        chrome::AnimationClock::shared().hold();
        controller().setRequests(
            {makeEditor, [](const imaging::Image& image) { pin::PinManager::shared().pin(image); }});
    }
    ~PanelFixture() override { SharedObjects::destroyAll(); }

    // A display of this frame with no bars; the pointer is put on it.
    void addDisplay(std::uint32_t id, const QRectF& frame, double bottomStrut = 0, double topStrut = 0) {
        desktop.addScreen(id, frame, 1, bottomStrut, topStrut);
        pointAt(frame.center());
    }
    void pointAt(const QPointF& point) { desktop.screens.pointer = DesktopPoint{point}; }

    static imaging::Image capture(int width = 400, int height = 200) {
        QImage pixels(width, height, QImage::Format_RGB32);
        pixels.fill(QColor(40, 120, 200));
        return imaging::Image::captured(pixels);
    }
    CapturePanel* present(const imaging::Image& image = capture()) {
        controller().present(image, [this](const imaging::Image& saved) { savedImages.push_back(saved); });
        return controller().panels().empty() ? nullptr : controller().panels().back();
    }
    static CardEditor makeEditor(const imaging::Image& image, const std::function<void()>& windowWillClose) {
        const std::shared_ptr<editor::EditorWindowController> made =
            editor::EditorWindowController::make(image);
        editor::EditorWindowController* controller = made.get();
        QObject::connect(controller, &editor::EditorWindowController::windowWillClose, windowWillClose);
        return {made, [controller] { controller->showWindow(); }};
    }
    // The editor that was opened from a card as this one of those still open.
    std::shared_ptr<editor::EditorWindowController> editorAt(std::size_t index) {
        return std::static_pointer_cast<editor::EditorWindowController>(
            controller().editors().at(index)->controller);
    }
    CapturePanelController& controller() { return CapturePanelController::shared(); }
    void pass(double seconds) {
        chrome::AnimationClock::shared().advance(seconds);
        QCoreApplication::processEvents();
    }
    // A card that has arrived and whose file is written.
    CapturePanel* presentSettled(const imaging::Image& image = capture()) {
        CapturePanel* panel = present(image);
        pass(1);
        EXPECT_TRUE(fake::waitUntil([&] { return panel->content().dragExport().isReady(); }));
        return panel;
    }
    // A place on the card, in its own points (y up), as a place in its widget.
    static QPointF onCard(double x, double y) { return {haloLeft + x, haloTop + cardSize.height() - y}; }
    // What is under the pointer there: a button that takes the mouse, or the card.
    static QWidget& under(CapturePanelContentView& view, const QPointF& place) {
        QWidget* child = view.childAt(place.toPoint());
        return child ? *child : view;
    }
    static void clickAt(CapturePanelContentView& view, const QPointF& place) {
        QWidget& target = under(view, place);
        testsupport::clickMouse(target, target.mapFrom(&view, place));
    }
    // The pointer comes to this place of the window, without a button.
    static void pointAtPlace(CapturePanelContentView& view, const QPointF& place) {
        QEnterEvent event(place, place, place);
        QApplication::sendEvent(&view, &event);
    }
    static void pointAway(CapturePanelContentView& view) {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&view, &event);
    }
    static GlassActionButton* button(CapturePanelContentView& view, const QString& title) {
        for (GlassActionButton* candidate : view.capsuleBar().buttons())
            if (candidate->toolTip() == title)
                return candidate;
        return nullptr;
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
    std::vector<imaging::Image> savedImages;
};

} // namespace marrowfin::panel
