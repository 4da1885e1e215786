#include "pin/PinCloseButton.h"

#include "chrome/Symbols.h"

#include <QPainter>

namespace marrowfin::pin {

namespace {
constexpr double fadeSeconds = 0.15;
} // namespace

PinCloseButton::PinCloseButton(QWidget* parent)
    : QAbstractButton(parent), effect(new chrome::PoseEffect(*this, 0)) {
    resize(side, side);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    setToolTip(QStringLiteral("Unpin (Escape)"));
    setAccessibleName(QStringLiteral("Unpin"));
    effect->setPose({{}, 0});
}

PinCloseButton::~PinCloseButton() {
    chrome::AnimationClock::shared().cancel(*this);
}

void PinCloseButton::fadeTo(double alpha) {
    chrome::AnimationClock& clock = chrome::AnimationClock::shared();
    from = effect->pose().opacity;
    to = alpha;
    start = clock.now();
    clock.schedule(*this, clock.nextFrame());
}

std::optional<double> PinCloseButton::tick(double now) {
    const double progress = chrome::TimingFunction::easeInEaseOut().progress((now - start) / fadeSeconds);
    effect->setPose({{}, from + (to - from) * progress});
    return progress < 1 ? std::optional(chrome::AnimationClock::shared().nextFrame()) : std::nullopt;
}

void PinCloseButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // White alone is lost on a white image: a soft dark disc carries it.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 110));
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    const QImage symbol = chrome::symbolImage(QStringLiteral("xmark.circle.fill"), side, Qt::white,
                                              painter.deviceTransform().m11());
    painter.drawImage(QPointF(0, 0), symbol);
}

} // namespace marrowfin::pin
