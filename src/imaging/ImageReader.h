// Decoding of image files that come from outside: history, clipboard, a dropped or opened file. Ordinary
// pictures of pixels alone (PNG, JPEG and their like), the first frame of one that moves. Any thread.
#pragma once

#include "base/Result.h"
#include "imaging/Image.h"

#include <QByteArray>
#include <QString>

namespace marrowfin::imaging {

// The most bytes that a picture may take when it is decoded. Its sides play no part: a scrolled page is
// 60,000 rows high.
constexpr qint64 largestDecodedImage = qint64{3} << 29; // 1.5 GiB

// One size unit per pixel, at most 8 bits a channel. The error says what is wrong with the bytes, for a
// person.
Result<Image> readImage(const QByteArray& bytes);
Result<Image> readImageFile(const QString& path);

} // namespace marrowfin::imaging
