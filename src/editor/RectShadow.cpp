#include "editor/RectShadow.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace marrowfin::editor {

namespace {

// How much of a Gaussian at each pixel from `first` on falls between the two edges.
std::vector<float> coverage(int first, int count, double low, double high, double sigma) {
    std::vector<float> covered(static_cast<size_t>(std::max(count, 0)));
    const double spread = sigma * std::sqrt(2.0);
    for (int i = 0; i < count; ++i) {
        const double middle = first + i + 0.5;
        covered[static_cast<size_t>(i)] =
            static_cast<float>((std::erf((high - middle) / spread) - std::erf((low - middle) / spread)) / 2);
    }
    return covered;
}

void darken(QRgb& pixel, float alpha) {
    const float kept = 1 - alpha;
    const auto part = [kept](int value) { return static_cast<int>(static_cast<float>(value) * kept + 0.5F); };
    pixel = qRgb(part(qRed(pixel)), part(qGreen(pixel)), part(qBlue(pixel)));
}

} // namespace

void paintRectShadow(QImage& pixels, const QRect& rect, const RectShadow& shadow) {
    const int reach = static_cast<int>(std::ceil(3 * shadow.sigma));
    const QRect reached = rect.translated(0, static_cast<int>(std::ceil(shadow.drop)))
                              .adjusted(-reach, -reach - 1, reach, reach)
                              .intersected(pixels.rect());
    const std::vector<float> across =
        coverage(reached.left(), reached.width(), rect.left(), rect.left() + rect.width(), shadow.sigma);
    const std::vector<float> down = coverage(reached.top(), reached.height(), rect.top() + shadow.drop,
                                             rect.top() + rect.height() + shadow.drop, shadow.sigma);
    // Inside the image will cover it, or shows the plain background.
    const QRect inside = rect.intersected(reached).translated(-reached.topLeft());
    for (int row = 0; row < reached.height(); ++row) {
        auto* line = reinterpret_cast<QRgb*>(pixels.scanLine(reached.top() + row)) + reached.left();
        const float strength = down[static_cast<size_t>(row)] * static_cast<float>(shadow.alpha);
        const bool beside = row >= inside.top() && row <= inside.bottom();
        const int leftEnd = beside ? inside.left() : reached.width();
        for (int column = 0; column < leftEnd; ++column)
            darken(line[column], across[static_cast<size_t>(column)] * strength);
        for (int column = beside ? inside.right() + 1 : leftEnd; column < reached.width(); ++column)
            darken(line[column], across[static_cast<size_t>(column)] * strength);
    }
}

} // namespace marrowfin::editor
