// A launched program on a played desktop. Tests only.
#pragma once

#include "app/AppDelegate.h"
#include "history/CaptureHistory.h"
#include "panel/CapturePanelController.h"
#include "platform/fake/FakeDesktop.h"
#include "settings/Defaults.h"
#include "settings/SettingsStore.h"

#include <gtest/gtest.h>

namespace marrowfin::testsupport {

class AppFixture : public testing::Test {
protected:
    AppFixture() {
        settings::Defaults::useFile(desktop.folders.configuration() +
                                    QStringLiteral("/Marrowfin/defaults.json"));
        history::CaptureHistory::useFolder(historyFolder());
    }
    QString historyFolder() const {
        return desktop.folders.applicationSupport() + QStringLiteral("/Marrowfin/History");
    }
    QString picturesFolder() const { return *desktop.folders.pictures() + QStringLiteral("/Marrowfin"); }

    void launch() {
        bool done = false;
        QObject::connect(&delegate, &app::AppDelegate::launched, &delegate, [&] { done = true; });
        delegate.applicationDidFinishLaunching();
        ASSERT_TRUE(fake::waitUntil([&] { return done; }));
    }
    // Publishes an image as a flow does and waits until it has been routed.
    void capture(const imaging::Image& image);
    static imaging::Image picture(QColor color = Qt::darkGreen);

    fake::FakeDesktop desktop;
    app::AppDelegate delegate;
};

} // namespace marrowfin::testsupport
