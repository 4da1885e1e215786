#include "platform/x11/layout/X11Screens.h"

#include "platform/x11/layout/WindowQuery.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <xcb/randr.h>

namespace marrowfin::x11 {

namespace {

struct Monitor {
    std::uint32_t id = 0; // the atom of its name: the same for as long as the server knows the monitor
    QString name;
    QRect native;
};

std::vector<Monitor> randrMonitors(const Connection& c) {
    const auto answer = c.reply(xcb_randr_get_monitors_reply, xcb_randr_get_monitors(c.raw(), c.root(), 1));
    if (!answer)
        return {};
    std::vector<Monitor> monitors;
    std::vector<xcb_get_atom_name_cookie_t> names;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(answer.get()); it.rem > 0;
         xcb_randr_monitor_info_next(&it)) {
        monitors.push_back({it.data->name, {}, {it.data->x, it.data->y, it.data->width, it.data->height}});
        names.push_back(xcb_get_atom_name(c.raw(), it.data->name));
    }
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        if (const auto name = c.reply(xcb_get_atom_name_reply, names[i]))
            monitors[i].name = QString::fromUtf8(xcb_get_atom_name_name(name.get()),
                                                 xcb_get_atom_name_name_length(name.get()));
    }
    return monitors;
}

// Qt names its screens after the monitors; a screen that it named otherwise is known by its corner.
const QScreen* qtScreenOf(const Monitor& monitor) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        if (screen->name() == monitor.name && screen->geometry().topLeft() == monitor.native.topLeft())
            return screen;
    }
    for (const QScreen* screen : screens) {
        if (screen->geometry().topLeft() == monitor.native.topLeft())
            return screen;
    }
    return nullptr;
}

QSize rootSize(const Connection& c) {
    // The setup's size is that of the start; the root grows and shrinks with the monitors.
    const auto geometry = c.reply(xcb_get_geometry_reply, xcb_get_geometry(c.raw(), c.root()));
    return geometry ? QSize(geometry->width, geometry->height) : QSize();
}

} // namespace

X11Screens::X11Screens(Connection& connection, std::shared_ptr<LayoutBoard> board)
    : connection(connection), board(std::move(board)) {
    watchQt();
    QCoreApplication::instance()->installNativeEventFilter(this);
    latest = announced = readLayout();
    stale = false;
    this->board->publish(latest);
}

X11Screens::~X11Screens() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

void X11Screens::watchQt() {
    const auto watch = [this](QScreen* screen) {
        connect(screen, &QScreen::geometryChanged, this, &X11Screens::mayHaveChanged);
        connect(screen, &QScreen::logicalDotsPerInchChanged, this, &X11Screens::mayHaveChanged);
    };
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this, watch](QScreen* screen) {
        watch(screen);
        mayHaveChanged();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Screens::mayHaveChanged);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &X11Screens::mayHaveChanged);
    for (QScreen* screen : QGuiApplication::screens())
        watch(screen);
}

bool X11Screens::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto* property = reinterpret_cast<const xcb_property_notify_event_t*>(event);
    const bool ofRoot =
        property->window == connection.root() && (property->atom == connection.atom(Atom::NetClientList) ||
                                                  property->atom == connection.atom(Atom::NetWorkarea));
    const bool ofPanel = property->atom == connection.atom(Atom::NetWmStrutPartial) ||
                         property->atom == connection.atom(Atom::NetWmStrut);
    if (ofRoot || ofPanel)
        mayHaveChanged();
    return false;
}

// Events come in bursts, and Qt tells of one while it is still in the middle of others: look once,
// afterwards.
void X11Screens::mayHaveChanged() {
    stale = true;
    if (refreshPosted)
        return;
    refreshPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            refreshPosted = false;
            refresh();
        },
        Qt::QueuedConnection);
}

void X11Screens::refresh() {
    if (!stale)
        return;
    layout();
    stale = false;
    if (latest == announced)
        return;
    announced = latest;
    Q_EMIT changed();
}

const DisplayLayout& X11Screens::layout() {
    if (stale) {
        // Asked before the posted look: the answer is fresh, the signal still comes from the event loop.
        latest = readLayout();
        board->publish(latest);
    }
    return latest;
}

DisplayLayout X11Screens::readLayout() {
    std::vector<NativeDisplay> displays = readMonitors();
    const QSize root = rootSize(connection);
    const std::vector<Strut> struts = readStruts();
    for (NativeDisplay& display : displays)
        display.visible = withoutStruts(display.native, root, struts);
    return DisplayLayout(std::move(displays));
}

std::vector<NativeDisplay> X11Screens::readMonitors() {
    std::vector<NativeDisplay> displays;
    const QScreen* primary = QGuiApplication::primaryScreen();
    const auto add = [&](const NativeDisplay& display, const QScreen* screen) {
        displays.insert(screen == primary ? displays.begin() : displays.end(), display);
    };
    if (connection.extensions().randr) {
        for (const Monitor& monitor : randrMonitors(connection)) {
            // Qt learns of a monitor a moment later than we may ask; it comes with Qt's own signal.
            if (const QScreen* screen = qtScreenOf(monitor))
                add({monitor.id, monitor.name, monitor.native, screen->geometry().size(), monitor.native},
                    screen);
        }
        return displays;
    }
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QSize native = (QSizeF(screen->geometry().size()) * screen->devicePixelRatio()).toSize();
        const QRect rect(screen->geometry().topLeft(), native);
        const auto number = static_cast<std::uint32_t>(displays.size() + 1);
        add({number, screen->name(), rect, screen->geometry().size(), rect}, screen);
    }
    return displays;
}

std::vector<Strut> X11Screens::readStruts() {
    const std::vector<xcb_window_t> windows = readDesktopWindows(connection).backToFront;
    const QSize root = rootSize(connection);
    std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> cookies;
    const auto ask = [this](xcb_window_t window, Atom name) {
        return xcb_get_property(connection.raw(), 0, window, connection.atom(name), XCB_ATOM_CARDINAL, 0, 12);
    };
    for (const xcb_window_t window : windows)
        cookies.emplace_back(ask(window, Atom::NetWmStrutPartial), ask(window, Atom::NetWmStrut));
    std::vector<Strut> struts;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto partial =
            items32(connection.reply(xcb_get_property_reply, cookies[i].first).get(), XCB_ATOM_CARDINAL);
        const auto whole =
            items32(connection.reply(xcb_get_property_reply, cookies[i].second).get(), XCB_ATOM_CARDINAL);
        const std::vector<Strut> found = strutsFrom(partial.empty() ? whole : partial, root);
        if (found.empty())
            continue;
        struts.insert(struts.end(), found.begin(), found.end());
        // A panel that hides itself changes its strut and nothing else.
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        connection.ignore(
            xcb_change_window_attributes_checked(connection.raw(), windows[i], XCB_CW_EVENT_MASK, &mask));
    }
    return struts;
}

std::vector<platform::Screen> X11Screens::screens() {
    std::vector<platform::Screen> list;
    for (const NativeDisplay& display : layout().displays())
        list.push_back(screenOf(display));
    return list;
}

platform::Screen X11Screens::screenOf(const NativeDisplay& display) const {
    const double height = latest.primaryHeight();
    return {display.id, toDesktop(latest.frame(display), height),
            toDesktop(latest.visibleFrame(display), height), display.scale(), display.name};
}

const NativeDisplay* X11Screens::displayOfActiveWindow() {
    const xcb_window_t active = activeWindow(connection);
    if (active == XCB_WINDOW_NONE)
        return nullptr;
    const std::vector<WindowFacts> facts = readWindows(connection, {active});
    // A desktop window lies on every screen at once: being active it says nothing about where the user is.
    if (facts.empty() || facts.front().kind != WindowKind::Ordinary || !facts.front().viewable)
        return nullptr;
    return latest.showing(visibleFrame(facts.front()));
}

std::optional<platform::Screen> X11Screens::mainScreen() {
    const DisplayLayout& now = layout();
    if (now.displays().empty())
        return std::nullopt;
    if (const NativeDisplay* active = displayOfActiveWindow())
        return screenOf(*active);
    const auto pointer = nativePointer();
    const NativeDisplay* under = pointer ? now.containing(*pointer) : nullptr;
    return screenOf(under ? *under : now.displays().front());
}

std::optional<QPoint> X11Screens::nativePointer() {
    const auto pointer =
        connection.reply(xcb_query_pointer_reply, xcb_query_pointer(connection.raw(), connection.root()));
    if (!pointer || !pointer->same_screen)
        return std::nullopt;
    return QPoint(pointer->root_x, pointer->root_y);
}

Outcome<DesktopPoint> X11Screens::pointerLocation() {
    const auto native = nativePointer();
    if (!native)
        return settled<DesktopPoint>(unavailable(QStringLiteral("The pointer is on another screen.")));
    return settled<DesktopPoint>(toDesktop(layout().toPoints(*native), latest.primaryHeight()));
}

} // namespace marrowfin::x11
