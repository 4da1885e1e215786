// PNG files from pixels, made for screens: large flat areas, mostly opaque, wanted at once. Any thread.
#pragma once

#include <QByteArray>
#include <QImage>

namespace marrowfin::imaging {

// 8 bits per channel; without an alpha channel when every pixel is opaque. The image's colour space goes into
// the file. Decoding gives back the same pixels exactly. Empty for an image without pixels or when memory
// runs out.
QByteArray encodePng(const QImage& pixels);

} // namespace marrowfin::imaging
