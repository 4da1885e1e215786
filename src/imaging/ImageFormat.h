// The two formats a capture is saved in, and the one encoder behind every file and every clipboard image.
#pragma once

#include "imaging/Image.h"

#include <QString>
#include <array>
#include <optional>

namespace marrowfin::imaging {

enum class ImageFormat { png, jpeg };

// In the order in which they are offered.
inline constexpr std::array allImageFormats{ImageFormat::png, ImageFormat::jpeg};

// "PNG", "JPEG": at once the stored form and the title on screen.
QString rawValue(ImageFormat format);
// Nothing for an unknown string.
std::optional<ImageFormat> imageFormat(const QString& rawValue);
// "png", "jpg", without the dot.
QString fileExtension(ImageFormat format);

// The bytes of a file; quality from 0.0 to 1.0 counts for JPEG alone. Nothing when the image has no pixels or
// can't be encoded. PNG bytes are the image's one memoised encoding: this waits for it. Any thread.
std::optional<QByteArray> encodeImage(const Image& image, ImageFormat format, double quality);

} // namespace marrowfin::imaging
