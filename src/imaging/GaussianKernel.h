// The weights of a Gaussian, for those who blur small grids and planes themselves: shadows, the plates'
// backdrop, the cards' backdrop. (The ink's blur is annotation/GaussianBlur, which works on whole captures
// and must be fast; the editor's RectShadow needs no blur at all, since a rectangle's shadow is known
// exactly.) Pure; any thread.
#pragma once

#include <vector>

namespace marrowfin::imaging {

// Odd in number, the middle one the greatest, their sum 1. Sigma is in cells and above 0; it reaches 3 sigma
// to each side, or the cells asked for.
std::vector<float> gaussianKernel(double sigma);
std::vector<float> gaussianKernel(double sigma, int reach);

} // namespace marrowfin::imaging
