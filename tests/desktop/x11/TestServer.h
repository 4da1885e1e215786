// An X server of the test's own, for what the desktop's server can't be asked to lack. Ends with the object.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <sys/types.h>

namespace marrowfin::test {

class TestServer {
public:
    // Of Xvfb, as in {"-extension", "MIT-SHM"}; the screen is "800x600x24" unless said otherwise.
    explicit TestServer(const QStringList& arguments, const QByteArray& screen = "800x600x24");
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    const QByteArray& display() const { return name; }
    void kill();

private:
    pid_t process = -1;
    QByteArray name;
};

} // namespace marrowfin::test
