#include "chrome/Timing.h"

namespace marrowfin::chrome {

namespace {
double bezier(double p1, double p2, double t) {
    const double s = 1 - t;
    return 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t;
}
} // namespace

double TimingFunction::progress(double fraction) const {
    if (!(fraction > 0))
        return 0;
    if (fraction >= 1)
        return 1;
    if (isLinear())
        return fraction;
    // x grows with the curve's parameter, so halving finds it; 40 halvings are exact to 1e-12.
    double low = 0;
    double high = 1;
    for (int step = 0; step < 40; ++step) {
        const double middle = (low + high) / 2;
        (bezier(x1, x2, middle) < fraction ? low : high) = middle;
    }
    return bezier(y1, y2, (low + high) / 2);
}

} // namespace marrowfin::chrome
