#include "capture/CountdownDigit.h"

#include "base/SystemFonts.h"
#include "chrome/Timing.h"

#include <QBitmap>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

namespace marrowfin::capture {

using chrome::AnimationClock;
using chrome::TimingFunction;

namespace {
constexpr double restingAlpha = 0.3;
constexpr double fadeSeconds = 0.8;
constexpr double rim = 4; // points

QFont digitFont() {
    return monospacedSystemFont(120, QFont::Bold);
}
} // namespace

CountdownDigit::CountdownDigit(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

CountdownDigit::~CountdownDigit() {
    AnimationClock::shared().cancel(*this);
}

void CountdownDigit::showNumber(int number) {
    AnimationClock& clock = AnimationClock::shared();
    shown = QString::number(number);
    shownAt = clock.now();
    currentAlpha = 1.0;
    update();
    clock.schedule(*this, clock.nextFrame());
}

std::optional<double> CountdownDigit::tick(double now) {
    const double progress = TimingFunction::easeInEaseOut().progress((now - shownAt) / fadeSeconds);
    currentAlpha = 1.0 + (restingAlpha - 1.0) * progress;
    update(numberRect().toAlignedRect());
    return progress < 1 ? std::optional(AnimationClock::shared().nextFrame()) : std::nullopt;
}

QRectF CountdownDigit::numberRect() const {
    const QFontMetricsF metrics(digitFont());
    const QSizeF size(metrics.horizontalAdvance(shown), metrics.height());
    return {(width() - size.width()) * 0.5, (height() - size.height()) * 0.5, size.width(), size.height()};
}

QRegion CountdownDigit::outline() const {
    const QRectF rect = numberRect();
    QPainterPath form;
    form.addText(rect.x(), rect.y() + QFontMetricsF(digitFont()).ascent(), digitFont(), shown);
    QBitmap mask(size().expandedTo({1, 1}));
    mask.clear();
    QPainter painter(&mask);
    painter.setPen(QPen(Qt::color1, 2 * rim, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::color1);
    painter.drawPath(form);
    painter.end();
    // Never null, which would stand for the whole window: without a number one pixel of the dim remains.
    const QRegion region(mask);
    return region.isEmpty() ? QRegion(0, 0, 1, 1) : region;
}

void CountdownDigit::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setOpacity(currentAlpha);
    painter.setFont(digitFont());
    painter.setPen(Qt::white);
    const QRectF rect = numberRect();
    painter.drawText(QPointF(rect.x(), rect.y() + QFontMetricsF(digitFont()).ascent()), shown);
}

} // namespace marrowfin::capture
