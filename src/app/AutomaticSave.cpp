#include "app/AutomaticSave.h"

#include "base/AtomicFile.h"
#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "base/Shared.h"
#include "imaging/ImageFormat.h"
#include "platform/Desktop.h"
#include "platform/Services.h"
#include "settings/SettingsStore.h"

#include <QDir>

namespace marrowfin::app {

using namespace imaging;
using namespace settings;

namespace {

enum class SaveResult { Written, NotWritten, NoFolder, NotEncoded };

struct SavingQueue {
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.saving"),
                      SerialQueue::QualityOfService::UserInitiated};
};

struct Saving {
    Image image;
    QString folder;
    QString name;
    ImageFormat format = ImageFormat::png;
    double quality = 0;
};

SaveResult save(const Saving& saving) {
    if (!QDir().mkpath(saving.folder))
        return SaveResult::NoFolder;
    const std::optional<QByteArray> bytes = encodeImage(saving.image, saving.format, saving.quality);
    if (!bytes)
        return SaveResult::NotEncoded;
    const QString path = QDir(saving.folder).filePath(saving.name);
    return writeFileAtomically(path, *bytes) ? SaveResult::Written : SaveResult::NotWritten;
}

Outcome<SaveResult> saveOnQueue(Saving saving) {
    auto [settler, outcome] = makeOutcome<SaveResult>();
    Shared<SavingQueue>::instance().queue.async(
        [saving = std::move(saving), settler = settler] { settler.settle(save(saving)); });
    return outcome;
}

} // namespace

QString automaticSaveName(const QDateTime& time, const QString& extension) {
    // Built from numbers: a date format of the user's locale would bring its own digits.
    const QDateTime gmt = time.toUTC();
    const QString stamp = gmt.toString(Qt::ISODate).left(19).replace(u':', u'.');
    return QStringLiteral("Marrowfin %1.%2").arg(stamp, extension);
}

Flow<Result<QString>> saveCaptureToFile(Image image) {
    const std::optional<QString> pictures = platform::services().folders.pictures();
    if (!pictures)
        co_return failure(QStringLiteral("There is no Pictures folder."));
    const SettingsStore& settings = SettingsStore::shared();
    Saving saving;
    saving.image = image;
    saving.folder = QDir(*pictures).filePath(QStringLiteral("Marrowfin"));
    saving.format = settings.saveFormat();
    saving.quality = settings.jpegQuality();
    saving.name = automaticSaveName(Clock::now(), fileExtension(saving.format));
    const QString path = QDir(saving.folder).filePath(saving.name);
    const Result<SaveResult> result = co_await saveOnQueue(std::move(saving));
    if (result == SaveResult::NoFolder || result == SaveResult::NotEncoded)
        platform::services().opener.beep();
    if (result != SaveResult::Written)
        co_return failure(QStringLiteral("The capture couldn't be saved."));
    co_return path;
}

} // namespace marrowfin::app
