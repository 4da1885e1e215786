#include "imaging/CaptureFile.h"

#include "base/SerialQueue.h"
#include "base/Shared.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace marrowfin::imaging {

namespace {

const QString noFolder = QStringLiteral("The folder could not be made.");
const QString notEncoded = QStringLiteral("The image could not be encoded.");

class FolderQueues {
public:
    void async(const QString& folder, std::function<void()> block) {
        const std::lock_guard hold(lock);
        dropIdle();
        std::unique_ptr<Queue>& queue = queues[folder];
        if (!queue)
            queue = std::make_unique<Queue>();
        ++queue->pending;
        queue->serial.async([this, pending = &queue->pending, block = std::move(block)] {
            block();
            const std::lock_guard done(lock);
            --*pending;
            changed.notify_all();
        });
    }
    bool finish(std::chrono::milliseconds patience) {
        std::unique_lock hold(lock);
        return changed.wait_for(hold, patience, [this] {
            return std::all_of(queues.begin(), queues.end(),
                               [](const auto& each) { return each.second->pending == 0; });
        });
    }

private:
    struct Queue {
        SerialQueue serial{QStringLiteral("io.tessaly.marrowfin.files"),
                           SerialQueue::QualityOfService::UserInitiated};
        int pending = 0;
    };
    // An editor may save to any number of folders; a thread each would add up.
    void dropIdle() {
        std::erase_if(queues, [](const auto& each) { return each.second->pending == 0; });
    }

    std::mutex lock;
    std::condition_variable changed;
    std::map<QString, std::unique_ptr<Queue>> queues;
};

QString folderOf(const CaptureFile& file) {
    return QFileInfo(file.path).absolutePath();
}

} // namespace

Result<qint64> writeCaptureNow(const CaptureFile& file) {
    if (file.missingFolder == MissingFolder::IsMade && !QDir().mkpath(folderOf(file)))
        return failure(noFolder);
    const std::optional<QByteArray> bytes = encodeImage(file.image, file.format, file.quality);
    if (!bytes)
        return failure(notEncoded);
    const Result<void> written = writeFileAtomically(file.path, *bytes, file.manners);
    return written.map([&] { return bytes->size(); });
}

bool cameToWriting(const Error& error) {
    return error.kind == Error::Kind::Failed && error.message != noFolder && error.message != notEncoded;
}

Outcome<qint64> writeCapture(CaptureFile file) {
    auto [settler, outcome] = makeOutcome<qint64>();
    if (file.format == ImageFormat::png)
        file.image.startEncoding();
    const QString folder = folderOf(file);
    Shared<FolderQueues>::instance().async(folder, [file = std::move(file), settler = settler] {
        const Result<qint64> written = writeCaptureNow(file);
        settler.settle(written);
        if (written && file.manners.appears == FileAppears::OnceWritten)
            flushToDisk(file.path);
    });
    return outcome;
}

bool finishCaptureFiles(std::chrono::milliseconds patience) {
    return !Shared<FolderQueues>::exists() || Shared<FolderQueues>::instance().finish(patience);
}

} // namespace marrowfin::imaging
