#include "JoinTable.h"

#include "annotation/Ratio.h"
#include "scrolling/StitchingManager.h"

#include <QFile>
#include <cstdio>
#include <cstring>
#include <vector>

namespace marrowfin::bench {

namespace {

using imaging::Image;

constexpr QSize area(2880, 1800);
constexpr int step = 720;
constexpr int joins = 50;

// Rows of noise, each known by its number in an endless page.
QImage frameAt(int scrolledTo) {
    QImage frame(area, QImage::Format_RGB32);
    for (int y = 0; y < area.height(); ++y) {
        quint32 state = static_cast<quint32>(scrolledTo + y) * 2654435761U + 1;
        auto* row = reinterpret_cast<QRgb*>(frame.scanLine(y));
        for (int x = 0; x < area.width(); ++x)
            row[x] = (state = state * 1664525U + 1013904223U) | 0xff000000U;
    }
    return frame;
}

// Of all threads: the stitcher works on its own.
double processSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// In megabytes: the process's resident memory, "VmRSS:", or the most since it was last reset, "VmHWM:".
double memory(const char* which) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(which))
            return line.mid(static_cast<qsizetype>(std::strlen(which)))
                       .simplified()
                       .split(' ')[0]
                       .toDouble() /
                   1024;
    return 0;
}
void resetPeak() {
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

struct Session {
    std::vector<double> measured; // seconds of each join, the measure with it
    std::vector<double> joined;   // the join alone
    double together = 0;
    double peak = 0;
    QSize size;
};

Session session() {
    Session all;
    double spent = 0;
    resetPeak();
    const double before = memory("VmRSS:");
    scrolling::StitchingManager stitcher(
        scrolling::StitchingManager::FixedRows::Once, [&](const QImage& older, const QImage& newer) {
            const double start = processSeconds();
            auto movement = scrolling::ImageRegistration::movement(older, newer);
            spent = processSeconds() - start;
            return movement;
        });
    stitcher.begin(Image::captured(frameAt(0)));
    for (int i = 1; i <= joins; ++i) {
        const Image frame = Image::captured(frameAt(i * step));
        const double start = processSeconds();
        if (!stitcher.addImage(frame))
            std::printf("frame %d was refused\n", i);
        all.measured.push_back(processSeconds() - start);
        all.joined.push_back(all.measured.back() - spent);
    }
    const double start = processSeconds();
    const Image whole = *stitcher.finalImage();
    all.together = processSeconds() - start;
    all.peak = memory("VmHWM:") - before;
    all.size = whole.pixels().size();
    return all;
}

// A new picture with every join.
std::vector<double> plainJoins() {
    std::vector<double> seconds;
    QImage soFar = frameAt(0);
    for (int i = 1; i <= joins; ++i) {
        const QImage frame = frameAt(i * step);
        const double start = processSeconds();
        QImage next(soFar.width(), soFar.height() + step, QImage::Format_RGB32);
        std::memcpy(next.bits(), soFar.constBits(), static_cast<size_t>(soFar.sizeInBytes()));
        std::memcpy(next.scanLine(next.height() - frame.height()), frame.constBits(),
                    static_cast<size_t>(frame.sizeInBytes()));
        soFar = next;
        next = QImage();
        seconds.push_back(processSeconds() - start);
    }
    return seconds;
}

} // namespace

void printJoinTable() {
    const std::vector<double> plain = plainJoins();
    const Session ours = session();
    std::printf("\n51 frames of 2880x1800, %d rows each: ms of processor\n", step);
    std::printf("| frame | joining it | with the measure | a new picture each time |\n|---|---|---|---|\n");
    for (const size_t i : {0, 1, 9, 24, 39, 48, 49})
        std::printf("| %zu | %.2f | %.1f | %.1f |\n", i + 2, ours.joined[i] * 1e3, ours.measured[i] * 1e3,
                    plain[i] * 1e3);
    const double megabyte = 1024.0 * 1024.0;
    const double whole = 4.0 * ours.size.width() * ours.size.height() / megabyte;
    const double frame = 4.0 * area.width() * area.height() / megabyte;
    std::printf("put together, %dx%d: %.0f ms\n", ours.size.width(), ours.size.height(), ours.together * 1e3);
    std::printf(
        "most memory at once: %.0f MiB; the image %.0f MiB, a frame %.1f MiB; beyond two frames %.2f times "
        "the image\n",
        ours.peak, whole, frame, (ours.peak - 2 * frame) / whole);
    std::fflush(stdout);
}

} // namespace marrowfin::bench
