// A program that is started and ended on a played desktop, with its own QApplication each time. Tests only.
#pragma once

#include "app/AppDelegate.h"
#include "app/Runtime.h"
#include "platform/fake/FakeDesktop.h"

#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace marrowfin::testsupport {

class RuntimeFixture : public testing::Test {
protected:
    using Story = std::function<void()>;

    enum class Afterwards { Quit, GoOn };

    // Starts a program, tells the story in its main loop, quits, and destroys it. The exit status.
    int live(const Story& story, const QStringList& arguments = {},
             Afterwards afterwards = Afterwards::Quit) {
        options.chooseWindowSystem = [] { return Result<void>(); };
        options.openDesktop = [&](const app::DesktopRequest& request) {
            requested = request;
            return open(story, afterwards);
        };
        int status = 0;
        {
            app::Runtime living(options);
            runtime = &living;
            status = living.run(QStringList{QStringLiteral("marrowfin")} + arguments);
        }
        runtime = nullptr;
        EXPECT_EQ(QCoreApplication::instance(), nullptr);
        EXPECT_FALSE(platform::isInstalled());
        return status;
    }
    // Within a story: the launch's last step is done.
    void waitForLaunch() {
        ASSERT_TRUE(fake::waitUntil([&] { return desktop->screenAccess.requests == 1; }));
    }
    static imaging::Image picture() {
        QImage pixels(320, 200, QImage::Format_RGB32);
        pixels.fill(Qt::darkGreen);
        return imaging::Image::captured(pixels);
    }

    app::RuntimeOptions options;
    app::DesktopRequest requested;
    app::Runtime* runtime = nullptr;
    fake::FakeDesktop* desktop = nullptr; // the running program's

private:
    Result<app::OpenDesktop> open(const Story& story, Afterwards afterwards) {
        const auto played = std::make_shared<fake::FakeDesktop>();
        desktop = played.get();
        desktop->addScreen(1, {0, 0, 800, 600});
        QTimer::singleShot(0, qApp, [story, afterwards] {
            story();
            if (afterwards == Afterwards::Quit)
                QApplication::quit();
        });
        return app::OpenDesktop{played, platform::services()};
    }
};

} // namespace marrowfin::testsupport
