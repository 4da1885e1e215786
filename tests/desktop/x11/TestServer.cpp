#include "x11/TestServer.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace marrowfin::test {

TestServer::TestServer(const QStringList& arguments, const QByteArray& screen) {
    int ends[2];
    if (::pipe(ends) != 0)
        std::abort();
    std::vector<QByteArray> words = {"Xvfb",     "-displayfd", QByteArray::number(ends[1]),
                                     "-screen",  "0",          screen,
                                     "-noreset", "-nolisten",  "tcp"};
    for (const QString& argument : arguments)
        words.push_back(argument.toLocal8Bit());
    std::vector<char*> pointers;
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    process = ::fork();
    if (process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::close(ends[0]);
        const int nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, 2);
        ::execvp("Xvfb", pointers.data());
        ::_exit(127);
    }
    ::close(ends[1]);
    // The server writes its number once it takes connections.
    QByteArray number;
    char c = 0;
    while (::read(ends[0], &c, 1) == 1 && c != '\n')
        number.append(c);
    ::close(ends[0]);
    name = ":" + number;
}

TestServer::~TestServer() {
    kill();
}

void TestServer::kill() {
    if (process <= 0)
        return;
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    process = -1;
}

} // namespace marrowfin::test
