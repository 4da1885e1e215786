#include "panel/CapturePanelContentView.h"

#include "base/ColorAlpha.h"
#include "chrome/Place.h"
#include "panel/PanelLayout.h"
#include "platform/Desktop.h"
#include "platform/Services.h"
#include "settings/HintCounters.h"

#include <QPaintEvent>
#include <QPainter>

namespace marrowfin::panel {

using namespace imaging;
using namespace settings;

using chrome::Animation;
using chrome::Motion;
using chrome::Property;
using chrome::TimingFunction;

namespace {
const QRectF cardInWindow(QPointF(haloLeft, haloBottom), cardSize);
const QRectF card(QPointF(0, 0), cardSize);
constexpr double thumbInset = 10;
constexpr double thumbRadius = 9;
constexpr double capsuleBottom = 10;
const QRectF captionInCard(12, 47, cardSize.width() - 24, 13);
// On hover the capture ends here, above caption and bar.
constexpr double recededBottom = 66;
constexpr double liftScale = 1.012;
constexpr double arrivalScale = 0.94;
constexpr double riseDistance = 7;

QString transformSpring() {
    return QStringLiteral("transformSpring");
}

// Of a box that is opaque `inside`.
chrome::Shadow boxShadow(const QPainterPath& path, const QRectF& inside, double opacity, double radius,
                         double below) {
    chrome::Shadow shadow;
    shadow.hidden = inside;
    shadow.opacity = opacity;
    shadow.radius = radius;
    shadow.offset = {0, -below};
    shadow.path = path;
    return shadow;
}

Animation fadeIn(double seconds) {
    return Animation::basic(Property::Opacity, 0.0, 1.0, seconds, TimingFunction::easeOut());
}
} // namespace

CapturePanelContentView::CapturePanelContentView(const Image& captured, PanelActions wishes,
                                                 BackdropKind kind)
    : image(captured), actions(std::move(wishes)),
      thumbnail(renderThumbnail(
          image,
          QRectF(QPointF(0, 0), card.adjusted(thumbInset, thumbInset, -thumbInset, -thumbInset).size()))),
      host(*this), assembly(host.root().add()),
      shadow(assembly, card, chrome::roundedRect(card, cardCornerRadius)),
      surface(assembly, card, kind, thumbnail.tint), thumbHolder(assembly.add()), recede(thumbHolder.add()),
      mount(recede.add()), sharp(buildThumbnail()), countdown(assembly, card), exported(image) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_AlwaysShowToolTips); // the window is never the active one
    setMouseTracking(true);
    setAccessibleName(QStringLiteral("Capture"));
    resize(windowSize.toSize());
    host.setSize(windowSize);
    assembly.setAnchorPoint({0, 0});
    assembly.setFrame(cardInWindow);
    assembly.setValue(Property::Opacity, 0.0);
    const HintCounters counters;
    showsHint = counters.panelCompletedDragOuts() <= 2 && counters.panelDragHintExposures() < 25;
    buildCapsule();
    buildCaption();
    applyAppearance();
    connect(&platform::services().appearance, &platform::Appearance::changed, this,
            &CapturePanelContentView::applyAppearance);
    scrollWatch = platform::services().scrollGestures.watch(
        *this, [this](const platform::ScrollStep& step) { scrolled(step); });
    exported.start([this](qint64 bytes) {
        captureByteCount = bytes;
        updateCaption();
    });
}

chrome::Layer& CapturePanelContentView::buildThumbnail() {
    thumbHolder.setFrame(card.adjusted(thumbInset, thumbInset, -thumbInset, -thumbInset));
    const QRectF area = thumbHolder.bounds();
    recede.setAnchorPoint({0.5, 1});
    recede.setFrame(area);
    // An opaque capture has an opaque backdrop; its corners are round and its edges may lie between pixels.
    const bool isOpaque = !thumbnail.sharp.isNull() && !thumbnail.sharp.hasAlphaChannel();
    const auto inside = [isOpaque](const QRectF& box, double by) {
        return isOpaque ? inset(box, by, by) : QRectF();
    };
    recede.setShadow(
        boxShadow(chrome::roundedRect(area, thumbRadius), inside(area, thumbRadius), 0.22, 5, 2));
    recede.setValue(Property::Opacity, 0.0);
    mount.setFrame(area);
    mount.setCornerRadius(thumbRadius, chrome::CornerCurve::Continuous);
    mount.setMasksToBounds(true);
    chrome::Layer& backdrop = mount.add();
    backdrop.setFrame(area);
    backdrop.setContents(thumbnail.backdrop);
    chrome::Layer& veil = mount.add();
    veil.setFrame(area);
    veil.setValue(Property::BackgroundColor, withAlpha(Qt::black, 0.18));
    chrome::Layer& picture = mount.add();
    picture.setFrame(thumbnail.fit);
    picture.setContents(thumbnail.sharp);
    QPainterPath outline;
    outline.addRect(picture.bounds());
    picture.setShadow(boxShadow(outline, inside(picture.bounds(), 2), 0.3, 4, 1.5));
    return picture;
}

void CapturePanelContentView::buildCapsule() {
    capsule = new CapsuleBarView(this);
    const auto add = [this](const QString& symbol, const QString& title) {
        return &capsule->addButton(symbol, title);
    };
    GlassActionButton* copy = add(QStringLiteral("doc.on.doc"), QStringLiteral("Copy"));
    GlassActionButton* save = add(QStringLiteral("square.and.arrow.down"), QStringLiteral("Save"));
    GlassActionButton* annotate = add(QStringLiteral("pencil.tip"), QStringLiteral("Annotate"));
    GlassActionButton* pin = add(QStringLiteral("pin"), QStringLiteral("Pin"));
    GlassActionButton* close = add(QStringLiteral("xmark"), QStringLiteral("Close"));
    connect(copy, &QAbstractButton::clicked, this, [this, copy] {
        actions.copy();
        copy->confirm();
    });
    connect(save, &QAbstractButton::clicked, this, [this, save] {
        actions.save();
        save->confirm();
    });
    connect(annotate, &QAbstractButton::clicked, this, [this] { actions.openEditor(); });
    connect(pin, &QAbstractButton::clicked, this, [this] { actions.pin(); });
    connect(close, &QAbstractButton::clicked, this, [this] { actions.close(); });
    const double width = CapsuleBarView::widthFor(static_cast<int>(capsule->buttons().size()));
    chrome::place(*capsule,
                  QRectF((card.width() - width) / 2, capsuleBottom, width, CapsuleBarView::barHeight)
                      .translated(cardInWindow.topLeft()));
    capsuleRise = std::make_unique<chrome::Rise>(*capsule, riseDistance, -riseDistance);
}

void CapturePanelContentView::buildCaption() {
    caption = new CaptionLabel(this);
    chrome::place(*caption, captionInCard.translated(cardInWindow.topLeft()));
    captionRise = std::make_unique<chrome::Rise>(*caption, riseDistance, -riseDistance);
    updateCaption();
}

void CapturePanelContentView::updateCaption() {
    caption->setCaption(marrowfin::panel::captionText(realPixelSize(image), captureByteCount, showsHint));
}

void CapturePanelContentView::overrideDragHint(bool shows) {
    hintOverridden = true;
    showsHint = shows;
    updateCaption();
}

void CapturePanelContentView::applyAppearance() {
    const ColorScheme scheme = platform::services().appearance.colorScheme();
    const bool dark = scheme == ColorScheme::Dark;
    surface.setDark(dark);
    const QColor edge = dark ? withAlpha(Qt::white, 0.18) : withAlpha(Qt::black, 0.12);
    mount.setBorder({1, edge});
    sharp.setBorder({1, edge});
    countdown.setColor(withAlpha(platform::services().appearance.accentColor(), 0.7));
    capsule->setColorScheme(scheme);
    caption->setColorScheme(scheme);
    shadow.setDark(dark);
    shadow.update(SoftShadow::Change::AtOnce);
    update();
}

void CapturePanelContentView::setComposited(bool value) {
    composited = value;
    shadow.setVisible(composited);
    surface.setOpaque(!composited);
    update();
}

QRegion CapturePanelContentView::cardRegion() const {
    return QRegion(host.toWidget(cardInWindow).toRect());
}

QRegion CapturePanelContentView::cardOutline() const {
    const QPainterPath path = chrome::roundedRect(host.toWidget(cardInWindow), cardCornerRadius);
    return QRegion(path.toFillPolygon().toPolygon());
}

void CapturePanelContentView::playArrival() {
    arrivalTime = chrome::AnimationClock::shared().now();
    assembly.setValue(Property::Opacity, 1.0);
    recede.setValue(Property::Opacity, 1.0);
    if (chrome::currentMotion() == Motion::Reduced) {
        assembly.addAnimation(QStringLiteral("arrivalFade"),
                              Animation::basic(Property::Opacity, 0.0, 1.0, 0.2, TimingFunction::linear()));
        return;
    }
    assembly.addAnimation(transformSpring(),
                          Animation::spring(Property::Transform,
                                            chrome::scaleAbout(card.center(), arrivalScale), QTransform(),
                                            {1, 340, 26}));
    assembly.addAnimation(QStringLiteral("arrivalFade"), fadeIn(0.2));
    Animation later = fadeIn(0.28);
    later.beginTime = arrivalTime + 0.09;
    later.fillMode = chrome::FillMode::Backwards;
    recede.addAnimation(QStringLiteral("thumbFade"), later);
}

void CapturePanelContentView::startCountdown(double seconds) {
    countdown.start(seconds, arrivalTime);
}

void CapturePanelContentView::freezeCountdown() {
    countdown.freeze();
}

void CapturePanelContentView::setHovered(bool value, HoverSource source) {
    if (hovered == value)
        return;
    const Motion motion = chrome::currentMotion();
    hovered = value;
    lift(hovered, motion);
    recedeCapture(hovered, motion);
    shadow.setLifted(hovered);
    shadow.update(SoftShadow::Change::Animated);
    if (capsule->isRevealed() != hovered) {
        capsule->setRevealed(hovered);
        capsuleRise->setShown(hovered, motion);
    }
    captionRise->setShown(hovered, motion);
    if (hovered)
        countHintExposure(source);
}

void CapturePanelContentView::lift(bool up, Motion motion) {
    const chrome::Value standing = assembly.presented(Property::Transform);
    const QTransform target = up ? chrome::scaleAbout(card.center(), liftScale) : QTransform();
    assembly.removeAnimation(transformSpring());
    assembly.setValue(Property::Transform, target);
    if (motion == Motion::Full)
        assembly.addAnimation(transformSpring(),
                              Animation::spring(Property::Transform, standing, target, {1, 380, 28}));
}

void CapturePanelContentView::recedeCapture(bool back, Motion motion) {
    const QString key = QStringLiteral("recede");
    const chrome::Value standing = recede.presented(Property::Transform);
    const QRectF holder = thumbHolder.frame();
    const double scale = (maxY(holder) - recededBottom) / holder.height();
    const QTransform target = back ? QTransform::fromScale(scale, scale) : QTransform();
    recede.removeAnimation(key);
    recede.setValue(Property::Transform, target);
    if (motion == Motion::Reduced)
        return;
    recede.addAnimation(
        key, back ? Animation::spring(Property::Transform, standing, target, {1, 420, 26})
                  : Animation::basic(Property::Transform, standing, target, 0.14, TimingFunction::easeIn()));
}

void CapturePanelContentView::countHintExposure(HoverSource source) {
    if (source != HoverSource::Pointer || !showsHint || hintOverridden || hintExposureCounted)
        return;
    hintExposureCounted = true;
    HintCounters().countDragHintExposure();
}

QRectF CapturePanelContentView::captureFrame() const {
    const double now = chrome::AnimationClock::shared().now();
    return recede.toSuperlayer(now)
        .mapRect(sharp.frame())
        .translated(thumbHolder.frame().topLeft() + cardInWindow.topLeft());
}

QRectF CapturePanelContentView::capsuleFrame() const {
    return chrome::placed(*capsule);
}

QRectF CapturePanelContentView::captionFrame() const {
    return chrome::placed(*caption);
}

void CapturePanelContentView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!composited)
        painter.fillRect(event->rect(), surface.plateColor());
    host.paint(painter, event->rect());
}

} // namespace marrowfin::panel
