#include "capture/CountdownDigit.h"

#include "base/SystemFonts.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

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
        update();
    });
}

void CountdownDigit::show(int number) {
    shown = QString::number(number);
    const QFontMetricsF metrics(digitFont());
    const QSizeF size(metrics.horizontalAdvance(shown), metrics.height());
    resize(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height())));
    move(static_cast<int>((parentWidget()->width() - size.width()) * 0.5),
         static_cast<int>((parentWidget()->height() - size.height()) * 0.5));
    fade.stop();
    currentAlpha = 1.0;
    QWidget::show();
    fade.start();
}

void CountdownDigit::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setOpacity(currentAlpha);
    painter.setFont(digitFont());
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter, shown);
}

} // namespace marrowfin
