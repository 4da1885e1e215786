#include "platform/freedesktop/FreedesktopStatusBar.h"

#include "base/SystemColors.h"

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QMenu>
#include <QPalette>
#include <QSystemTrayIcon>

namespace marrowfin::freedesktop {

using namespace platform;

namespace {

class TrayItem : public StatusItem {
public:
    TrayItem() { tray.show(); }

    bool hasButton() const override { return true; }
    void setIcon(IconDrawer drawer) override {
        QIcon icon;
        // The sizes that trays ask for, each drawn for itself.
        for (const int side : {16, 18, 22, 24, 32, 36, 44, 48, 64})
            icon.addPixmap(QPixmap::fromImage(drawer(side, true)));
        tray.setIcon(icon);
    }
    void setToolTip(const QString& text) override { tray.setToolTip(text); }
    void setAction(Action action) override {
        QObject::connect(&tray, &QSystemTrayIcon::activated, &tray,
                         [action = std::move(action)](QSystemTrayIcon::ActivationReason reason) {
                             if (reason == QSystemTrayIcon::Trigger)
                                 action(StatusItemButton::Left);
                             else if (reason == QSystemTrayIcon::Context)
                                 action(StatusItemButton::Right);
                         });
    }
    void popUp(QMenu& menu) override { menu.popup(QCursor::pos()); }

private:
    QSystemTrayIcon tray;
};

} // namespace

std::unique_ptr<StatusItem> FreedesktopStatusBar::makeItem() {
    return std::make_unique<TrayItem>();
}

} // namespace marrowfin::freedesktop
