// Process entry: hands the desktop that it was started on to the Runtime, which does the rest.
#include "app/Runtime.h"
#include "base/LostReaders.h"
#include "base/Memory.h"
#include "session/Session.h"
#include "session/WindowSystem.h"

#include <cstdio>

using namespace marrowfin;

namespace {

QStringList argumentList(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

Result<app::OpenDesktop> openDesktop(app::DesktopRequest request) {
    Result<std::unique_ptr<session::Session>> opened =
        session::Session::open(request.busName, std::move(request.onLost));
    if (!opened)
        return tl::unexpected(opened.error());
    std::shared_ptr<session::Session> session = *std::move(opened);
    return app::OpenDesktop{session, session->services()};
}

} // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    outliveReaders();
    giveLargeMemoryBack();
    app::RuntimeOptions options;
    if (argc > 0)
        options.program = argv[0];
    options.chooseWindowSystem = session::chooseWindowSystem;
    options.openDesktop = openDesktop;
    return app::Runtime(std::move(options)).run(argumentList(argc, argv));
}
