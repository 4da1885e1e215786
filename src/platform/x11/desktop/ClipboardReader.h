// Reads the picture that another program offers on the clipboard. Its owner may be slow, silent, or hand it
// over drop by drop: the calling thread waits, 5 s in all, and nobody else. Not for the main thread.
#pragma once

#include <QByteArray>
#include <functional>

namespace marrowfin::x11 {

// The picture's bytes in the best form that the owner gives; empty when there is none, when the time is over,
// or once the question answers true.
QByteArray readClipboardImage(const QByteArray& displayName, const std::function<bool()>& isGivenUp);

} // namespace marrowfin::x11
