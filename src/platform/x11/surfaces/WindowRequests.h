// What the surfaces ask of the server for windows that Qt made, beyond what Qt offers. Native pixels of the
// window; sent on Qt's connection, so that the requests take effect in order with Qt's own. Main thread.
// Window 0 (a widget whose window is gone) is ignored.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QRegion>
#include <optional>

class QRect;
class QWidget;

namespace marrowfin::x11 {

// What a window shows between being mapped and its first painting.
enum class UntilPainted { WhatWasThere, Transparent };

// The native window of a widget; 0 when it has none.
xcb_window_t windowOf(const QWidget* widget);
// Where a widget's window is or is about to be, in native pixels of the root: the widget knows before the
// server says.
QRect nativeFrame(const QWidget& widget);

// Every pixel transparent, now, by one request. For windows with an alpha channel.
void clearToTransparent(const Connection& qt, xcb_window_t window);
// Off the screen, to the left of everything. A compositor may miss that a window was painted (one that it had
// only just got to know, above all), but never that it moved; and some dim a window where it is transparent
// too.
void moveOff(const Connection& qt, const QWidget& widget);
void setUntilPainted(const Connection& qt, xcb_window_t window, UntilPainted look);
// Nothing: the whole window.
void setInputShape(const Connection& qt, xcb_window_t window, const std::optional<QRegion>& native);
void setBoundingShape(const Connection& qt, xcb_window_t window, const std::optional<QRegion>& native);
void raise(const Connection& qt, xcb_window_t window);
// Our surfaces paint their own shadows, and a compositor's would be left behind to fade after the window is
// clear.
void disclaimShadow(const Connection& qt, xcb_window_t window);
// A region in points as native pixels; edges that fall between pixels go outward.
QRegion toNative(const QRegion& points, double scale);

} // namespace marrowfin::x11
