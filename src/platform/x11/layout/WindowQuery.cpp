#include "platform/x11/layout/WindowQuery.h"

#include <algorithm>
#include <limits>
#include <xcb/res.h>

namespace marrowfin::x11 {

namespace {

constexpr std::uint32_t mostItems = 1 << 16;

struct WindowCookies {
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t place;
    xcb_get_property_cookie_t state;
    xcb_get_property_cookie_t type;
    xcb_get_property_cookie_t workspace;
    xcb_get_property_cookie_t pid;
    xcb_get_property_cookie_t frame;
    xcb_get_property_cookie_t invisible;
    xcb_get_property_cookie_t netName;
    xcb_get_property_cookie_t oldName;
};

WindowCookies ask(const Connection& c, xcb_window_t window) {
    const auto property = [&](xcb_atom_t name, xcb_atom_t type, std::uint32_t length) {
        return xcb_get_property(c.raw(), 0, window, name, type, 0, length);
    };
    WindowCookies cookies{};
    cookies.attributes = xcb_get_window_attributes(c.raw(), window);
    cookies.geometry = xcb_get_geometry(c.raw(), window);
    cookies.place = xcb_translate_coordinates(c.raw(), window, c.root(), 0, 0);
    cookies.state = property(c.atom(Atom::NetWmState), XCB_ATOM_ATOM, 64);
    cookies.type = property(c.atom(Atom::NetWmWindowType), XCB_ATOM_ATOM, 64);
    cookies.workspace = property(c.atom(Atom::NetWmDesktop), XCB_ATOM_CARDINAL, 1);
    cookies.pid = property(c.atom(Atom::NetWmPid), XCB_ATOM_CARDINAL, 1);
    cookies.frame = property(c.atom(Atom::NetFrameExtents), XCB_ATOM_CARDINAL, 4);
    cookies.invisible = property(c.atom(Atom::GtkFrameExtents), XCB_ATOM_CARDINAL, 4);
    cookies.netName = property(c.atom(Atom::NetWmName), c.atom(Atom::Utf8String), 256);
    cookies.oldName = property(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 256);
    return cookies;
}

// The order of the four numbers in both properties: left, right, top, bottom.
QMargins marginsFrom(const std::vector<std::uint32_t>& numbers) {
    if (numbers.size() != 4)
        return {};
    const auto side = [&](std::size_t i) {
        return static_cast<int>(std::min<std::uint32_t>(numbers[i], 0x7FFF));
    };
    return {side(0), side(2), side(1), side(3)};
}

WindowKind kindFrom(const Connection& c, const std::vector<std::uint32_t>& types) {
    // Types are listed best first; unknown ones are skipped by those who don't know them.
    for (const xcb_atom_t type : types) {
        if (type == c.atom(Atom::NetWmWindowTypeDesktop))
            return WindowKind::Desktop;
        if (type == c.atom(Atom::NetWmWindowTypeDock))
            return WindowKind::Dock;
        if (type == c.atom(Atom::NetWmWindowTypeNormal))
            return WindowKind::Ordinary;
    }
    return WindowKind::Ordinary;
}

std::optional<WindowFacts> take(const Connection& c, xcb_window_t window, const WindowCookies& cookies) {
    // Every reply is fetched, also of a window that is gone: what isn't fetched stays in the connection.
    const auto attributes = c.reply(xcb_get_window_attributes_reply, cookies.attributes);
    const auto geometry = c.reply(xcb_get_geometry_reply, cookies.geometry);
    const auto place = c.reply(xcb_translate_coordinates_reply, cookies.place);
    const auto numbers = [&](xcb_get_property_cookie_t cookie, xcb_atom_t type) {
        return items32(c.reply(xcb_get_property_reply, cookie).get(), type);
    };
    const auto states = numbers(cookies.state, XCB_ATOM_ATOM);
    const auto types = numbers(cookies.type, XCB_ATOM_ATOM);
    const auto workspace = numbers(cookies.workspace, XCB_ATOM_CARDINAL);
    const auto pid = numbers(cookies.pid, XCB_ATOM_CARDINAL);
    const auto frame = numbers(cookies.frame, XCB_ATOM_CARDINAL);
    const auto invisible = numbers(cookies.invisible, XCB_ATOM_CARDINAL);
    const QByteArray netName = items8(c.reply(xcb_get_property_reply, cookies.netName).get());
    const QByteArray oldName = items8(c.reply(xcb_get_property_reply, cookies.oldName).get());
    if (!attributes || !geometry || !place)
        return std::nullopt;

    WindowFacts facts;
    facts.id = window;
    facts.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                     attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
    facts.hidden = std::find(states.begin(), states.end(), c.atom(Atom::NetWmStateHidden)) != states.end();
    facts.kind = kindFrom(c, types);
    if (!workspace.empty())
        facts.workspace = workspace.front();
    facts.client = QRect(place->dst_x, place->dst_y, geometry->width, geometry->height);
    facts.border = geometry->border_width;
    facts.frameExtents = marginsFrom(frame);
    facts.invisibleExtents = marginsFrom(invisible);
    if (!pid.empty() && pid.front() != 0)
        facts.pid = pid.front();
    facts.title = netName.isEmpty() ? QString::fromLatin1(oldName) : QString::fromUtf8(netName);
    return facts;
}

// A window manager that was killed leaves its list behind; the window that it named as its own is gone then,
// and its id may be another's. It ought to name itself there and to say what it is called; some do only the
// one.
bool windowManagerIsGone(const Connection& c, const std::vector<std::uint32_t>& check) {
    if (check.empty())
        return false;
    if (!c.property32(check.front(), c.atom(Atom::NetSupportingWmCheck), XCB_ATOM_WINDOW).empty())
        return false;
    const auto name =
        xcb_get_property(c.raw(), 0, check.front(), c.atom(Atom::NetWmName), XCB_ATOM_ANY, 0, 1);
    const auto answer = c.reply(xcb_get_property_reply, name);
    return !answer || answer->type == XCB_ATOM_NONE;
}

} // namespace

DesktopWindows readDesktopWindows(const Connection& c) {
    const auto windowsOf = [&c](Atom name) {
        return xcb_get_property(c.raw(), 0, c.root(), c.atom(name), XCB_ATOM_WINDOW, 0, mostItems);
    };
    const auto stackingCookie = windowsOf(Atom::NetClientListStacking);
    const auto listCookie = windowsOf(Atom::NetClientList);
    const auto checkCookie = windowsOf(Atom::NetSupportingWmCheck);
    const auto workspaceCookie =
        xcb_get_property(c.raw(), 0, c.root(), c.atom(Atom::NetCurrentDesktop), XCB_ATOM_CARDINAL, 0, 1);
    const auto stacking = c.reply(xcb_get_property_reply, stackingCookie);
    const auto list = c.reply(xcb_get_property_reply, listCookie);
    const auto check = items32(c.reply(xcb_get_property_reply, checkCookie).get(), XCB_ATOM_WINDOW);
    const auto workspace = items32(c.reply(xcb_get_property_reply, workspaceCookie).get(), XCB_ATOM_CARDINAL);
    // An empty list of a window manager is a list; a root without any has no window manager. Some tell the
    // order only once there is more than their panel.
    const bool isStacked = stacking && stacking->type == XCB_ATOM_WINDOW;
    const bool isListed = isStacked || (list && list->type == XCB_ATOM_WINDOW);
    if (!isListed || windowManagerIsGone(c, check))
        return {rootChildren(c), std::nullopt};
    DesktopWindows desktop;
    desktop.backToFront = items32((isStacked ? stacking : list).get(), XCB_ATOM_WINDOW);
    if (!workspace.empty())
        desktop.currentWorkspace = workspace.front();
    return desktop;
}

std::vector<WindowFacts> readWindows(const Connection& c, const std::vector<xcb_window_t>& windows) {
    std::vector<WindowCookies> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows)
        cookies.push_back(ask(c, window));
    std::vector<WindowFacts> facts;
    facts.reserve(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (auto one = take(c, windows[i], cookies[i]))
            facts.push_back(*std::move(one));
    }
    return facts;
}

void addMissingPids(const Connection& c, std::vector<WindowFacts>& windows) {
    if (!c.extensions().res)
        return;
    std::vector<std::pair<WindowFacts*, xcb_res_query_client_ids_cookie_t>> asked;
    for (WindowFacts& window : windows) {
        if (window.pid)
            continue;
        const xcb_res_client_id_spec_t who{window.id, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        asked.emplace_back(&window, xcb_res_query_client_ids(c.raw(), 1, &who));
    }
    for (const auto& [window, cookie] : asked) {
        const auto answer = c.reply(xcb_res_query_client_ids_reply, cookie);
        if (!answer)
            continue;
        for (auto it = xcb_res_query_client_ids_ids_iterator(answer.get()); it.rem > 0;
             xcb_res_client_id_value_next(&it)) {
            const bool isPid = (it.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
            if (isPid && xcb_res_client_id_value_value_length(it.data) > 0)
                window->pid = *xcb_res_client_id_value_value(it.data);
        }
    }
}

xcb_window_t activeWindow(const Connection& c) {
    const auto active = c.property32(c.root(), c.atom(Atom::NetActiveWindow), XCB_ATOM_WINDOW);
    return active.empty() ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : active.front();
}

xcb_window_t topLevelOf(const Connection& c, xcb_window_t window) {
    for (;;) {
        const auto tree = c.reply(xcb_query_tree_reply, xcb_query_tree(c.raw(), window));
        if (!tree || tree->parent == XCB_WINDOW_NONE)
            return XCB_WINDOW_NONE;
        if (tree->parent == tree->root)
            return window;
        window = tree->parent;
    }
}

std::vector<xcb_window_t> rootChildren(const Connection& c) {
    const auto tree = c.reply(xcb_query_tree_reply, xcb_query_tree(c.raw(), c.root()));
    if (!tree)
        return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

} // namespace marrowfin::x11
