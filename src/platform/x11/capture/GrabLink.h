// The connection and the queue that captures run on, apart from Qt's, so that no capture waits for the main
// thread and none holds it up. Shared by the source, its streams and the surfaces. The queue is for any
// thread, the rest for the queue.
#pragma once

#include "base/SerialQueue.h"
#include "platform/x11/capture/Grabber.h"
#include "platform/x11/layout/LayoutBoard.h"

#include <QByteArray>
#include <QStringList>
#include <memory>

namespace marrowfin::x11 {

class GrabLink {
public:
    GrabLink(QByteArray displayName, std::shared_ptr<LayoutBoard> board);

    SerialQueue& queue() { return serial; }
    const LayoutBoard& layouts() const { return *board; }
    const QByteArray& displayName() const { return name; }
    // On the queue. Connects when there is no connection (any more).
    Result<Grabber*> grabber();
    // On the queue, before anybody is told of a failure: when the server itself is gone, the program ends
    // first, with one line and not two.
    void failed();

private:
    QByteArray name;
    std::shared_ptr<LayoutBoard> board;
    std::unique_ptr<Connection> connection;
    std::unique_ptr<Grabber> reader;
    bool toldOfExtensions = false;
    // The last member: its destructor finishes what is in it, which uses the others.
    SerialQueue serial;
};

// One line for each thing that the server can't do and how captures go without it.
QStringList linesAboutMissing(const Extensions& present);

} // namespace marrowfin::x11
