#include "base/Log.h"

#include <cstdio>

namespace marrowfin {

namespace {
void writeLine(FILE* stream, const QString& line) {
    const QByteArray bytes = line.toUtf8() + '\n';
    // One write of the whole line: lines of two threads don't mix.
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}
} // namespace

void printLine(const QString& line) {
    writeLine(stdout, line);
}
void logLine(const QString& line) {
    writeLine(stderr, line);
}

} // namespace marrowfin
