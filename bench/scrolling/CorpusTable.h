// The corpus of scrolling pages read by our registration and by OpenCV's phase correlation: which answers
// were right, and the time of this thread that they took. Prints one table a size.
#pragma once

#include <QSize>

namespace marrowfin::bench {

void printCorpusTable(QSize area, double density);

} // namespace marrowfin::bench
