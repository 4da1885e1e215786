// A mass on a damped spring, let go at rest: how far it has come after some seconds. Closed form, so any
// moment may be asked for on its own. Any thread.
#pragma once

namespace marrowfin::chrome {

struct Spring {
    double mass = 1;
    double stiffness = 100;
    double damping = 10;

    // 0 at the start, 1 at rest; above 1 where it swings over.
    double progress(double seconds) const;
    // When the envelope of its motion has fallen to a thousandth and stays there.
    double settlingDuration() const;
    friend bool operator==(const Spring&, const Spring&) = default;
};

} // namespace marrowfin::chrome
