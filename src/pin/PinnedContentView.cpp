#include "pin/PinnedContentView.h"

#include "chrome/Place.h"
#include "imaging/Resampling.h"
#include "pin/PinCloseButton.h"
#include "pin/PinGeometry.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace marrowfin::pin {

using namespace imaging;

namespace {
constexpr double buttonInset = 8;

chrome::Shadow windowShadow(const QRectF& area) {
    chrome::Shadow shadow;
    shadow.opacity = 0.4;
    shadow.radius = 7;
    shadow.offset = {0, -3};
    shadow.path.addRect(area);
    return shadow;
}
} // namespace

PinnedContentView::PinnedContentView(const Image& pinned)
    : image(pinned), copy([this] { choosePicture(); }), host(*this), picture(host.root().add()),
      button(new PinCloseButton(this)) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Pinned capture"));
    if (!isLongToResample(image.pixels()))
        picture.setContents(image.pixels()); // the layer makes what it needs
}

PinnedContentView::~PinnedContentView() = default;

QAbstractButton* PinnedContentView::closeButton() const {
    return button;
}

QRect PinnedContentView::imageArea() const {
    const int margin = static_cast<int>(halo);
    return rect().adjusted(margin, margin, -margin, -margin);
}

void PinnedContentView::setComposited(bool value) {
    composited = value;
    layOut();
}

// As a layer keeps its own: halved as often as it stays no smaller than what is shown.
QSize PinnedContentView::pictureSize() const {
    QSize size = image.pixels().size();
    const double shown = imageArea().width() * devicePixelRatioF();
    for (QSize half = (size + QSize(1, 1)) / 2; half.width() >= shown && half != size;
         half = (size + QSize(1, 1)) / 2)
        size = half;
    return size;
}

void PinnedContentView::choosePicture() {
    const QImage& pixels = image.pixels();
    if (!isLongToResample(pixels))
        return;
    const QSize size = pictureSize();
    const QImage& shown = size == pixels.size() ? pixels : copy.of(image, size);
    if (picture.contents().cacheKey() != shown.cacheKey())
        picture.setContents(shown);
}

void PinnedContentView::layOut() {
    const QRect area = imageArea();
    host.setSize(size());
    const QRectF frame(area.x(), height() - area.y() - area.height(), area.width(), area.height());
    choosePicture();
    picture.setFrame(frame);
    picture.setShadow(composited ? windowShadow(picture.bounds()) : chrome::Shadow());
    chrome::place(*button,
                  QRectF(frame.left() + buttonInset, frame.bottom() - buttonInset - PinCloseButton::side,
                         PinCloseButton::side, PinCloseButton::side));
}

void PinnedContentView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    host.paint(painter, event->rect());
    // On a denser screen there may be too little of it; not now, because another picture is painted anew.
    if (std::exchange(paintedDensity, devicePixelRatioF()) != devicePixelRatioF())
        QMetaObject::invokeMethod(this, &PinnedContentView::choosePicture, Qt::QueuedConnection);
}

void PinnedContentView::resizeEvent(QResizeEvent*) {
    layOut();
}

void PinnedContentView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && onEscape)
        onEscape();
    else
        QWidget::keyPressEvent(event);
}

Qt::Edges PinnedContentView::edgesAt(const QPointF& position) const {
    const QRect area = imageArea();
    return pinEdgesAt(area.size(), QPointF(position.x() - area.x(), area.y() + area.height() - position.y()));
}

void PinnedContentView::showCursorFor(Qt::Edges edges) {
    const bool across = edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool along = edges & (Qt::TopEdge | Qt::BottomEdge);
    const bool rising = (edges & Qt::LeftEdge) ? bool(edges & Qt::BottomEdge) : bool(edges & Qt::TopEdge);
    if (across && along)
        setCursor(rising ? Qt::SizeBDiagCursor : Qt::SizeFDiagCursor);
    else if (across)
        setCursor(Qt::SizeHorCursor);
    else if (along)
        setCursor(Qt::SizeVerCursor);
    else
        setCursor(Qt::ArrowCursor);
}

void PinnedContentView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !imageArea().contains(event->position().toPoint()))
        return;
    isPressed = true;
    heldEdges = edgesAt(event->position());
    if (onDragBegin)
        onDragBegin(*event);
}

void PinnedContentView::mouseMoveEvent(QMouseEvent* event) {
    if (!isPressed) {
        setHovered(imageArea().contains(event->position().toPoint()));
        showCursorFor(edgesAt(event->position()));
        return;
    }
    if (onDrag)
        onDrag(heldEdges, *event);
}

void PinnedContentView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        isPressed = false;
}

void PinnedContentView::enterEvent(QEnterEvent* event) {
    setHovered(imageArea().contains(event->position().toPoint()));
}

void PinnedContentView::leaveEvent(QEvent*) {
    setHovered(false);
}

void PinnedContentView::setHovered(bool value) {
    if (std::exchange(hovered, value) != value)
        button->fadeTo(value ? 1 : 0);
}

} // namespace marrowfin::pin
