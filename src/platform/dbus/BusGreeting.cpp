#include "platform/dbus/BusGreeting.h"

#include <QList>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace marrowfin::dbus {

namespace {

// The name of the first socket of this machine in a list like
// "unix:path=/run/user/1000/bus,guid=...;tcp:...", as the kernel has it: one that isn't a file begins with a
// zero.
QByteArray socketName(const QByteArray& address) {
    for (const QByteArray& one : address.split(';')) {
        if (!one.startsWith("unix:"))
            continue;
        for (const QByteArray& part : one.mid(5).split(',')) {
            if (part.startsWith("path="))
                return QByteArray::fromPercentEncoding(part.mid(5));
            if (part.startsWith("abstract="))
                return '\0' + QByteArray::fromPercentEncoding(part.mid(9));
        }
    }
    return {};
}

bool connectTo(int descriptor, const QByteArray& name) {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    std::memcpy(place.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
    return ::connect(descriptor, reinterpret_cast<const sockaddr*>(&place), length) == 0;
}

} // namespace

std::optional<BusGreeting> BusGreeting::begin(const QByteArray& address) {
    const QByteArray name = socketName(address);
    if (name.isEmpty() || static_cast<std::size_t>(name.size()) >= sizeof(sockaddr_un::sun_path))
        return std::nullopt;
    BusGreeting greeting(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (greeting.descriptor < 0)
        return std::nullopt;
    if (!connectTo(greeting.descriptor, name)) {
        // So many wait there already that the connection itself would.
        if (errno == EAGAIN)
            return BusGreeting(-1);
        return std::nullopt;
    }
    const QByteArray words =
        QByteArray("\0AUTH EXTERNAL ", 15) + QByteArray::number(::getuid()).toHex() + QByteArray("\r\n");
    (void)::send(greeting.descriptor, words.constData(), static_cast<std::size_t>(words.size()),
                 MSG_NOSIGNAL);
    return greeting;
}

BusGreeting::~BusGreeting() {
    if (descriptor >= 0)
        ::close(descriptor);
}

BusGreeting::BusGreeting(BusGreeting&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}

BusGreeting::Answer BusGreeting::wait(int milliseconds) const {
    pollfd awaited{descriptor, POLLIN, 0};
    if (descriptor < 0 || ::poll(&awaited, 1, milliseconds) < 1)
        return Answer::None;
    char first = 0;
    return ::recv(descriptor, &first, 1, MSG_PEEK) == 1 ? Answer::Given : Answer::Closed;
}

} // namespace marrowfin::dbus
