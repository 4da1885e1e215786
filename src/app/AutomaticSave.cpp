#include "app/AutomaticSave.h"

#include "base/Clock.h"
#include "imaging/CaptureFile.h"
#include "platform/Desktop.h"
#include "platform/Services.h"
#include "settings/SettingsStore.h"

#include <QDir>

namespace marrowfin::app {

using namespace imaging;
using namespace settings;

QString automaticSaveName(const QDateTime& time, const QString& extension) {
    // Built from numbers: a date format of the user's locale would bring its own digits.
    const QDateTime gmt = time.toUTC();
    const QString stamp = gmt.toString(Qt::ISODate).left(19).replace(u':', u'.');
    return QStringLiteral("Marrowfin %1.%2").arg(stamp, extension);
}

std::optional<QString> automaticSaveFolder() {
    const std::optional<QString> pictures = platform::services().folders.pictures();
    return pictures ? std::optional(QDir(*pictures).filePath(QStringLiteral("Marrowfin"))) : std::nullopt;
}

Outcome<QString> saveAutomatically(const Image& image) {
    const std::optional<QString> folder = automaticSaveFolder();
    if (!folder)
        return settled<QString>(failure(QStringLiteral("There is no Pictures folder.")));
    const SettingsStore& settings = SettingsStore::shared();
    CaptureFile file;
    file.image = image;
    file.format = settings.saveFormat();
    file.quality = settings.jpegQuality();
    file.path = QDir(*folder).filePath(automaticSaveName(Clock::now(), fileExtension(file.format)));
    file.missingFolder = MissingFolder::IsMade;
    file.manners = {FileAppears::OnceWritten, FileAccess::AsUsual};
    auto [settler, outcome] = makeOutcome<QString>();
    writeCapture(file).then([settler = settler, path = file.path](const Result<qint64>& written) {
        if (!written && written.error().kind == Error::Kind::Failed && !cameToWriting(written.error()))
            platform::services().opener.beep();
        settler.settle(written.map([&](qint64) { return path; }));
    });
    return outcome;
}

void saveCaptureToFile(const Image& image) {
    static_cast<void>(saveAutomatically(image));
}

} // namespace marrowfin::app
