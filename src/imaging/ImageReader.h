// Decoding of image files that come from outside: history, clipboard, a dropped or opened file. Ordinary
// pictures of pixels alone (PNG, JPEG and their like), the first frame of one that moves. Any thread.
#pragma once

#include "base/Result.h"
#include "imaging/Image.h"

#include <QByteArray>
#include <QString>

namespace marrowfin::imaging {

// The largest picture that is read, in pixels per side.
constexpr int largestImageSide = 16384;

// One size unit per pixel. The error says what is wrong with the bytes, for a person.
Result<Image> readImage(const QByteArray& bytes);
Result<Image> readImageFile(const QString& path);

} // namespace marrowfin::imaging
