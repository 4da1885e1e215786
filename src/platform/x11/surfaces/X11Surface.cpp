#include "platform/x11/surfaces/X11Surface.h"

#include "platform/x11/layout/QtPlace.h"
#include "platform/x11/surfaces/BackingMemory.h"
#include "platform/x11/surfaces/WindowRequests.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QPlatformSurfaceEvent>
#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace marrowfin::x11 {

namespace {

using platform::SurfaceBackdrop;
using platform::SurfaceKeyboard;
using platform::SurfaceLevel;

Qt::WindowFlags flagsFor(const platform::SurfaceSpec& traits) {
    Qt::WindowFlags flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                            Qt::BypassWindowManagerHint | Qt::NoDropShadowWindowHint;
    if (traits.keyboard == SurfaceKeyboard::None)
        flags |= Qt::WindowDoesNotAcceptFocus;
    if (traits.passesClicks)
        flags |= Qt::WindowTransparentForInput;
    return flags;
}

} // namespace

X11Surface::X11Surface(std::shared_ptr<SurfaceContext> shared, QWidget& hosted,
                       const platform::SurfaceSpec& given)
    : context(std::move(shared)), traits(given), widget(&hosted) {
    hosted.setWindowFlags(flagsFor(traits));
    isOpaque = traits.backdrop == SurfaceBackdrop::Snapshot && !isComposited();
    hosted.setAttribute(isOpaque ? Qt::WA_NoSystemBackground : Qt::WA_TranslucentBackground);
    hosted.setAttribute(Qt::WA_ShowWithoutActivating);
    hosted.setAttribute(Qt::WA_QuitOnClose, false);
    hosted.winId();
    hosted.installEventFilter(this);
    hosted.windowHandle()->installEventFilter(this);
    connect(&hosted, &QObject::destroyed, this, &X11Surface::widgetLost);
    connect(&context->compositor, &CompositorWatch::changed, this, &X11Surface::compositorChanged);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Surface::screenRemoved);
    context->add(*this);
}

X11Surface::~X11Surface() {
    leaveNow();
    context->keyboard.giveBack(this);
    context->remove(*this);
    if (widget) {
        widget->removeEventFilter(this);
        if (widget->windowHandle())
            widget->windowHandle()->removeEventFilter(this);
    }
}

xcb_window_t X11Surface::window() const {
    return windowOf(widget);
}

double X11Surface::scale() const {
    return widget ? widget->devicePixelRatioF() : 1;
}

bool X11Surface::isComposited() const {
    return context->compositor.isRunning();
}

void X11Surface::setFrame(const DesktopRect& frame) {
    given = frame;
    applyFrame();
}

// The server stamps every event with the pointer's place on the root, wherever the window is by then.
DesktopPoint X11Surface::locate(const QSinglePointEvent& event) const {
    return desktopPoint(event.globalPosition());
}

void X11Surface::applyFrame() {
    if (!widget || state == State::Leaving)
        return;
    const QRect rect = qtRect(given);
    // The screen first: sizes are scaled by the one that the window belongs to.
    QScreen* screen = screenShowing(rect);
    const double before = scale();
    if (screen && widget->windowHandle() && widget->windowHandle()->screen() != screen)
        widget->windowHandle()->setScreen(screen);
    widget->setGeometry(rect);
    if (scale() != before) {
        applyInput();
        applyOutline();
    }
}

void X11Surface::setInputRegion(const QRegion& region) {
    inputRegion = region;
    applyInput();
}

void X11Surface::applyInput() {
    if (state == State::Leaving)
        return;
    if (traits.passesClicks)
        setInputShape(*context->qt, window(), QRegion());
    else if (inputRegion.isNull())
        setInputShape(*context->qt, window(), std::nullopt);
    else
        setInputShape(*context->qt, window(), toNative(inputRegion, scale()));
    context->qt->flush();
}

void X11Surface::setOutline(const QRegion& region) {
    outline = region;
    applyOutline();
}

void X11Surface::applyOutline() {
    if (outline.isNull() || (isComposited() && !isOpaque))
        setBoundingShape(*context->qt, window(), std::nullopt);
    else
        setBoundingShape(*context->qt, window(), toNative(outline, scale()));
    context->qt->flush();
}

void X11Surface::setOpacity(double opacity) {
    if (widget)
        widget->setWindowOpacity(std::clamp(opacity, 0.0, 1.0));
}

void X11Surface::orderFront() {
    if (!widget || retired)
        return;
    if (state == State::Leaving)
        makeVisible();
    if (state == State::Out)
        show();
    context->bringToFront(*this);
    context->qt->flush();
}

void X11Surface::show() {
    const Connection& qt = *context->qt;
    // While the screen is read, the server and we get ready for the window.
    std::future<QImage> read;
    if (traits.backdrop == SurfaceBackdrop::Snapshot && (isOpaque || !isComposited()))
        read = readStill();
    // A pin may stay for days, and nothing is captured the moment it goes: not worth what keeping contents
    // costs. Nor is it for the recorder's control.
    holdsContents = windowLevel(traits.level) > windowLevel(SurfaceLevel::Pin);
    if (holdsContents)
        context->contents.hold();
    qt.flush();
    if (traits.level == SurfaceLevel::Overlay)
        prepareBackingMemory(*widget);
    if (read.valid())
        still = read.get();
    // A window that was closed comes back as another one, which has nothing of what was set before.
    widget->winId();
    widget->windowHandle()->installEventFilter(this);
    if (holdsContents && isOpaque)
        context->contents.exempt(window());
    applyFrame();
    context->appears(window());
    disclaimShadow(qt, window());
    setUntilPainted(qt, window(), untilPainted());
    applyInput();
    applyOutline();
    state = State::Shown;
    widget->show();
    takeInput();
}

UntilPainted X11Surface::untilPainted() const {
    return isComposited() && !isOpaque ? UntilPainted::Transparent : UntilPainted::WhatWasThere;
}

void X11Surface::takeInput() {
    if (traits.keyboard == SurfaceKeyboard::Exclusive)
        context->keyboard.take(this, window());
    else if (traits.keyboard == SurfaceKeyboard::OnClick)
        context->focus.borrow(window());
}

std::future<QImage> X11Surface::readStill() {
    stillFrame = nativeFrame(*widget);
    return context->still(stillFrame);
}

void X11Surface::orderOut() {
    if (state == State::Shown)
        leave();
}

Outcome<void> X11Surface::retire() {
    retired = true;
    orderOut();
    auto [settler, outcome] = makeOutcome<void>();
    context->whenClean([settler = settler] { settler.settle({}); });
    return outcome;
}

void X11Surface::giveInputBack() {
    context->keyboard.giveBack(this);
    if (traits.keyboard == SurfaceKeyboard::OnClick)
        context->focus.giveBack(window());
}

// A compositor may let a window fade after it was unmapped, from an older copy of it. So it stays mapped,
// transparent, until that is what is seen.
void X11Surface::leave() {
    giveInputBack();
    if (!isComposited()) {
        unmap(SeenGone::Yes);
        return;
    }
    makeInvisible();
    context->departureBegan();
    const auto departed = [guard = QPointer<X11Surface>(this), shared = context, number = ++departure] {
        if (guard && guard->state == State::Leaving && guard->departure == number)
            guard->unmap(SeenGone::Yes);
        shared->departureEnded();
    };
    context->gone.whenShown(departed);
}

// For when the window is about to be gone whatever we do.
void X11Surface::leaveNow() {
    if (state == State::Out)
        return;
    giveInputBack();
    if (isComposited()) {
        if (state == State::Shown)
            makeInvisible();
        context->gone.waitShown();
    }
    unmap(SeenGone::Yes);
}

void X11Surface::makeInvisible() {
    state = State::Leaving;
    if (!widget)
        return;
    updatesWereEnabled = widget->updatesEnabled();
    widget->setUpdatesEnabled(false);
    setInputShape(*context->qt, window(), QRegion());
    empty();
    // The same as moveOff(), and Qt keeps knowing where the window is.
    const QRect everything = QGuiApplication::primaryScreen()->virtualGeometry();
    widget->move(everything.left() - widget->width() - 64, widget->y());
}

// Nothing of it is left to be drawn, by a compositor too.
void X11Surface::empty() {
    if (isOpaque)
        setBoundingShape(*context->qt, window(), QRegion());
    else
        clearToTransparent(*context->qt, window());
}

void X11Surface::makeVisible() {
    state = State::Shown;
    applyFrame();
    applyOutline();
    widget->setUpdatesEnabled(updatesWereEnabled);
    applyInput();
    widget->update();
    takeInput();
}

void X11Surface::unmap(SeenGone seen) {
    const bool wasInvisible = std::exchange(state, State::Out) == State::Leaving;
    const xcb_window_t leaving = window();
    if (widget)
        widget->hide();
    if (widget && wasInvisible)
        widget->setUpdatesEnabled(updatesWereEnabled);
    if (std::exchange(holdsContents, false))
        context->contents.release();
    context->qt->flush();
    context->vanished(leaving, seen);
    still = {};
}

void X11Surface::compositorChanged() {
    if (state == State::Shown && widget) {
        const Connection& qt = *context->qt;
        setUntilPainted(qt, window(), untilPainted());
        if (isOpaque) {
            // It goes on standing over its still.
        } else if (isComposited()) {
            still = {};
        } else if (traits.backdrop == SurfaceBackdrop::Snapshot) {
            // Out of the picture without unmapping, which would end the user's drag.
            setBoundingShape(qt, window(), QRegion());
            still = readStill().get();
        }
        applyOutline();
        widget->update();
    }
    Q_EMIT compositedChanged();
}

void X11Surface::screenRemoved(const QScreen* screen) {
    if (!widget || !widget->windowHandle() || widget->windowHandle()->screen() != screen)
        return;
    if (state == State::Out)
        return;
    const bool wasShown = state == State::Shown;
    giveInputBack();
    unmap(SeenGone::NotYet);
    if (wasShown)
        Q_EMIT closed();
}

// By its owner, with or without the widget; unmapping comes with it.
void X11Surface::aboutToBeDestroyed() {
    if (state == State::Out)
        return;
    giveInputBack();
    state = State::Leaving;
    if (!isComposited())
        return;
    empty();
    if (widget)
        moveOff(*context->qt, *widget);
    context->gone.waitShown();
}

void X11Surface::widgetLost() {
    if (state != State::Out)
        unmap(SeenGone::Yes);
}

bool X11Surface::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget) {
        if (event->type() == QEvent::Paint)
            paintStill();
        // Its owner hid or closed it without us.
        if (event->type() == QEvent::Hide && state != State::Out) {
            giveInputBack();
            unmap(SeenGone::NotYet);
        }
        return false;
    }
    return filterWindow(event);
}

bool X11Surface::filterWindow(QEvent* event) {
    switch (event->type()) {
    case QEvent::Expose:
        // Qt would answer with what it painted last.
        return state == State::Leaving;
    case QEvent::MouseButtonPress:
        if (traits.keyboard == SurfaceKeyboard::OnClick && state == State::Shown)
            context->focus.borrow(window());
        return false;
    case QEvent::PlatformSurface: {
        const auto type = static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType();
        if (type == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
            aboutToBeDestroyed();
        return false;
    }
    default:
        return false;
    }
}

// Beneath what the widget is about to paint: its ground is transparent or none, so nothing erases this.
void X11Surface::paintStill() {
    if (still.isNull() && !isOpaque)
        return;
    QPainter painter(widget);
    if (still.isNull()) {
        painter.fillRect(widget->rect(), Qt::black);
        return;
    }
    // Neither has anything to blend.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QPointF shift = QPointF(stillFrame.topLeft() - nativeFrame(*widget).topLeft()) / scale();
    still.setDevicePixelRatio(scale());
    painter.drawImage(shift, still);
}

} // namespace marrowfin::x11
