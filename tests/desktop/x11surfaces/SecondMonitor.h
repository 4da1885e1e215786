// The second monitor of the lane "monitors": a test unplugs it, and its end plugs it in again. In the
// toolkit's points.
#pragma once

#include "desktop/x11surfaces/Desk.h"

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <gtest/gtest.h>

namespace marrowfin::desk {

class SecondMonitor {
public:
    SecondMonitor() {
        const QList<QScreen*> screens = QGuiApplication::screens();
        EXPECT_EQ(screens.size(), 2);
        if (screens.size() == 2)
            area = screens.at(1)->geometry();
    }
    ~SecondMonitor() {
        if (!unplugged)
            return;
        const QString frame =
            QStringLiteral("%1/200x%2/250+%3+0").arg(area.width()).arg(area.height()).arg(area.x());
        QProcess::execute("xrandr", {"--setmonitor", "R", frame, "none"});
        EXPECT_TRUE(waitFor([] { return QGuiApplication::screens().size() == 2; }));
    }
    SecondMonitor(const SecondMonitor&) = delete;
    SecondMonitor& operator=(const SecondMonitor&) = delete;

    const QRect& frame() const { return area; }
    void unplug() {
        unplugged = true;
        QProcess::execute("xrandr", {"--delmonitor", "R"});
        EXPECT_TRUE(waitFor([] { return QGuiApplication::screens().size() == 1; }));
    }

private:
    QRect area;
    bool unplugged = false;
};

} // namespace marrowfin::desk
