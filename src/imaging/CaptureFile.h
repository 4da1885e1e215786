// A capture becomes a file: encoded, and under its name as a whole. Each folder has a queue of its own, so
// that a disk that hangs holds up nothing else, and of two files of one name the later stays. What is said
// about it is the caller's. Any thread; outcomes answer on the main thread.
#pragma once

#include "base/AtomicFile.h"
#include "base/Outcome.h"
#include "imaging/ImageFormat.h"

#include <QString>
#include <chrono>

namespace marrowfin::imaging {

enum class MissingFolder { IsAnError, IsMade };

struct CaptureFile {
    Image image;
    QString path;
    ImageFormat format = ImageFormat::png;
    double quality = 1; // for JPEG alone
    MissingFolder missingFolder = MissingFolder::IsAnError;
    FileManners manners;
};

// On this thread: the number of bytes.
Result<qint64> writeCaptureNow(const CaptureFile& file);
// Of an error of either: whether it came to writing. Before that there may be no folder, or no pixels that
// can be encoded.
bool cameToWriting(const Error& error);
// On its folder's queue. A file that appears once it is written goes on to the disk after the answer.
Outcome<qint64> writeCapture(CaptureFile file);
// Waits until all files that were asked for are written, no longer than this; false when the time was up.
bool finishCaptureFiles(std::chrono::milliseconds patience);

} // namespace marrowfin::imaging
