// A pin's inside: the image, its shadow around it, and a close button that shows only under the pointer. It
// asks its owner to move, resize and close it. Points, the widget's own (y down). Main thread.
#pragma once

#include "chrome/LayerHost.h"
#include "chrome/PoseEffect.h"
#include "imaging/Image.h"
#include "imaging/ScaledCopy.h"

#include <QAbstractButton>
#include <QPointer>
#include <QSinglePointEvent>
#include <QWidget>
#include <functional>

namespace marrowfin::pin {

class PinCloseButton;

class PinnedContentView : public QWidget {
    Q_OBJECT
public:
    // Around the image, for the shadow; it lets clicks through.
    static constexpr double halo = 24;

    explicit PinnedContentView(const imaging::Image& image);
    ~PinnedContentView() override;

    std::function<void()> onEscape;
    // A press, before any drag: the frame to drag from is the one of now.
    std::function<void(const QSinglePointEvent&)> onDragBegin;
    // The pointer moved since, holding these edges (none: the whole pin). How far it went only the surface
    // knows.
    std::function<void(Qt::Edges, const QSinglePointEvent&)> onDrag;

    QAbstractButton* closeButton() const;
    // The image's own area, without the halo.
    QRect imageArea() const;
    void setComposited(bool composited);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    Qt::Edges edgesAt(const QPointF& position) const;
    void showCursorFor(Qt::Edges edges);
    void layOut();
    // A large image is shown from a copy near the size in which it stands.
    void choosePicture();
    QSize pictureSize() const;
    // The shadow around the image doesn't count.
    void setHovered(bool hovered);

    imaging::Image image;
    imaging::ScaledCopy copy;
    chrome::LayerHost host;
    chrome::Layer& picture;
    QPointer<PinCloseButton> button;
    double paintedDensity = 1;
    bool composited = true;
    bool hovered = false;
    Qt::Edges heldEdges;
    bool isPressed = false;
};

} // namespace marrowfin::pin
