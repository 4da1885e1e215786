#include "app/CaptureOutput.h"

#include "base/AtomicFile.h"
#include "base/SerialQueue.h"
#include "base/Shared.h"
#include "imaging/ImageFormat.h"
#include "settings/SettingsStore.h"

#include <QFileInfo>

namespace marrowfin::app {

using namespace imaging;
using namespace settings;

namespace {

struct OutputQueue {
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.output"),
                      SerialQueue::QualityOfService::UserInitiated};
};

ImageFormat formatOf(const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == u"jpg" || suffix == u"jpeg" ? ImageFormat::jpeg : ImageFormat::png;
}

Result<void> write(const Image& image, const QString& path, double quality) {
    const std::optional<QByteArray> bytes = encodeImage(image, formatOf(path), quality);
    if (!bytes)
        return failure(QStringLiteral("The image could not be encoded."));
    const Result<void> written = writeFileAtomically(path, *bytes);
    if (!written)
        return failure(QStringLiteral("%1 could not be written: %2").arg(path, written.error().message));
    return {};
}

} // namespace

Outcome<void> writeOutput(const Image& image, const QString& path) {
    auto [settler, outcome] = makeOutcome<void>();
    const double quality = SettingsStore::shared().jpegQuality();
    Shared<OutputQueue>::instance().queue.async(
        [image, path, quality, settler = settler] { settler.settle(write(image, path, quality)); });
    return outcome;
}

} // namespace marrowfin::app
