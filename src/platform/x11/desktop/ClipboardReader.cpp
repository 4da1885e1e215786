#include "platform/x11/desktop/ClipboardReader.h"

#include "platform/x11/server/Connection.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <poll.h>
#include <vector>

namespace marrowfin::x11 {

namespace {

constexpr int readingMilliseconds = 5000;
// How long it may take until the question whether to give up is asked again.
constexpr int sliceMilliseconds = 50;
// No picture that can be decoded is larger.
constexpr qsizetype mostBytes = qsizetype(1) << 30;

// Lossless first; nothing that isn't pixels.
constexpr const char* firstType = "image/png";
constexpr const char* otherTypes[] = {"image/bmp", "image/tiff", "image/webp", "image/jpeg", "image/gif"};

class ClipboardReader {
public:
    ClipboardReader(const Connection& connection, const std::function<bool()>& isGivenUp)
        : c(connection), isGivenUp(isGivenUp), window(xcb_generate_id(c.raw())),
          place(c.intern("MARROWFIN_PASTED")) {
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        c.ignore(xcb_create_window_checked(c.raw(), 0, window, c.root(), 0, 0, 1, 1, 0,
                                           XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                                           XCB_CW_EVENT_MASK, &mask));
    }

    QByteArray image() {
        if (QByteArray bytes = converted(c.intern(firstType)); !bytes.isEmpty())
            return bytes;
        const std::vector<xcb_atom_t> offered = targets();
        for (const char* type : otherTypes) {
            const xcb_atom_t wanted = c.intern(type);
            if (std::find(offered.begin(), offered.end(), wanted) == offered.end())
                continue;
            if (QByteArray bytes = converted(wanted); !bytes.isEmpty())
                return bytes;
        }
        return {};
    }

private:
    struct Piece {
        xcb_atom_t type = XCB_ATOM_NONE;
        QByteArray bytes;
    };

    bool isOver() const { return deadline.hasExpired() || isGivenUp() || c.isLost(); }

    // The next event; null when there is none in time.
    Reply<xcb_generic_event_t> next() const {
        c.flush();
        while (!isOver()) {
            if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(c.raw())})
                return event;
            pollfd awaited{xcb_get_file_descriptor(c.raw()), POLLIN, 0};
            ::poll(&awaited, 1, sliceMilliseconds);
        }
        return nullptr;
    }

    // Whether the owner has put the answer where it was asked to; also false when it refuses.
    bool waitForAnswer(xcb_atom_t target) const {
        while (const auto event = next()) {
            if ((event->response_type & 0x7F) != XCB_SELECTION_NOTIFY)
                continue;
            const auto& told = reinterpret_cast<const xcb_selection_notify_event_t&>(*event);
            if (told.requestor == window && told.target == target)
                return told.property != XCB_ATOM_NONE;
        }
        return false;
    }

    bool waitForNextPiece() const {
        while (const auto event = next()) {
            if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY)
                continue;
            const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
            if (told.window == window && told.atom == place && told.state == XCB_PROPERTY_NEW_VALUE)
                return true;
        }
        return false;
    }

    // What stands there, taken away: that is what an owner waits for before it puts down the next piece.
    Piece taken() const {
        constexpr std::uint32_t all = 0x1FFFFFFF;
        const auto answer =
            c.reply(xcb_get_property_reply,
                    xcb_get_property(c.raw(), 1, window, place, XCB_GET_PROPERTY_TYPE_ANY, 0, all));
        if (!answer)
            return {};
        const int length = xcb_get_property_value_length(answer.get());
        return {answer->type,
                QByteArray(static_cast<const char*>(xcb_get_property_value(answer.get())), length)};
    }

    QByteArray converted(xcb_atom_t target) const {
        c.ignore(xcb_convert_selection_checked(c.raw(), window, c.atom(Atom::Clipboard), target, place,
                                               XCB_CURRENT_TIME));
        if (!waitForAnswer(target))
            return {};
        const Piece answer = taken();
        return answer.type == c.atom(Atom::Incr) ? inPieces() : answer.bytes;
    }

    // The end is a piece of nothing.
    QByteArray inPieces() const {
        QByteArray bytes;
        while (waitForNextPiece()) {
            const Piece piece = taken();
            if (piece.bytes.isEmpty())
                return bytes;
            if (bytes.size() + piece.bytes.size() > mostBytes)
                return {};
            bytes += piece.bytes;
        }
        return {};
    }

    std::vector<xcb_atom_t> targets() const {
        const QByteArray words = converted(c.atom(Atom::Targets));
        const auto* first = reinterpret_cast<const xcb_atom_t*>(words.constData());
        return {first, first + static_cast<std::size_t>(words.size()) / sizeof(xcb_atom_t)};
    }

    const Connection& c;
    const std::function<bool()>& isGivenUp;
    const xcb_window_t window;
    const xcb_atom_t place;
    const QDeadlineTimer deadline{readingMilliseconds};
};

} // namespace

QByteArray readClipboardImage(const QByteArray& displayName, const std::function<bool()>& isGivenUp) {
    const auto connection = Connection::open(displayName);
    if (!connection || (*connection)->selectionOwner((*connection)->atom(Atom::Clipboard)) == XCB_WINDOW_NONE)
        return {};
    return ClipboardReader(**connection, isGivenUp).image();
}

} // namespace marrowfin::x11
