// The alpha of a shadow from the alpha of its ink: a small Gaussian, offset by fractions of a pixel, in whole
// numbers and thereby the same on every processor. Pixels.
#pragma once

#include <QImage>
#include <QMargins>
#include <QPointF>
#include <QRect>
#include <vector>

namespace marrowfin::annotation {

class ShadowBlur {
public:
    // Black at this alpha where the ink is solid.
    ShadowBlur(double sigma, const QPointF& offset, double alpha);

    // How far the shadow can be from its ink.
    QMargins reach() const { return {-across.first, -down.first, across.last(), down.last()}; }
    // Puts the shadow under the ink of a premultiplied layer. The rectangles hold all ink and its shadow's
    // reach; no two of them touch from left and right.
    void putUnder(QImage& layer, const std::vector<QRect>& rects) const;

private:
    // One axis: output[i] = sum of weights[k] * input[i - first - k], of weights that add up to 256.
    struct Kernel {
        int first = 0;
        std::vector<quint16> weights;
        int taps() const { return static_cast<int>(weights.size()); }
        int last() const { return first + taps() - 1; }
    };
    static Kernel makeKernel(double sigma, double offset);

    Kernel across;
    Kernel down;
    quint16 strength; // of 256
};

} // namespace marrowfin::annotation
