// The first words with a bus, on a socket of its own that waits for nothing: whether anybody is at the other
// end. Any thread.
#pragma once

#include <QByteArray>
#include <optional>

namespace marrowfin::dbus {

class BusGreeting {
public:
    enum class Answer { None, Given, Closed };

    // Nothing where there is no socket of this machine to speak to, or nobody listens: whoever connects there
    // learns so at once.
    static std::optional<BusGreeting> begin(const QByteArray& address);
    ~BusGreeting();
    BusGreeting(BusGreeting&& other) noexcept;
    BusGreeting& operator=(BusGreeting&&) = delete;

    Answer wait(int milliseconds) const;
    // -1 where not even the connection was taken.
    int socket() const { return descriptor; }

private:
    explicit BusGreeting(int descriptor) : descriptor(descriptor) {}
    int descriptor;
};

} // namespace marrowfin::dbus
