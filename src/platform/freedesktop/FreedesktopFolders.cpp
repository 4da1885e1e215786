#include "platform/freedesktop/FreedesktopFolders.h"

#include <QDir>
#include <QStandardPaths>

namespace marrowfin::freedesktop {

namespace {

// Paths that aren't absolute are invalid by the rules, and are as good as unset.
QString homeFolder(const char* variable, const QString& belowHome) {
    const QString given = qEnvironmentVariable(variable);
    return QDir::isAbsolutePath(given) ? QDir::cleanPath(given) : QDir::homePath() + belowHome;
}

// A user folder that user-dirs.dirs switches off is set to the home folder itself: then there is none.
// Without a home the toolkit would name a folder below the root.
std::optional<QString> userFolder(QStandardPaths::StandardLocation location) {
    const QString path = QStandardPaths::writableLocation(location);
    if (path.isEmpty() || QDir::homePath() == QDir::rootPath() || QDir(path) == QDir(QDir::homePath()))
        return std::nullopt;
    return path;
}

} // namespace

QString FreedesktopFolders::applicationSupport() const {
    return homeFolder("XDG_DATA_HOME", QStringLiteral("/.local/share"));
}

QString FreedesktopFolders::configuration() const {
    return homeFolder("XDG_CONFIG_HOME", QStringLiteral("/.config"));
}

std::optional<QString> FreedesktopFolders::pictures() const {
    return userFolder(QStandardPaths::PicturesLocation);
}
std::optional<QString> FreedesktopFolders::movies() const {
    return userFolder(QStandardPaths::MoviesLocation);
}
QString FreedesktopFolders::temporary() const {
    return QDir::tempPath();
}

} // namespace marrowfin::freedesktop
