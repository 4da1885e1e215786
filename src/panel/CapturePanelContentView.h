// The card inside its window: the capture, fitted, on a rounded plate, and its close button. Points; the
// widget's own coordinates (y down) for regions. Main thread.
#pragma once

#include "base/Image.h"
#include "panel/PanelActions.h"

#include <QPixmap>
#include <QRegion>
#include <QWidget>

class QToolButton;

namespace marrowfin {

class CapturePanelContentView : public QWidget {
    Q_OBJECT
public:
    CapturePanelContentView(const Image& image, PanelActions actions);

    // Where the card takes the mouse; the halo around it doesn't.
    QRegion cardRegion() const;
    // The card's rounded outline, for desktops that can't show a translucent halo.
    QRegion cardOutline() const;

    void playArrival() {}
    void startCountdown(double) {}
    void freezeCountdown() {}
    bool isInDragSession() const { return false; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void setHovered(bool hovered);

    PanelActions actions;
    QImage thumbnail;
    QSize fitted;
    QToolButton* closeButton = nullptr;
    bool pressed = false;
    bool isHovered = false;
};

} // namespace marrowfin
