// A launched program whose menus are opened and chosen from as a person does. Tests only.
#pragma once

#include "AppFixture.h"

#include <QAction>
#include <QMenu>

namespace marrowfin::testsupport {

// The row with this title, whatever stands in its key column.
inline QAction* row(const QMenu& menu, const QString& title) {
    for (QAction* action : menu.actions())
        if (action->text().section(u'\t', 0, 0) == title)
            return action;
    ADD_FAILURE() << "no row " << title.toStdString();
    return nullptr;
}

class MenuFixture : public AppFixture {
protected:
    QMenu& opened() {
        desktop.statusBar.item->action(platform::StatusItemButton::Left);
        return *desktop.statusBar.item->shownMenu;
    }
    void choose(const QString& title) {
        QMenu& menu = opened();
        QAction* action = row(menu, title);
        menu.hide();
        action->trigger();
    }
    // The submenu's row for this many seconds.
    void chooseTimer(int seconds) {
        QMenu& menu = opened();
        QMenu& submenu = *row(menu, QStringLiteral("Self-Timer"))->menu();
        QAction* action = row(submenu, QStringLiteral("%1 seconds").arg(seconds));
        menu.hide();
        action->trigger();
    }
};

} // namespace marrowfin::testsupport
