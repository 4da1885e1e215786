// The view of the self-timer: one very large number in its middle, which fades from opaque to 0.3 each time
// it is shown, on the animation clock. Points, widget coordinates (y down). Main thread; a child of the
// countdown's overlay.
#pragma once

#include "chrome/AnimationClock.h"

#include <QWidget>

namespace marrowfin::capture {

class CountdownDigit : public QWidget, private chrome::AnimationClock::Client {
    Q_OBJECT
public:
    explicit CountdownDigit(QWidget* parent);
    ~CountdownDigit() override;

    void showNumber(int number);
    // Where the number stands, centred by its own width.
    QRectF numberRect() const;
    // The number's own form, with a rim that tells it from a bright ground.
    QRegion outline() const;
    QString text() const { return shown; }
    // 1.0 down to 0.3.
    double alpha() const { return currentAlpha; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<double> tick(double now) override;

    QString shown;
    double shownAt = 0; // on the animation clock
    double currentAlpha = 1.0;
};

} // namespace marrowfin::capture
