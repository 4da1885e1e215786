#include "panel/DragExport.h"

#include "base/AtomicFile.h"
#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "base/Shared.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <unistd.h>

namespace marrowfin::panel {

using namespace imaging;

namespace {
constexpr qint64 keptSeconds = 3600;

struct ExportQueue {
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.cardExport"),
                      SerialQueue::QualityOfService::UserInitiated};
};

// The paths of the cards that are up, whether or not their files are there already.
struct ClaimedPaths {
    std::shared_ptr<QStringList> paths = std::make_shared<QStringList>();
};

bool isTaken(const QString& path) {
    return Shared<ClaimedPaths>::instance().paths->contains(path) || QFileInfo::exists(path);
}

bool isOursAlone(const QString& folder) {
    const QFileInfo info(folder);
    return info.isDir() && !info.isSymLink() && info.ownerId() == geteuid();
}

bool isFree(const QString& folder) {
    const QFileInfo info(folder);
    return !info.exists() && !info.isSymLink();
}

void remove(const QFileInfo& item) {
    if (item.isDir() && !item.isSymLink())
        QDir(item.absoluteFilePath()).removeRecursively();
    else
        QFile::remove(item.absoluteFilePath());
}
} // namespace

QString dragExportFolder() {
    const QString common = platform::services().folders.temporary() + QStringLiteral("/MarrowfinDragExports");
    // Anybody may write to the temporary folder: a stranger's folder or a link would let them read captures.
    const QString folder =
        isOursAlone(common) || isFree(common) ? common : common + QStringLiteral("-%1").arg(geteuid());
    (void)makePrivateFolder(folder); // without it there is simply no file
    if (isOursAlone(folder))
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return folder;
}

void pruneDragExports(const QString& folder) {
    const QDateTime oldest = Clock::now().addSecs(-keptSeconds);
    const QFileInfoList items =
        QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo& item : items) {
        const QDateTime changed = item.lastModified();
        if (!changed.isValid() || changed < oldest)
            remove(item);
    }
}

QString newDragExportPath(const QString& folder) {
    const QString stamp =
        QLocale::c().toString(Clock::now().toLocalTime(), QStringLiteral("yyyy-MM-dd 'at' HH.mm.ss"));
    const QString stem = folder + QStringLiteral("/Marrowfin ") + stamp;
    QString path = stem + QStringLiteral(".png");
    for (int count = 2; isTaken(path); ++count)
        path = stem + QStringLiteral(" %1.png").arg(count);
    return path;
}

DragExport::DragExport(const Image& exported)
    : image(exported), claimed(Shared<ClaimedPaths>::instance().paths),
      life(std::make_shared<DragExport*>(this)) {
    const QString folder = dragExportFolder();
    if (!isOursAlone(folder))
        return;
    pruneDragExports(folder);
    path = newDragExportPath(folder);
    claimed->append(path);
}

DragExport::~DragExport() {
    claimed->removeOne(path);
}

void DragExport::start(std::function<void(qint64)> ready) {
    whenReady = std::move(ready);
    if (image.pixels().isNull() || path.isEmpty())
        return;
    image.startEncoding();
    Shared<ExportQueue>::instance().queue.async(
        [image = image, path = path, weak = std::weak_ptr<DragExport*>(life)] {
            const QByteArray png = image.png();
            if (weak.expired() || png.isEmpty() || !writeFileAtomically(path, png))
                return;
            postToMain([weak, bytes = png.size()] {
                if (const auto alive = weak.lock())
                    (*alive)->finish(bytes);
            });
        });
}

std::optional<QString> DragExport::file() {
    // A card that stays up may outlive its file: a later card takes out what is older than an hour, the
    // system what it likes.
    if (written && QFileInfo::exists(path))
        return path;
    if (path.isEmpty() || image.pixels().isNull())
        return std::nullopt;
    if (const QString folder = dragExportFolder(); !isOursAlone(folder) || !path.startsWith(folder + u'/'))
        return std::nullopt;
    const QByteArray png = image.png();
    if (png.isEmpty() || !writeFileAtomically(path, png))
        return std::nullopt;
    finish(png.size());
    return path;
}

void DragExport::finish(qint64 bytes) {
    written = true;
    if (whenReady)
        whenReady(bytes);
}

} // namespace marrowfin::panel
