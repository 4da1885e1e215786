#include "chrome/EditorSlabView.h"

#include "base/ColorAlpha.h"
#include "base/Geometry.h"
#include "chrome/GradientLayer.h"
#include "chrome/Place.h"
#include "chrome/ShapeLayer.h"
#include "chrome/SlabBackdrop.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QEvent>
#include <QPainter>

namespace marrowfin::chrome {

namespace {
constexpr double plateAlpha = 0.92;
} // namespace

class EditorSlabView::RimHost : public ChromePassthroughView {
public:
    explicit RimHost(QWidget* parent) : ChromePassthroughView(parent), layers(*this) {}
    StillLayers layers;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        layers.paint(painter);
    }
};

EditorSlabView::EditorSlabView(SlabGround floatsOver, double radius, QWidget* parent)
    : QWidget(parent), ground(floatsOver), cornerRadius(radius), shadow(new SlabShadowView(parent)),
      contentView(new QWidget(this)), rimHost(new RimHost(this)),
      ring(rimHost->layers.root().add<ShapeLayer>()), rimLight(rimHost->layers.root().add<GradientLayer>()),
      rimMask(rimLight.makeMask<ShapeLayer>()) {
    resize(0, 0);
    for (ShapeLayer* outline : {&ring, &rimMask}) {
        outline->setFillColor(std::nullopt);
        outline->setLine(1);
    }
    rimMask.setStrokeColor(Qt::white);
    rimLight.setPoints({0.5, 1}, {0.5, 0.3});
    connect(&platform::services().appearance, &platform::Appearance::changed, this,
            &EditorSlabView::applyAppearance);
    applyAppearance();
    takeShadowAlong();
}

EditorSlabView::~EditorSlabView() {
    delete shadow;
}

void EditorSlabView::applyAppearance() {
    scheme = platform::services().appearance.colorScheme();
    const bool dark = scheme == ColorScheme::Dark;
    rimLight.setColors(withAlpha(Qt::white, dark ? 0.38 : 0.22), withAlpha(Qt::white, 0));
    ring.setStrokeColor(dark ? withAlpha(Qt::white, 0.14) : withAlpha(Qt::black, 0.10));
    rimHost->layers.changed();
    if (shadow)
        shadow->setDark(dark);
    update();
}

void EditorSlabView::setContentSize(double width, double height, double top, double left, double bottom,
                                    double right) {
    const QRectF whole(0, 0, width + left + right, height + top + bottom);
    resize(whole.size().toSize());
    if (shadow)
        shadow->updateShadow(size(), cornerRadius);
    place(*contentView, {left, bottom, width, height});
    const QPainterPath outline = roundedRect(inset(whole, 0.5, 0.5), cornerRadius - 0.5);
    place(*rimHost, whole);
    rimHost->layers.setSize(whole.size());
    for (Layer* layer :
         {static_cast<Layer*>(&ring), static_cast<Layer*>(&rimLight), static_cast<Layer*>(&rimMask)})
        layer->setFrame(whole);
    ring.setPath(outline);
    rimMask.setPath(outline);
    rimHost->layers.changed();
    takeShadowAlong();
}

void EditorSlabView::setBackdrop(QWidget& widget, std::function<void(QPainter&, const QRect& part)> paint) {
    beneath = &widget;
    backdrop = std::make_unique<SlabBackdrop>(std::move(paint));
    update();
}

void EditorSlabView::backdropChanged(const QRegion& region) {
    if (!backdrop || !beneath || region.isEmpty())
        return;
    const QRect changed = region.boundingRect();
    backdrop->invalidate(changed);
    // As far as the blur carries a change, and a cell more because the picture is enlarged smoothly.
    constexpr int reach = SlabBackdrop::reach + 2 * SlabBackdrop::cell;
    update(changed.translated(-placeInBackdrop().topLeft()).adjusted(-reach, -reach, reach, reach) & rect());
}

QRect EditorSlabView::placeInBackdrop() const {
    return {mapTo(window(), QPoint(0, 0)) - beneath->mapTo(window(), QPoint(0, 0)), size()};
}

std::optional<QBrush> EditorSlabView::blurBrush() {
    if (isOverDesktop() || !backdrop || !beneath || beneath->window() != window())
        return std::nullopt;
    const QRect here = placeInBackdrop();
    backdrop->prepare(here, *beneath);
    const QImage picture = backdrop->picture();
    if (picture.isNull())
        return std::nullopt;
    QBrush brush(picture);
    const QPoint origin = backdrop->area().topLeft() - here.topLeft();
    brush.setTransform(
        QTransform::fromTranslate(origin.x(), origin.y()).scale(SlabBackdrop::cell, SlabBackdrop::cell));
    return brush;
}

void EditorSlabView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QPainterPath plate =
        roundedRect(rect(), cornerRadius, isOverDesktop() ? CornerCurve::Circular : CornerCurve::Continuous);
    if (const std::optional<QBrush> blur = blurBrush())
        painter.fillPath(plate, *blur);
    painter.fillPath(plate, withAlpha(systemColor(SystemColor::windowBackground, scheme), plateAlpha));
}

bool EditorSlabView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ZOrderChange:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        takeShadowAlong();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void EditorSlabView::takeShadowAlong() {
    if (!shadow)
        return;
    if (shadow->parentWidget() != parentWidget())
        shadow->setParent(parentWidget());
    if (!parentWidget())
        return;
    shadow->surround(geometry());
    shadow->stackUnder(this);
    shadow->setVisible(!isHidden());
}

} // namespace marrowfin::chrome
