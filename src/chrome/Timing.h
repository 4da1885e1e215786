// How an animation's progress follows time: cubic curves over the unit square, from (0, 0) to (1, 1). Any
// thread.
#pragma once

namespace marrowfin::chrome {

class TimingFunction {
public:
    // The curve's two inner control points; their x must lie in 0...1.
    constexpr TimingFunction(double x1, double y1, double x2, double y2) : x1(x1), y1(y1), x2(x2), y2(y2) {}

    static constexpr TimingFunction linear() { return {0, 0, 1, 1}; }
    static constexpr TimingFunction easeIn() { return {0.42, 0, 1, 1}; }
    static constexpr TimingFunction easeOut() { return {0, 0, 0.58, 1}; }
    static constexpr TimingFunction easeInEaseOut() { return {0.42, 0, 0.58, 1}; }

    // The progress after this part of the duration; exactly 0 and 1 at the ends and beyond.
    double progress(double fraction) const;
    bool isLinear() const { return x1 == y1 && x2 == y2; }

private:
    double x1, y1, x2, y2;
};

} // namespace marrowfin::chrome
