#include "platform/ModuleLoader.h"

#include "base/Log.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <dlfcn.h>

namespace marrowfin::platform {

namespace {

QString pathOf(const QString& directory, const QString& library) {
    const QString file = QStringLiteral("libmarrowfin_%1.so").arg(library);
    const QString own = directory + u'/' + library + u'/' + file;
    return QFileInfo::exists(own) ? own : directory + u'/' + file;
}

} // namespace

ModuleLoader::ModuleLoader(QString given) : directory(std::move(given)) {}

QString ModuleLoader::ownDirectory() {
    Dl_info found{};
    if (::dladdr(reinterpret_cast<const void*>(&ModuleLoader::ownDirectory), &found) == 0)
        return {};
    return QFileInfo(QFile::decodeName(found.dli_fname)).absolutePath();
}

Result<QFunctionPointer> ModuleLoader::resolve(const QString& directory, const ModuleName& name,
                                               const char* entry) {
    const QString path = pathOf(directory, name.library);
    if (!QFileInfo::exists(path))
        return unavailable(
            QStringLiteral("This needs the package %1, which isn't installed.").arg(name.package));
    QLibrary library(path);
    const QFunctionPointer found = library.resolve(entry);
    if (found)
        return found;
    logLine(QStringLiteral("[Marrowfin] ") + library.errorString());
    return unavailable(
        QStringLiteral("The package %1 doesn't work: it, or something that it needs, is damaged or missing.")
            .arg(name.package));
}

} // namespace marrowfin::platform
