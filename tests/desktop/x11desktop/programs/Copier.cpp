// Copies the picture that its argument names and quits the way the program does: clipboard handed over, then
// the application object destroyed. With "--at-once" it quits before the picture's encoding is done.
#include "base/Log.h"
#include "base/Shared.h"
#include "imaging/ImageReader.h"
#include "platform/x11/desktop/X11Pasteboard.h"

#include <QApplication>
#include <QTimer>

using namespace marrowfin;
using namespace imaging;

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const Result<Image> image = readImageFile(arguments.value(1));
    if (!image)
        return 2;
    const auto connection = x11::Connection::adoptQt();
    if (!connection)
        return 4;
    x11::X11Pasteboard pasteboard(**connection);
    const Outcome<void> written = pasteboard.writeImage(*image);
    QObject::connect(&application, &QApplication::aboutToQuit, [&pasteboard] { pasteboard.handOver(); });
    if (arguments.contains(QStringLiteral("--at-once")))
        QTimer::singleShot(0, &application, &QApplication::quit);
    else
        written.then([](const Result<void>& result) { QCoreApplication::exit(result ? 0 : 3); });
    const int code = application.exec();
    SharedObjects::destroyAll();
    return code;
}
