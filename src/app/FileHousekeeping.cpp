#include "app/FileHousekeeping.h"

#include "app/AutomaticSave.h"
#include "base/AtomicFile.h"
#include "base/Leftovers.h"
#include "base/SerialQueue.h"
#include "base/Shared.h"
#include "history/CaptureHistory.h"
#include "imaging/CaptureFile.h"
#include "panel/DragExportFolder.h"
#include "platform/Desktop.h"
#include "platform/Services.h"
#include "settings/Defaults.h"

#include <QStringList>
#include <algorithm>

namespace marrowfin::app {

namespace {
struct HousekeepingQueue {
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.housekeeping"),
                      SerialQueue::QualityOfService::Default};
};
} // namespace

void clearLeftovers() {
    const platform::Folders& folders = platform::services().folders;
    QStringList ours{folders.applicationSupport() + QStringLiteral("/Marrowfin/History"),
                     folders.configuration() + QStringLiteral("/Marrowfin")};
    if (const std::optional<QString> saves = automaticSaveFolder())
        ours << *saves;
    Shared<HousekeepingQueue>::instance().queue.async([ours, temporary = folders.temporary()] {
        std::for_each(ours.begin(), ours.end(), removeDeadDrafts);
        panel::removeDragExportLeftovers(temporary);
    });
}

bool finishFiles(std::chrono::milliseconds patience) {
    using std::chrono::steady_clock;
    const auto deadline = steady_clock::now() + patience;
    const auto left = [deadline] {
        return std::max(std::chrono::ceil<std::chrono::milliseconds>(deadline - steady_clock::now()),
                        std::chrono::milliseconds(0));
    };
    // Each is asked, also when the time is up: one that has nothing to do answers at once.
    const bool history = history::CaptureHistory::finishSaves(left());
    const bool captures = imaging::finishCaptureFiles(left());
    const bool settings = settings::Defaults::finishSets(left());
    const bool housekeeping =
        !Shared<HousekeepingQueue>::exists() || Shared<HousekeepingQueue>::instance().queue.finish(left());
    const bool writes = finishWrites(left());
    return history && captures && settings && housekeeping && writes;
}

} // namespace marrowfin::app
