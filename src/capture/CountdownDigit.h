// The very large number of the self-timer: centred in its parent, it fades from opaque to 0.3 each time it is
// shown.
#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace marrowfin {

class CountdownDigit : public QWidget {
    Q_OBJECT
public:
    explicit CountdownDigit(QWidget* parent);

    void show(int number);
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
