#include "panel/DragExport.h"

#include "base/Clock.h"
#include "base/Shared.h"
#include "panel/DragExportFolder.h"

#include <QFileInfo>
#include <QLocale>

namespace marrowfin::panel {

using namespace imaging;

namespace {
// The paths of the cards that are up, whether or not their files are there already.
struct ClaimedPaths {
    std::shared_ptr<QStringList> paths = std::make_shared<QStringList>();
};

bool isTaken(const QString& path) {
    return Shared<ClaimedPaths>::instance().paths->contains(path) || QFileInfo::exists(path);
}
} // namespace

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

CaptureFile DragExport::asked() const {
    CaptureFile file;
    file.image = image;
    file.path = path;
    return file;
}

void DragExport::start(std::function<void(qint64)> ready) {
    whenReady = std::move(ready);
    if (image.isNull() || path.isEmpty())
        return;
    writeCapture(asked()).then([weak = std::weak_ptr(life)](const Result<qint64>& bytes) {
        if (const auto alive = weak.lock(); alive && bytes)
            (*alive)->finish(*bytes);
    });
}

std::optional<QString> DragExport::file() {
    // A card that stays up may outlive its file: a later card takes out what is older than an hour, the
    // system what it likes.
    if (written && QFileInfo::exists(path))
        return path;
    if (path.isEmpty())
        return std::nullopt;
    if (const QString folder = dragExportFolder(); !isOursAlone(folder) || !path.startsWith(folder + u'/'))
        return std::nullopt;
    const Result<qint64> bytes = writeCaptureNow(asked());
    if (!bytes)
        return std::nullopt;
    finish(*bytes);
    return path;
}

void DragExport::finish(qint64 bytes) {
    written = true;
    if (whenReady)
        whenReady(bytes);
}

} // namespace marrowfin::panel
