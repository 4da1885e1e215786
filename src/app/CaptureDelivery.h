// What happens to a capture once it was taken, one at a time and in the order taken: history, clipboard, then
// what the settings say, or the file that its ticket asks for. Owned by the delegate; main thread.
#pragma once

#include "base/Flow.h"
#include "commands/Command.h"
#include "imaging/Image.h"

#include <QObject>
#include <deque>
#include <optional>
#include <vector>

namespace marrowfin::app {

// Travels with the capture of a command, so that who gave the command can be told where the capture went.
struct CaptureTicket {
    QString output; // empty: the settings decide
    Settler<commands::CommandResult> settler;
};

enum class Clipboard { Works, IsGone };

class CaptureDelivery : public QObject {
    Q_OBJECT
public:
    // The ticket of the image that is received next.
    void attach(const imaging::Image& image, CaptureTicket ticket);
    // Kept in order until open() was called.
    void receive(const imaging::Image& image);
    void open();
    // Clipboard first, then the output, or what the settings say. Failed when the output couldn't be written.
    Flow<Result<commands::CommandResult>> route(imaging::Image image, QString output);
    // At the end of the program: captures that still wait for their turn reach the clipboard and are asked to
    // become the files that routing would make of them, without a card. Returns at once.
    void finish(Clipboard clipboard);

Q_SIGNALS:
    // A capture has been through history and routing.
    void captureRouted();

private:
    struct Arrival {
        imaging::Image image;
        std::optional<CaptureTicket> ticket;
        Outcome<std::optional<QString>> saved; // into the history
    };
    struct Unrouted {
        imaging::Image image;
        QString output;
    };
    std::optional<CaptureTicket> takeTicket(const imaging::Image& image);
    Flow<> drain();
    Flow<> deliver(Arrival arrival);
    Flow<bool> offer(imaging::Image image);
    // The path of the automatic save; empty where there is none.
    Flow<QString> obeySettings(imaging::Image image);

    enum class Sink { Closed, Open, Draining };
    Sink sink = Sink::Closed;
    std::deque<Arrival> waiting;
    std::optional<Unrouted> underWay; // until the clipboard has it
    bool finished = false;
    std::vector<std::pair<imaging::Image, CaptureTicket>> tickets; // of images that weren't received yet
    FlowScope flows;
};

} // namespace marrowfin::app
