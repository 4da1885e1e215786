#include "app/CaptureOutput.h"

#include "imaging/CaptureFile.h"
#include "settings/SettingsStore.h"

#include <QFileInfo>

namespace marrowfin::app {

using namespace imaging;
using namespace settings;

Outcome<void> writeOutput(const Image& image, const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    CaptureFile file;
    file.image = image;
    file.path = path;
    file.format = suffix == u"jpg" || suffix == u"jpeg" ? ImageFormat::jpeg : ImageFormat::png;
    file.quality = SettingsStore::shared().jpegQuality();
    file.manners.access = FileAccess::AsUsual;
    auto [settler, outcome] = makeOutcome<void>();
    writeCapture(file).then([settler = settler, path](const Result<qint64>& written) {
        if (written)
            settler.settle({});
        else if (cameToWriting(written.error()))
            settler.settle(
                failure(QStringLiteral("%1 could not be written: %2").arg(path, written.error().message)));
        else
            settler.settle(tl::unexpected(written.error()));
    });
    return outcome;
}

} // namespace marrowfin::app
