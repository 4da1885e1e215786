#include "history/CaptureHistory.h"

#include "base/AtomicFile.h"
#include "base/Clock.h"
#include "base/Invariant.h"
#include "base/Log.h"
#include "base/Shared.h"
#include "history/CaptureName.h"
#include "imaging/CaptureFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <tuple>
#include <vector>

namespace marrowfin::history {

using namespace imaging;

namespace {

constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
constexpr qint64 distantPast = std::numeric_limits<qint64>::min();

QString folderOfShared;

struct Item {
    qint64 date = distantPast;
    QString uuid; // empty for a file that isn't of ours
    QString path;
};

Item describe(const QFileInfo& file, const CaptureHistory::CreationDate& creationDate) {
    Item item{distantPast, {}, file.filePath()};
    const std::optional<CaptureName> name = parseCaptureName(file.fileName());
    if (name)
        item.uuid = name->uuid;
    if (const std::optional<qint64> known = creationDate(item.path))
        item.date = *known;
    else if (name)
        item.date = name->seconds * nanosecondsPerSecond;
    return item;
}

bool isNewer(const Item& a, const Item& b) {
    return std::tie(a.date, a.uuid, a.path) > std::tie(b.date, b.uuid, b.path);
}

void removeItem(const QString& path) {
    // A folder that somebody put there counts as an item too; a link to one is only a link.
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink())
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
}

} // namespace

CaptureHistory& CaptureHistory::shared() {
    return Shared<CaptureHistory>::instance();
}
void CaptureHistory::useFolder(const QString& path) {
    folderOfShared = path;
}

CaptureHistory::CaptureHistory() : CaptureHistory(folderOfShared) {}

CaptureHistory::CaptureHistory(QString path, CreationDate date)
    : folder(std::move(path)), creationDate(std::move(date)) {
    MARROWFIN_INVARIANT(!folder.isEmpty());
    static_cast<void>(makePrivateFolder(folder));
}

std::optional<QString> CaptureHistory::save(const Image& image) {
    std::optional<QString> path;
    queue.sync([&] { path = write(image); });
    return path;
}

Outcome<std::optional<QString>> CaptureHistory::saveAsync(const Image& image) {
    auto [settler, outcome] = makeOutcome<std::optional<QString>>();
    image.startEncoding();
    queue.async([this, image, settler = settler] {
        const std::optional<QString> path = write(image);
        settler.settle(path);
        if (path)
            flushToDisk(*path); // nobody waits for this
    });
    return outcome;
}

bool CaptureHistory::finishSaves(std::chrono::milliseconds patience) {
    return !Shared<CaptureHistory>::exists() || shared().queue.finish(patience);
}

QStringList CaptureHistory::list() const {
    return read();
}

Outcome<QStringList> CaptureHistory::listAsync() const {
    auto [settler, outcome] = makeOutcome<QStringList>();
    listing.async([this, settler = settler] { settler.settle(read()); });
    return outcome;
}

void CaptureHistory::clearAll() {
    queue.sync([this] { clear(); });
}

Outcome<void> CaptureHistory::clearAllAsync() {
    auto [settler, outcome] = makeOutcome<void>();
    queue.async([this, settler = settler] {
        clear();
        settler.settle({});
    });
    return outcome;
}

void CaptureHistory::clear() {
    if (!QFileInfo(folder).isDir())
        QFile::remove(folder);
    else
        QDir(folder).removeRecursively();
    static_cast<void>(makePrivateFolder(folder));
    QMetaObject::invokeMethod(this, &CaptureHistory::changed, Qt::QueuedConnection);
}

std::optional<qint64> CaptureHistory::birthTime(const QString& path) {
    struct statx found {};
    const QByteArray name = QFile::encodeName(path);
    if (::statx(AT_FDCWD, name.constData(), AT_SYMLINK_NOFOLLOW, STATX_BTIME, &found) != 0 ||
        (found.stx_mask & STATX_BTIME) == 0)
        return std::nullopt;
    return found.stx_btime.tv_sec * nanosecondsPerSecond + found.stx_btime.tv_nsec;
}

std::optional<QString> CaptureHistory::write(const Image& image) {
    CaptureFile file;
    file.image = image;
    file.path = folder + u'/' + makeCaptureName(Clock::now()).fileName();
    file.manners.appears = FileAppears::OnceWritten;
    const Result<qint64> written = writeCaptureNow(file);
    if (!written) {
        if (cameToWriting(written.error()))
            printLine(QStringLiteral("Failed to save history: ") + written.error().message);
        return std::nullopt;
    }
    trim(file.path);
    QMetaObject::invokeMethod(this, &CaptureHistory::changed, Qt::QueuedConnection);
    return file.path;
}

QStringList CaptureHistory::read() const {
    std::vector<Item> items;
    // System: links to nowhere and the like are visible files too.
    const auto visible = QDir::Files | QDir::Dirs | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo& file : QDir(folder).entryInfoList(visible, QDir::Unsorted))
        items.push_back(describe(file, creationDate));
    std::sort(items.begin(), items.end(), isNewer);
    QStringList paths;
    for (const Item& item : items)
        paths << item.path;
    return paths;
}

void CaptureHistory::trim(const QString& justWritten) const {
    QStringList paths = read();
    // Where files are dated in the future the new one is the oldest; it stays all the same.
    if (paths.removeOne(justWritten))
        paths.prepend(justWritten);
    for (qsizetype index = maxHistoryItems; index < paths.size(); ++index)
        removeItem(paths[index]);
}

} // namespace marrowfin::history
