// The round cross in a pin's corner; it fades in and out. Points. Main thread.
#pragma once

#include "chrome/AnimationClock.h"
#include "chrome/PoseEffect.h"
#include "chrome/Timing.h"

#include <QAbstractButton>

namespace marrowfin::pin {

class PinCloseButton : public QAbstractButton, private chrome::AnimationClock::Client {
    Q_OBJECT
public:
    static constexpr int side = 20;

    explicit PinCloseButton(QWidget* parent);
    ~PinCloseButton() override;

    // From what it is now, over 0.15 seconds.
    void fadeTo(double alpha);
    double alpha() const { return effect->pose().opacity; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<double> tick(double now) override;

    chrome::PoseEffect* effect;
    double from = 0;
    double to = 0;
    double start = 0;
};

} // namespace marrowfin::pin
