#include "platform/x11/surfaces/TracelessMenu.h"

#include "platform/x11/surfaces/WindowRequests.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <utility>

namespace marrowfin::x11 {

void TracelessMenu::adopt(const std::shared_ptr<SurfaceContext>& context, QMenu& menu) {
    auto* known = menu.findChild<TracelessMenu*>(QString(), Qt::FindDirectChildrenOnly);
    if (!known)
        known = new TracelessMenu(context, menu);
    known->adoptSubmenus();
}

TracelessMenu::TracelessMenu(std::shared_ptr<SurfaceContext> shared, QMenu& adopted)
    : QObject(&adopted), context(std::move(shared)), menu(adopted) {
    menu.setAttribute(Qt::WA_TranslucentBackground);
    menu.installEventFilter(this);
    connect(&menu, &QMenu::aboutToShow, this, &TracelessMenu::adoptSubmenus);
    context->add(menu);
}

TracelessMenu::~TracelessMenu() {
    if (shown)
        unmapped();
}

void TracelessMenu::adoptSubmenus() {
    for (const QAction* action : menu.actions()) {
        if (action->menu())
            adopt(context, *action->menu());
    }
}

bool TracelessMenu::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
        aboutToBeMapped();
        break;
    case QEvent::Close:
        aboutToBeUnmapped();
        break;
    case QEvent::Hide:
        unmapped();
        break;
    default:
        break;
    }
    return false;
}

void TracelessMenu::aboutToBeMapped() {
    if (shown)
        return;
    shown = windowOf(&menu);
    seen = SeenGone::NotYet;
    const Connection& qt = *context->qt;
    context->appears(shown);
    context->contents.hold();
    disclaimShadow(qt, shown);
    const bool composited = context->compositor.isRunning();
    setUntilPainted(qt, shown, composited ? UntilPainted::Transparent : UntilPainted::WhatWasThere);
    raise(qt, shown);
}

// Qt unmaps the menu at once, and what a compositor makes of a window that it hears of late is its own
// affair: so it sees the cleared one first.
void TracelessMenu::aboutToBeUnmapped() {
    if (!shown || !context->compositor.isRunning())
        return;
    clearToTransparent(*context->qt, shown);
    moveOff(*context->qt, menu);
    context->gone.waitShown();
    seen = SeenGone::Yes;
}

void TracelessMenu::unmapped() {
    if (!shown)
        return;
    context->vanished(std::exchange(shown, XCB_WINDOW_NONE), seen);
    context->contents.release();
    context->qt->flush();
}

} // namespace marrowfin::x11
