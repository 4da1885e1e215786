// Keys and clicks for windows of our own, on the road that the window system's take, so that the program can
// examine itself. Points, the widget's own coordinates (y down). Main thread.
#pragma once

#include "base/Outcome.h"

#include <QPointF>
#include <QString>
#include <Qt>

class QWidget;

namespace marrowfin::platform {

struct PostedKey {
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers;
    QString text;
};

enum class PostedMouse { Press, Move, Release };

class InputPoster {
public:
    virtual ~InputPoster() = default;
    // Pressed and let go, to the widget's window, whoever has the desktop's keyboard. Settles when the window
    // has had it.
    virtual Outcome<void> postKey(QWidget& widget, const PostedKey& key) = 0;
    // With the left button.
    virtual Outcome<void> postMouse(QWidget& widget, PostedMouse kind, const QPointF& position) = 0;
};

} // namespace marrowfin::platform
