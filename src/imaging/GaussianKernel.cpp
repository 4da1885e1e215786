#include "imaging/GaussianKernel.h"

#include <algorithm>
#include <cmath>

namespace marrowfin::imaging {

std::vector<float> gaussianKernel(double sigma) {
    return gaussianKernel(sigma, std::max(1, static_cast<int>(std::ceil(3 * sigma))));
}

std::vector<float> gaussianKernel(double sigma, int reach) {
    std::vector<float> kernel(2 * static_cast<std::size_t>(reach) + 1);
    double sum = 0;
    for (int i = -reach; i <= reach; ++i)
        sum += kernel[i + reach] = static_cast<float>(std::exp(-i * i / (2 * sigma * sigma)));
    for (float& weight : kernel)
        weight = static_cast<float>(weight / sum);
    return kernel;
}

} // namespace marrowfin::imaging
