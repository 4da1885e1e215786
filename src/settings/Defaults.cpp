#include "settings/Defaults.h"

#include "base/AtomicFile.h"
#include "base/Log.h"
#include "base/Shared.h"
#include "settings/FileLock.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace marrowfin::settings {

namespace {

// A file of settings has a few hundred bytes; what is larger than this is something else.
constexpr qint64 largestFile = 16 * 1024 * 1024;
// Another holder needs a millisecond or two; the main thread waits no longer for one that was stopped.
constexpr std::chrono::milliseconds lockPatience{50};

QString fileOfShared;

struct Contents {
    enum class State { Missing, Good, Unparsable, Unusable };
    State state = State::Missing;
    QJsonObject values;
    QString why; // for Unusable
};

Contents unusable(int number) {
    return {Contents::State::Unusable, {}, QString::fromLocal8Bit(std::strerror(number))};
}

Contents parsed(const QByteArray& bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return {Contents::State::Unparsable, {}, {}};
    return {Contents::State::Good, document.object(), {}};
}

Contents readContents(const QString& path) {
    // Without O_NONBLOCK a named pipe in the file's place would hold the program up for ever.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return errno == ENOENT ? Contents{} : unusable(errno);
    struct stat found {};
    QFile file;
    if (::fstat(descriptor, &found) != 0 || !S_ISREG(found.st_mode) ||
        !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return unusable(S_ISDIR(found.st_mode) ? EISDIR : EINVAL);
    }
    if (found.st_size > largestFile)
        return {Contents::State::Unparsable, {}, {}};
    const QByteArray bytes = file.read(largestFile);
    if (file.error() != QFileDevice::NoError)
        return {Contents::State::Unusable, {}, file.errorString()};
    return parsed(bytes);
}

Result<void> moveAside(const QString& path) {
    const QByteArray from = QFile::encodeName(path);
    const QByteArray to = QFile::encodeName(path + QStringLiteral(".bad"));
    if (std::rename(from.constData(), to.constData()) != 0)
        return failure(QString::fromLocal8Bit(std::strerror(errno)));
    return {};
}

} // namespace

Defaults& Defaults::shared() {
    return Shared<Defaults>::instance();
}
void Defaults::useFile(const QString& file) {
    fileOfShared = file;
}

Defaults::Defaults() : Defaults(fileOfShared) {}

Defaults::Defaults(QString file) : path(std::move(file)) {
    if (!path.isEmpty())
        stored = readContents(path).values;
}

QJsonValue Defaults::value(const QString& key) const {
    return unsaved.contains(key) ? unsaved.value(key) : stored.value(key);
}

bool Defaults::holds(const QString& key) const {
    return !value(key).isUndefined();
}

std::optional<QString> Defaults::stringForKey(const QString& key) const {
    const QJsonValue found = value(key);
    return found.isString() ? std::optional(found.toString()) : std::nullopt;
}

std::optional<double> Defaults::doubleForKey(const QString& key) const {
    const QJsonValue found = value(key);
    return found.isDouble() ? std::optional(found.toDouble()) : std::nullopt;
}

std::optional<bool> Defaults::boolForKey(const QString& key) const {
    const QJsonValue found = value(key);
    return found.isBool() ? std::optional(found.toBool()) : std::nullopt;
}

std::optional<qint64> Defaults::integerForKey(const QString& key) const {
    const QJsonValue found = value(key);
    if (!found.isDouble())
        return std::nullopt;
    // toInteger() gives its argument back for a fraction and for what is out of range: two answers tell those
    // apart.
    const qint64 integer = found.toInteger(0);
    return integer == found.toInteger(1) ? std::optional(integer) : std::nullopt;
}

void Defaults::setString(const QString& key, const QString& value) {
    change(key, [&](const QJsonValue&) { return QJsonValue(value); });
}
void Defaults::setDouble(const QString& key, double value) {
    change(key, [&](const QJsonValue&) { return QJsonValue(value); });
}
void Defaults::setBool(const QString& key, bool value) {
    change(key, [&](const QJsonValue&) { return QJsonValue(value); });
}
void Defaults::setInteger(const QString& key, qint64 value) {
    change(key, [&](const QJsonValue&) { return QJsonValue(value); });
}

void Defaults::addInteger(const QString& key, qint64 amount) {
    change(key, [&](const QJsonValue& now) {
        qint64 sum = 0;
        if (__builtin_add_overflow(now.toInteger(0), amount, &sum))
            sum = amount > 0 ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min();
        return QJsonValue(sum);
    });
}

bool Defaults::finishSets(std::chrono::milliseconds patience) {
    return !Shared<Defaults>::exists() || shared().finish(patience);
}

bool Defaults::finish(std::chrono::milliseconds patience) {
    if (!unsaved.isEmpty())
        static_cast<void>(changeFile([](QJsonObject&) {}, patience));
    return flushing.finish(patience);
}

void Defaults::change(const QString& key, const Change& change) {
    if (path.isEmpty()) {
        stored.insert(key, change(stored.value(key)));
        return;
    }
    const Result<void> written =
        changeFile([&](QJsonObject& values) { values.insert(key, change(values.value(key))); }, lockPatience);
    if (written) {
        lastComplaint.clear();
        return;
    }
    unsaved.insert(key, change(value(key)));
    // A slider sets many times a second: the same trouble is told once.
    const QString complaint =
        QStringLiteral("[Marrowfin] Saving settings failed: ") + written.error().message;
    if (complaint != lastComplaint)
        logLine(complaint);
    lastComplaint = complaint;
}

Result<void> Defaults::changeFile(const std::function<void(QJsonObject&)>& change,
                                  std::chrono::milliseconds patience) {
    if (Result<void> folder = makePrivateFolder(QFileInfo(path).absolutePath()); !folder)
        return folder;
    const Result<FileLock> lock = FileLock::take(path + QStringLiteral(".lock"), patience);
    if (!lock)
        return tl::unexpected(lock.error());
    Contents contents = readContents(path);
    if (contents.state == Contents::State::Unusable)
        return failure(contents.why);
    // What an earlier set could not write goes along; its key counts as this process knows it.
    for (auto each = unsaved.constBegin(); each != unsaved.constEnd(); ++each)
        contents.values.insert(each.key(), each.value());
    change(contents.values);
    if (contents.state == Contents::State::Unparsable)
        if (Result<void> moved = moveAside(path); !moved)
            return moved;
    const QByteArray bytes = QJsonDocument(contents.values).toJson();
    if (Result<void> written = writeFileAtomically(path, bytes, {.appears = FileAppears::OnceWritten});
        !written)
        return written;
    flushing.async([path = path] { flushToDisk(path); });
    stored = contents.values;
    unsaved = {};
    return {};
}

} // namespace marrowfin::settings
