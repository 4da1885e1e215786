#include "desktop/x11surfaces/Desk.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <X11/keysym.h>
#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <xcb/xtest.h>

namespace marrowfin::desk {

bool waitFor(const std::function<bool()>& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > 20000)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

bool await(const Outcome<void>& outcome) {
    // Shared, because the block may come after this function has given up.
    const auto answered = std::make_shared<int>(0);
    outcome.then([answered](const Result<void>& result) { *answered = result ? 1 : 2; });
    return waitFor([&] { return *answered != 0; }) && *answered == 1;
}

void passTime(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

OtherProgram::OtherProgram() {
    auto opened = x11::Connection::open();
    if (!opened)
        throw std::runtime_error("no X server");
    c = std::move(*opened);
}

OtherProgram::~OtherProgram() {
    for (const xcb_window_t window : windows)
        xcb_destroy_window(c->raw(), window);
    c->sync();
}

xcb_window_t OtherProgram::open(const QRect& frame, std::uint32_t color, Repaint repaint,
                                Management management, Stacking stacking) {
    const xcb_window_t window = xcb_generate_id(c->raw());
    const std::uint32_t values[] = {color, management == Management::Unmanaged,
                                    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_KEY_PRESS |
                                        XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(c->raw(), XCB_COPY_FROM_PARENT, window, c->root(), static_cast<std::int16_t>(frame.x()),
                      static_cast<std::int16_t>(frame.y()), static_cast<std::uint16_t>(frame.width()),
                      static_cast<std::uint16_t>(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values);
    // A position that the window manager keeps: USPosition and USSize.
    const std::array<std::uint32_t, 18> hints = {3, static_cast<std::uint32_t>(frame.x()),
                                                 static_cast<std::uint32_t>(frame.y())};
    xcb_change_property(c->raw(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    if (stacking == Stacking::Bottom) {
        const std::uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(c->raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    }
    xcb_map_window(c->raw(), window);
    c->flush();
    windows.push_back(window);
    waitFor([&] { return isViewable(window); });
    if (management == Management::Managed)
        waitFor([&] { return focus() == window; });
    if (stacking == Stacking::Bottom)
        return window;
    const QColor wanted = QColor::fromRgb(color);
    const QPoint middle = frame.center();
    waitFor([&] { return pixel(middle) == wanted; });
    if (repaint == Repaint::Never) {
        const std::uint32_t none = XCB_BACK_PIXMAP_NONE;
        xcb_change_window_attributes(c->raw(), window, XCB_CW_BACK_PIXMAP, &none);
        c->sync();
    }
    return window;
}

void OtherProgram::sendToRoot(xcb_window_t window, const char* message, std::array<std::uint32_t, 5> data) {
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = c->intern(message);
    std::copy(data.begin(), data.end(), event.data.data32);
    xcb_send_event(c->raw(), 0, c->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    c->flush();
}

void OtherProgram::makeFullScreen(xcb_window_t window) {
    sendToRoot(window, "_NET_WM_STATE", {1, c->intern("_NET_WM_STATE_FULLSCREEN"), 0, 1, 0});
}

void OtherProgram::activate(xcb_window_t window) {
    sendToRoot(window, "_NET_ACTIVE_WINDOW", {2, 0, 0, 0, 0});
    waitFor([&] { return focus() == window; });
}

void OtherProgram::goToWorkspace(std::uint32_t number) {
    sendToRoot(c->root(), "_NET_CURRENT_DESKTOP", {number, 0, 0, 0, 0});
    waitFor([&] {
        return c->property32(c->root(), c->intern("_NET_CURRENT_DESKTOP"), XCB_ATOM_CARDINAL) ==
               std::vector<std::uint32_t>{number};
    });
}

void OtherProgram::destroy(xcb_window_t window) {
    xcb_destroy_window(c->raw(), window);
    std::erase(windows, window);
    c->sync();
}

void OtherProgram::focusDirectly(xcb_window_t window) {
    xcb_set_input_focus(c->raw(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    c->sync();
}

void OtherProgram::fake(std::uint8_t type, std::uint8_t detail, const QPoint& at) {
    xcb_test_fake_input(c->raw(), type, detail, XCB_CURRENT_TIME, c->root(),
                        static_cast<std::int16_t>(at.x()), static_cast<std::int16_t>(at.y()), 0);
}

void OtherProgram::movePointer(const QPoint& to) {
    fake(XCB_MOTION_NOTIFY, 0, to);
    c->sync();
}

void OtherProgram::pressButton() {
    fake(XCB_BUTTON_PRESS, 1);
    c->sync();
}

void OtherProgram::releaseButton() {
    fake(XCB_BUTTON_RELEASE, 1);
    c->sync();
}

void OtherProgram::click(const QPoint& at) {
    movePointer(at);
    pressButton();
    releaseButton();
}

void OtherProgram::press(xcb_keysym_t key) {
    const xcb_keycode_t first = xcb_get_setup(c->raw())->min_keycode;
    const auto count = static_cast<std::uint8_t>(xcb_get_setup(c->raw())->max_keycode - first + 1);
    const auto map =
        c->reply(xcb_get_keyboard_mapping_reply, xcb_get_keyboard_mapping(c->raw(), first, count));
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    const auto end = symbols + xcb_get_keyboard_mapping_keysyms_length(map.get());
    const auto code = static_cast<std::uint8_t>(first + (std::find(symbols, end, key) - symbols) /
                                                            map->keysyms_per_keycode);
    fake(XCB_KEY_PRESS, code);
    fake(XCB_KEY_RELEASE, code);
    c->sync();
}

void OtherProgram::holdKeyboard() {
    c->reply(xcb_grab_keyboard_reply, xcb_grab_keyboard(c->raw(), 0, c->root(), XCB_CURRENT_TIME,
                                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
}

void OtherProgram::releaseKeyboard() {
    xcb_ungrab_keyboard(c->raw(), XCB_CURRENT_TIME);
    c->sync();
}

void OtherProgram::readEvents() {
    c->sync();
    while (const x11::Reply<xcb_generic_event_t> event{xcb_poll_for_event(c->raw())}) {
        buttons += (event->response_type & 0x7F) == XCB_BUTTON_PRESS;
        keys += (event->response_type & 0x7F) == XCB_KEY_PRESS;
    }
}

int OtherProgram::buttonPresses() {
    readEvents();
    return buttons;
}

int OtherProgram::keyPresses() {
    readEvents();
    return keys;
}

QImage OtherProgram::screen() {
    const auto root = c->reply(xcb_get_geometry_reply, xcb_get_geometry(c->raw(), c->root()));
    const auto pixels =
        c->reply(xcb_get_image_reply, xcb_get_image(c->raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, c->root(), 0, 0,
                                                    root->width, root->height, ~0U));
    QImage image(root->width, root->height, QImage::Format_RGB32);
    std::memcpy(image.bits(), xcb_get_image_data(pixels.get()),
                static_cast<std::size_t>(image.sizeInBytes()));
    return image;
}

QColor OtherProgram::pixel(const QPoint& at) {
    const auto pixels =
        c->reply(xcb_get_image_reply, xcb_get_image(c->raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, c->root(),
                                                    static_cast<std::int16_t>(at.x()),
                                                    static_cast<std::int16_t>(at.y()), 1, 1, ~0U));
    std::uint32_t value = 0;
    if (pixels)
        std::memcpy(&value, xcb_get_image_data(pixels.get()), sizeof(value));
    return QColor::fromRgb(value);
}

xcb_window_t OtherProgram::focus() {
    return c->reply(xcb_get_input_focus_reply, xcb_get_input_focus(c->raw()))->focus;
}

QRect OtherProgram::frameOf(xcb_window_t window) {
    const auto size = c->reply(xcb_get_geometry_reply, xcb_get_geometry(c->raw(), window));
    const auto place = c->reply(xcb_translate_coordinates_reply,
                                xcb_translate_coordinates(c->raw(), window, c->root(), 0, 0));
    return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

bool OtherProgram::isViewable(xcb_window_t window) {
    const auto state = c->reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(c->raw(), window));
    return state && state->map_state == XCB_MAP_STATE_VIEWABLE;
}

xcb_window_t OtherProgram::topLevelOf(xcb_window_t window) {
    for (;;) {
        const auto tree = c->reply(xcb_query_tree_reply, xcb_query_tree(c->raw(), window));
        if (!tree || tree->parent == c->root() || tree->parent == XCB_WINDOW_NONE)
            return window;
        window = tree->parent;
    }
}

void OtherProgram::markManaged(xcb_window_t window) {
    const std::uint32_t normal[] = {1, XCB_WINDOW_NONE};
    const xcb_atom_t state = c->intern("WM_STATE");
    xcb_change_property(c->raw(), XCB_PROP_MODE_REPLACE, window, state, state, 32, 2, normal);
    c->sync();
}

void OtherProgram::raise(xcb_window_t window) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(c->raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    c->sync();
}

bool OtherProgram::isAbove(xcb_window_t upper, xcb_window_t lower) {
    const auto tree = c->reply(xcb_query_tree_reply, xcb_query_tree(c->raw(), c->root()));
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    const xcb_window_t* last = first + xcb_query_tree_children_length(tree.get());
    const auto* above = std::find(first, last, topLevelOf(upper));
    const auto* below = std::find(first, last, topLevelOf(lower));
    return above != last && below != last && above > below;
}

bool OtherProgram::hasCompositor() {
    return c->compositor() != XCB_WINDOW_NONE;
}

Compositor::Compositor(OtherProgram& desk, const QStringList& arguments) : desk(desk) {
    process.start("picom", QStringList{"--config", "/dev/null", "--backend", "xrender"} + arguments);
    waitFor([&] { return desk.hasCompositor(); });
}

Compositor::~Compositor() {
    kill();
}

void Compositor::kill() {
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished();
    waitFor([&] { return !desk.hasCompositor(); });
}

std::string difference(const QImage& before, const QImage& after) {
    if (before.size() != after.size())
        return "other size";
    QRect area;
    int count = 0;
    for (int y = 0; y < before.height(); ++y) {
        const auto* a = reinterpret_cast<const QRgb*>(before.constScanLine(y));
        const auto* b = reinterpret_cast<const QRgb*>(after.constScanLine(y));
        for (int x = 0; x < before.width(); ++x) {
            if ((a[x] & RGB_MASK) != (b[x] & RGB_MASK)) {
                area |= QRect(x, y, 1, 1);
                ++count;
            }
        }
    }
    if (count == 0)
        return {};
    return QStringLiteral("%1 pixels in (%2, %3) %4x%5")
        .arg(count)
        .arg(area.x())
        .arg(area.y())
        .arg(area.width())
        .arg(area.height())
        .toStdString();
}

} // namespace marrowfin::desk
