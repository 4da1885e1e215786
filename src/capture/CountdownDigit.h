// The view of the self-timer: one very large number in its middle, which fades from opaque to 0.3 each time
// it is shown.
#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace marrowfin {

class CountdownDigit : public QWidget {
    Q_OBJECT
public:
    explicit CountdownDigit(QWidget* parent);

    void showNumber(int number);
    // Where the number stands, centred by its own width.
    QRectF numberRect() const;
    QString text() const { return shown; }
    // 1.0 down to 0.3.
    double alpha() const { return currentAlpha; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString shown;
    double currentAlpha = 1.0;
    QVariantAnimation fade;
};

} // namespace marrowfin
