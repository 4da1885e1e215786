#include "platform/freedesktop/FreedesktopFolders.h"

#include <QDir>
#include <QStandardPaths>

namespace marrowfin::freedesktop {

namespace {

// A user folder that user-dirs.dirs switches off is set to the home folder itself: then there is none.
std::optional<QString> userFolder(QStandardPaths::StandardLocation location) {
    const QString path = QStandardPaths::writableLocation(location);
    if (path.isEmpty() || QDir(path) == QDir(QDir::homePath()))
        return std::nullopt;
    return path;
}

} // namespace

QString FreedesktopFolders::applicationSupport() const {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString FreedesktopFolders::configuration() const {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
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
