#include "platform/x11/capture/StreamLoop.h"

#include "platform/x11/capture/DamageRegion.h"

#include <algorithm>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xfixes.h>

namespace marrowfin::x11 {

using namespace platform;
using namespace std::chrono_literals;

namespace {
using Clock = std::chrono::steady_clock;
constexpr std::chrono::nanoseconds leastInterval = std::chrono::nanoseconds(1s) / 60;
constexpr int mostOnTheirWay = 3;
} // namespace

// One run: its own connection, what it follows and what it knows.
class StreamLoop::Session {
public:
    Session(StreamLoop& loop, Connection& connection, const LayoutBoard& layouts, const ContentFilter& filter,
            const StreamConfiguration& configuration, const Sink& sink)
        : loop(loop), connection(connection), grabber(connection, SegmentPool::Reuse::Yes),
          frames(grabber, layouts, filter, configuration), sink(sink),
          followsCursor(configuration.showsCursor && connection.extensions().xfixes),
          followsWindow(std::holds_alternative<WindowFilter>(filter)),
          frameInterval(std::max(configuration.minimumFrameInterval, leastInterval)) {}

    std::optional<Error> run() {
        follow();
        if (auto error = sendComplete())
            return error;
        while (!loop.stopping) {
            sleep();
            readEvents();
            if (connection.isLost())
                return Error{Error::Kind::Failed, QStringLiteral("The connection to the X server is lost.")};
            if (Clock::now() < next)
                continue;
            if (auto error = tick())
                return error;
        }
        return std::nullopt;
    }

private:
    void follow() {
        if (connection.extensions().damage) {
            damage = xcb_generate_id(connection.raw());
            connection.ignore(xcb_damage_create_checked(connection.raw(), damage, frames.drawable(),
                                                        XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY));
        }
        if (followsWindow)
            noticeItsEnd();
        if (followsCursor)
            cursor = grabber.cursor();
    }

    // Its damage ends with the window, without a word.
    void noticeItsEnd() {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        connection.ignore(xcb_change_window_attributes_checked(connection.raw(), frames.drawable(),
                                                               XCB_CW_EVENT_MASK, &mask));
    }

    bool mayGrab() const { return loop.onTheirWay < mostOnTheirWay; }

    // Until the next frame is due, or, with nothing to do, until something happens.
    void sleep() {
        connection.flush();
        // First: what came with an earlier answer is in the library's own queue, where poll() can't see it.
        readEvents();
        const bool waitsForTime = (changed && mayGrab()) || isPolling() || tellsIdle;
        int timeout = -1;
        if (waitsForTime) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now()).count();
            timeout = static_cast<int>(std::max<std::int64_t>(left, 0));
        }
        pollfd sources[] = {{xcb_get_file_descriptor(connection.raw()), POLLIN, 0},
                            {loop.wakeDescriptor, POLLIN, 0}};
        ::poll(sources, 2, timeout);
        std::uint64_t count = 0;
        if ((sources[1].revents & POLLIN) != 0) [[maybe_unused]]
            const ssize_t n = ::read(loop.wakeDescriptor, &count, sizeof count);
    }

    // The pointer's moves, and without Damage everything, is found by looking.
    bool isPolling() const { return followsCursor || !damage; }

    void readEvents() {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection.raw())}) {
            const int type = event->response_type & 0x7F;
            if (damage && type == connection.extensions().damageFirstEvent + XCB_DAMAGE_NOTIFY)
                takeChange();
            else if (followsWindow && type == XCB_DESTROY_NOTIFY)
                changed = true;
        }
    }

    void takeChange() {
        const QRegion area = takeDamage(connection, damage);
        drawn += area;
        // Of a window every part counts: its frame moves with it.
        if (followsWindow || area.intersects(frames.lastArea()))
            changed = true;
    }

    // What of the frame just grabbed differs from the one before.
    QRegion damageOf(const Frame& frame, const QRegion& before) {
        const QRect area = frames.lastArea();
        const QRect cursorNow = grabber.drawnCursor();
        const QRegion cursors = QRegion(std::exchange(cursorBefore, cursorNow)) + cursorNow;
        const bool comparable = std::exchange(areaBefore, area) == area && !followsWindow && damage;
        if (!comparable)
            return frame.pixels.rect();
        return (before + drawn + cursors).translated(-area.topLeft()) & frame.pixels.rect();
    }

    void lookAtCursor() {
        if (!followsCursor)
            return;
        const auto at =
            connection.reply(xcb_query_pointer_reply, xcb_query_pointer(connection.raw(), connection.root()));
        if (!at)
            return;
        const QPoint now(at->root_x, at->root_y);
        const CursorPicture old = cursor;
        if (now == pointer && ticksSinceCursor++ < 6)
            return; // its shape changes less often than its place: look ten times a second
        ticksSinceCursor = 0;
        pointer = now;
        cursor = grabber.cursor();
        const bool differs = old.serial != cursor.serial || old.rect() != cursor.rect();
        if (differs &&
            (old.rect().intersects(frames.lastArea()) || cursor.rect().intersects(frames.lastArea())))
            changed = true;
    }

    std::optional<Error> tick() {
        next = Clock::now() + frameInterval;
        lookAtCursor();
        if (!damage)
            return sendIfDifferent();
        if (changed)
            return mayGrab() ? sendComplete() : std::nullopt;
        if (std::exchange(tellsIdle, false))
            sendIdle();
        return std::nullopt;
    }

    std::optional<Error> sendComplete() {
        changed = false;
        const QRegion before = std::exchange(drawn, {});
        auto frame = frames.grab();
        if (!frame)
            return frame.error();
        next = Clock::now() + frameInterval;
        // What was drawn just before the grab may only be told now. As it may also have been drawn after it,
        // it is the next frame's too.
        readEvents();
        frame->damage = damageOf(*frame, before);
        send(*frame);
        tellsIdle = true;
        return std::nullopt;
    }

    std::optional<Error> sendIfDifferent() {
        if (!mayGrab())
            return std::nullopt;
        auto frame = frames.grab();
        if (!frame)
            return frame.error();
        if (frame->pixels != previous) {
            previous = frame->pixels;
            send(*frame);
            tellsIdle = true;
        } else if (std::exchange(tellsIdle, false)) {
            sendIdle();
        }
        return std::nullopt;
    }

    void sendIdle() {
        Frame idle;
        idle.status = FrameStatus::Idle;
        idle.timestampNanoseconds = monotonicNanoseconds();
        send(idle);
    }

    void send(const Frame& frame) {
        ++loop.onTheirWay;
        sink(frame);
    }

    StreamLoop& loop;
    Connection& connection;
    Grabber grabber;
    FrameGrab frames;
    const Sink& sink;
    bool followsCursor;
    bool followsWindow;
    std::chrono::nanoseconds frameInterval;
    std::uint32_t damage = 0;
    // What the server told of since the last grab, in root coordinates; and what the frame before showed.
    QRegion drawn;
    QRect areaBefore;
    QRect cursorBefore;
    bool changed = false;
    bool tellsIdle = false;
    Clock::time_point next = Clock::now();
    CursorPicture cursor;
    QPoint pointer;
    int ticksSinceCursor = 0;
    QImage previous; // where there is no Damage
};

StreamLoop::StreamLoop() : wakeDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

StreamLoop::~StreamLoop() {
    if (wakeDescriptor >= 0)
        ::close(wakeDescriptor);
}

std::optional<Error> StreamLoop::run(const QByteArray& displayName, const LayoutBoard& layouts,
                                     const ContentFilter& filter, const StreamConfiguration& configuration,
                                     const Sink& sink) {
    const auto connection = Connection::open(displayName);
    if (!connection)
        return connection.error();
    Session session(*this, **connection, layouts, filter, configuration, sink);
    return session.run();
}

void StreamLoop::stop() {
    stopping = true;
    wake();
}

void StreamLoop::frameTaken() {
    if (onTheirWay-- == mostOnTheirWay)
        wake();
}

void StreamLoop::wake() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t n = ::write(wakeDescriptor, &one, sizeof one);
}

} // namespace marrowfin::x11
