#include "chrome/Spring.h"

#include <cmath>

namespace marrowfin::chrome {

double Spring::progress(double seconds) const {
    if (!(seconds > 0))
        return 0;
    const double decay = damping / (2 * mass);
    const double square = stiffness / mass - decay * decay;
    const double envelope = std::exp(-decay * seconds);
    if (square > 0) {
        const double frequency = std::sqrt(square);
        const double angle = frequency * seconds;
        return 1 - envelope * (std::cos(angle) + decay / frequency * std::sin(angle));
    }
    if (square == 0)
        return 1 - envelope * (1 + decay * seconds);
    const double rate = std::sqrt(-square);
    // As two falling exponentials: cosh and sinh alone would overflow long before they cancel.
    const double slow = std::exp((rate - decay) * seconds);
    const double fast = std::exp(-(rate + decay) * seconds);
    return 1 - ((slow + fast) + decay / rate * (slow - fast)) / 2;
}

double Spring::settlingDuration() const {
    const double decay = damping / (2 * mass);
    const double square = decay * decay - stiffness / mass;
    // Overdamped, the slower of its two exponentials is the envelope.
    const double rate = square > 0 ? decay - std::sqrt(square) : decay;
    return std::log(1000.0) / rate;
}

} // namespace marrowfin::chrome
