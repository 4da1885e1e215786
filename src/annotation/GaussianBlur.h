// A Gaussian blur whose cost hardly depends on its width. A wide Gaussian leaves nothing of fine detail, so
// it is taken on a coarse grid: the picture is averaged down with a triangle, blurred there, and interpolated
// back, with a kernel narrowed by what the two triangles have blurred already. The result is within 2 of 255
// of the exact one, edges included. Device pixels; any thread.
#pragma once

#include <QImage>
#include <QRect>

namespace marrowfin::annotation {

// `part` of the picture, blurred. Only the pixels inside `source` count, and those at its edges go on forever
// outwards, so that the picture's own edges don't fade. `part` lies inside `source`, that inside the picture,
// whose format is RGB32 or ARGB32_Premultiplied, as is the result's. Null when sigma isn't above 0 or memory
// runs out. Sigmas beyond 768 are served as 768.
QImage gaussianBlurred(const QImage& pixels, const QRect& part, const QRect& source, double sigma);

} // namespace marrowfin::annotation
