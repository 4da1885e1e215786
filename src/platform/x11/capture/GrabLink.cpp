#include "platform/x11/capture/GrabLink.h"

#include "base/Log.h"
#include "base/Outcome.h"
#include "platform/x11/server/ConnectionLoss.h"

namespace marrowfin::x11 {

GrabLink::GrabLink(QByteArray displayName, std::shared_ptr<LayoutBoard> board)
    : name(std::move(displayName)), board(std::move(board)),
      serial(QStringLiteral("io.tessaly.marrowfin.grabs"), SerialQueue::QualityOfService::UserInteractive) {}

Result<Grabber*> GrabLink::grabber() {
    if (connection && connection->isLost()) {
        reader.reset();
        connection.reset();
    }
    if (!connection) {
        auto opened = Connection::open(name);
        if (!opened)
            return tl::unexpected(opened.error());
        connection = *std::move(opened);
        reader = std::make_unique<Grabber>(*connection, SegmentPool::Reuse::No);
        if (!std::exchange(toldOfExtensions, true)) {
            for (const QString& line : linesAboutMissing(connection->extensions()))
                logLine(line);
        }
    }
    // Keyboard changes are told to every client, asked or not.
    while (const Reply<xcb_generic_event_t> unasked{xcb_poll_for_event(connection->raw())}) {
    }
    return reader.get();
}

void GrabLink::failed() {
    if (!connection || connection->isLost())
        postToMain(ConnectionLoss::lookNow);
}

QStringList linesAboutMissing(const Extensions& present) {
    QStringList lines;
    const auto tell = [&lines](bool there, const char* what) {
        if (!there)
            lines << QStringLiteral("[Marrowfin] The X server has no ") + QString::fromLatin1(what);
    };
    tell(present.shm, "MIT-SHM: captures are read through the connection, which takes longer.");
    tell(present.composite, "Composite: what is covered of a window is transparent in its capture.");
    tell(present.xfixes, "XFixes: captures come without the cursor.");
    tell(present.damage, "DAMAGE: changes of the screen are found by looking at it again and again.");
    tell(present.randr, "RANDR 1.5: monitors are taken as Qt tells them.");
    tell(present.res, "X-Resource 1.2: windows that don't tell their process can't be picked.");
    return lines;
}

} // namespace marrowfin::x11
