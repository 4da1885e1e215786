#include "capture/CountdownDigit.h"

#include "base/SystemFonts.h"

#include <QFontMetricsF>
#include <QPainter>

namespace marrowfin {

namespace {
constexpr double restingAlpha = 0.3;
constexpr int fadeMilliseconds = 800;

QFont digitFont() {
    return monospacedSystemFont(120, QFont::Bold);
}
} // namespace

CountdownDigit::CountdownDigit(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QEasingCurve easeInOut(QEasingCurve::BezierSpline);
    easeInOut.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    fade.setStartValue(1.0);
    fade.setEndValue(restingAlpha);
    fade.setDuration(fadeMilliseconds);
    fade.setEasingCurve(easeInOut);
    connect(&fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        currentAlpha = value.toDouble();
        update(numberRect().toAlignedRect());
    });
}

void CountdownDigit::showNumber(int number) {
    shown = QString::number(number);
    fade.stop();
    currentAlpha = 1.0;
    update();
    fade.start();
}

QRectF CountdownDigit::numberRect() const {
    const QFontMetricsF metrics(digitFont());
    const QSizeF size(metrics.horizontalAdvance(shown), metrics.height());
    return {(width() - size.width()) * 0.5, (height() - size.height()) * 0.5, size.width(), size.height()};
}

void CountdownDigit::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setOpacity(currentAlpha);
    painter.setFont(digitFont());
    painter.setPen(Qt::white);
    const QRectF rect = numberRect();
    painter.drawText(QPointF(rect.x(), rect.y() + QFontMetricsF(digitFont()).ascent()), shown);
}

} // namespace marrowfin
