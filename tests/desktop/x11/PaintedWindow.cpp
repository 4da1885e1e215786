#include "x11/PaintedWindow.h"

#include "platform/x11/capture/Grabber.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb_icccm.h>

namespace marrowfin::test {

using x11::Atom;
using x11::Connection;
using x11::Reply;

namespace {
int madeSoFar = 0;
}

QImage patternOf(const QSize& size, std::uint32_t seed, int depth) {
    QImage image(size, depth == 32 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const auto ux = static_cast<std::uint32_t>(x);
            const auto uy = static_cast<std::uint32_t>(y);
            if (depth == 32) {
                const std::uint32_t alpha = (ux * 3 + seed * 40) & 0xFF;
                reinterpret_cast<std::uint32_t*>(image.scanLine(y))[x] =
                    qPremultiply(qRgba(200, static_cast<int>(uy & 0xFF), 50, static_cast<int>(alpha)));
            } else {
                reinterpret_cast<std::uint32_t*>(image.scanLine(y))[x] =
                    0xFF000000 | (((ux * 7 + seed * 53) & 0xFF) << 16) |
                    (((uy * 5 + seed * 91) & 0xFF) << 8) | ((ux * uy + seed * 17) & 0xFF);
            }
        }
    }
    return image;
}

PaintedWindow::PaintedWindow(const QByteArray& display, const WindowLook& look)
    : look(look), seed(look.seed) {
    connection = *Connection::open(display);
    asking = *Connection::open(display);
    make();
    connection->sync();
    thread = std::thread([this] { run(); });
    waitUntilPainted();
}

PaintedWindow::~PaintedWindow() {
    ending = true;
    // Something for the thread to wake up from.
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    asking->check(
        xcb_send_event_checked(asking->raw(), 0, window, 0, reinterpret_cast<const char*>(&message)));
    thread.join();
    connection->check(xcb_destroy_window_checked(connection->raw(), window));
}

void PaintedWindow::make() {
    xcb_connection_t* c = connection->raw();
    const xcb_screen_t& screen = connection->screen();
    xcb_visualid_t visual = screen.root_visual;
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (look.depth == 32 && depth.data->depth == 32)
            visual = xcb_depth_visuals_iterator(depth.data).data->visual_id;
    }
    const xcb_colormap_t colors = xcb_generate_id(c);
    xcb_create_colormap(c, XCB_COLORMAP_ALLOC_NONE, colors, screen.root, visual);
    // The server gives a new client the numbers of one that went. A window manager that hears late of the old
    // window's end would take the new one for it.
    for (int used = madeSoFar++; used >= 0; --used)
        window = xcb_generate_id(c);
    const std::uint32_t values[] = {0, 0, look.managed ? 0U : 1U,
                                    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY, colors};
    const auto depth = static_cast<std::uint8_t>(look.depth == 32 ? 32 : screen.root_depth);
    xcb_create_window(c, depth, window, screen.root, static_cast<std::int16_t>(look.rect.x()),
                      static_cast<std::int16_t>(look.rect.y()), static_cast<std::uint16_t>(look.rect.width()),
                      static_cast<std::uint16_t>(look.rect.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK |
                          XCB_CW_COLORMAP,
                      values);
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_position(&hints, 1, look.rect.x(), look.rect.y());
    xcb_icccm_set_wm_normal_hints(c, window, &hints);
    const auto set = [&](Atom name, xcb_atom_t type, const std::vector<std::uint32_t>& values32) {
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, connection->atom(name), type, 32,
                            static_cast<std::uint32_t>(values32.size()), values32.data());
    };
    if (look.tellsProcess)
        set(Atom::NetWmPid, XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(::getpid())});
    if (look.answersPings)
        set(Atom::WmProtocols, XCB_ATOM_ATOM, {connection->atom(Atom::NetWmPing)});
    if (!look.strut.empty()) {
        set(Atom::NetWmStrutPartial, XCB_ATOM_CARDINAL, look.strut);
        set(Atom::NetWmWindowType, XCB_ATOM_ATOM, {connection->atom(Atom::NetWmWindowTypeDock)});
    }
    xcb_icccm_set_wm_name(c, window, XCB_ATOM_STRING, 8, 7, "painted");
    xcb_map_window(c, window);
}

void PaintedWindow::run() {
    while (!ending) {
        Reply<xcb_generic_event_t> event(xcb_wait_for_event(connection->raw()));
        if (!event)
            return;
        bool exposed = false;
        for (; event; event.reset(xcb_poll_for_event(connection->raw()))) {
            exposed = exposed || (event->response_type & 0x7F) == XCB_EXPOSE;
            handle(*event);
        }
        if (exposed) {
            std::this_thread::sleep_for(look.delay); // the program's slowness, not ours
            paint();
        }
    }
}

void PaintedWindow::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE || !look.answersPings)
        return;
    auto message = *reinterpret_cast<const xcb_client_message_event_t*>(&event);
    if (message.type != connection->atom(Atom::WmProtocols) ||
        message.data.data32[0] != connection->atom(Atom::NetWmPing))
        return;
    message.window = connection->root();
    connection->check(
        xcb_send_event_checked(connection->raw(), 0, connection->root(),
                               XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                               reinterpret_cast<const char*>(&message)));
}

void PaintedWindow::paint() {
    xcb_connection_t* c = connection->raw();
    const QImage image = patternOf(look.rect.size(), seed, look.depth);
    const xcb_gcontext_t context = xcb_generate_id(c);
    xcb_create_gc(c, context, window, 0, nullptr);
    const int rows = 50; // within the longest request
    for (int y = 0; y < image.height(); y += rows) {
        const int height = std::min(rows, image.height() - y);
        xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context,
                      static_cast<std::uint16_t>(image.width()), static_cast<std::uint16_t>(height), 0,
                      static_cast<std::int16_t>(y), 0,
                      static_cast<std::uint8_t>(look.depth == 32 ? 32 : connection->screen().root_depth),
                      static_cast<std::uint32_t>(image.bytesPerLine() * height), image.constScanLine(y));
    }
    xcb_free_gc(c, context);
    connection->sync();
    ++paints;
    paints.notify_all();
}

void PaintedWindow::waitUntilPainted() {
    paints.wait(0);
}

QImage PaintedWindow::pattern() const {
    return patternOf(look.rect.size(), seed, look.depth);
}

void PaintedWindow::raise() {
    // The root's child that holds it, past the window manager.
    xcb_window_t top = window;
    for (;;) {
        const auto tree = asking->reply(xcb_query_tree_reply, xcb_query_tree(asking->raw(), top));
        if (!tree || tree->parent == asking->root())
            break;
        top = tree->parent;
    }
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    asking->check(xcb_configure_window_checked(asking->raw(), top, XCB_CONFIG_WINDOW_STACK_MODE, &above));
}

void PaintedWindow::repaint(std::uint32_t newSeed) {
    const int before = paints;
    seed = newSeed;
    asking->check(xcb_clear_area_checked(asking->raw(), 1, window, 0, 0, 0, 0));
    paints.wait(before);
}

void PaintedWindow::waitUntilSeen() const {
    x11::Grabber screen(*asking, x11::SegmentPool::Reuse::No);
    using Clock = std::chrono::steady_clock;
    const auto patience = Clock::now() + std::chrono::seconds(10);
    // A fading compositor shows it for a moment, too, before it begins to fade it in.
    std::optional<Clock::time_point> since;
    while (Clock::now() < patience) {
        const auto seen = screen.grabScreen(place(), x11::WithCursor::No);
        if (!seen || *seen != pattern())
            since.reset();
        else if (!since)
            since = Clock::now();
        else if (Clock::now() - *since > std::chrono::milliseconds(100))
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    ADD_FAILURE() << "the window never showed on the screen";
}

QRect PaintedWindow::place() const {
    const auto at = asking->reply(xcb_translate_coordinates_reply,
                                  xcb_translate_coordinates(asking->raw(), window, asking->root(), 0, 0));
    return at ? QRect(QPoint(at->dst_x, at->dst_y), look.rect.size()) : QRect();
}

} // namespace marrowfin::test
