#include "platform/x11/surfaces/StackWatch.h"

#include "platform/x11/layout/WindowQuery.h"

#include <QRect>
#include <QSocketNotifier>
#include <algorithm>
#include <map>
#include <utility>

namespace marrowfin::x11 {

namespace {

using namespace std::chrono_literals;

// So many raises of one window in so short a time are a program's, not the user's.
constexpr std::ptrdiff_t mostAnswers = 5;
constexpr auto shortTime = 2s;

// The viewable ones among the windows, with their outer rectangles.
std::map<xcb_window_t, QRect> viewable(const Connection& c, const std::vector<xcb_window_t>& windows) {
    std::vector<std::pair<xcb_get_geometry_cookie_t, xcb_get_window_attributes_cookie_t>> asked;
    for (const xcb_window_t window : windows)
        asked.emplace_back(xcb_get_geometry(c.raw(), window), xcb_get_window_attributes(c.raw(), window));
    std::map<xcb_window_t, QRect> found;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto geometry = c.reply(xcb_get_geometry_reply, asked[i].first);
        const auto attributes = c.reply(xcb_get_window_attributes_reply, asked[i].second);
        if (geometry && attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            found[windows[i]] = QRect(geometry->x, geometry->y, geometry->width + 2 * geometry->border_width,
                                      geometry->height + 2 * geometry->border_width);
    }
    return found;
}

// Anything that can put another window above ours.
bool mayHaveRestacked(const xcb_generic_event_t& event, const std::vector<xcb_window_t>& own) {
    switch (event.response_type & 0x7F) {
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        return std::find(own.begin(), own.end(), configured.window) == own.end();
    }
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        return true;
    default:
        return false;
    }
}

std::vector<xcb_window_t> childrenOf(const Connection& c, const std::vector<xcb_window_t>& parents) {
    std::vector<xcb_query_tree_cookie_t> asked;
    for (const xcb_window_t parent : parents)
        asked.push_back(xcb_query_tree(c.raw(), parent));
    std::vector<xcb_window_t> children;
    for (const xcb_query_tree_cookie_t cookie : asked) {
        const auto tree = c.reply(xcb_query_tree_reply, cookie);
        if (!tree)
            continue;
        const xcb_window_t* first = xcb_query_tree_children(tree.get());
        children.insert(children.end(), first, first + xcb_query_tree_children_length(tree.get()));
    }
    return children;
}

} // namespace

StackWatch::StackWatch(Windows ours) : ours(std::move(ours)) {}

StackWatch::~StackWatch() = default;

void StackWatch::listen() {
    if (std::exchange(listening, true))
        return;
    // Later: whoever is just being shown needn't wait for a connection.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (listening && open())
                hear(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        },
        Qt::QueuedConnection);
}

void StackWatch::stop() {
    listening = false;
    answers.clear();
    if (connection)
        hear(XCB_EVENT_MASK_NO_EVENT);
}

bool StackWatch::open() {
    if (connection)
        return true;
    auto opened = Connection::open(Connection::qtDisplayName());
    if (!opened)
        return false;
    connection = *std::move(opened);
    managedMark = connection->intern("WM_STATE");
    notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection->raw()), QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, &StackWatch::readEvents);
    return true;
}

void StackWatch::hear(std::uint32_t events) {
    xcb_change_window_attributes(connection->raw(), connection->root(), XCB_CW_EVENT_MASK, &events);
    connection->flush();
}

void StackWatch::readEvents() {
    bool restacked = false;
    const std::vector<xcb_window_t> own = ours();
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection->raw())})
        restacked |= mayHaveRestacked(*event, own);
    if (connection->isLost()) {
        notifier->setEnabled(false); // the end of the program, of which others tell
        return;
    }
    if (restacked)
        look();
    // What came with an answer is in the library's own queue, where the notifier can't see it.
    if (const Reply<xcb_generic_event_t> more{xcb_poll_for_queued_event(connection->raw())})
        QMetaObject::invokeMethod(this, &StackWatch::look, Qt::QueuedConnection);
}

void StackWatch::look() {
    if (!listening)
        return;
    const Offender offender = topmostOffender(ours());
    if (!offender.window || comesBackEachTime(offender.window))
        return;
    xcb_window_t sibling = offender.window;
    for (const xcb_window_t window : offender.below) {
        const std::uint32_t values[] = {sibling, XCB_STACK_MODE_ABOVE};
        connection->ignore(xcb_configure_window_checked(
            connection->raw(), window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values));
        sibling = window;
    }
    connection->flush();
    answers.push_back({offender.window, std::chrono::steady_clock::now()});
}

StackWatch::Offender StackWatch::topmostOffender(const std::vector<xcb_window_t>& own) const {
    const std::vector<xcb_window_t> stack = rootChildren(*connection);
    const auto isOwn = [&own](xcb_window_t window) {
        return std::find(own.begin(), own.end(), window) != own.end();
    };
    const auto lowest = std::find_if(stack.begin(), stack.end(), isOwn);
    const std::vector<xcb_window_t> upper(lowest, stack.end());
    const auto rects = viewable(*connection, upper);
    for (auto at = upper.rbegin(); at != upper.rend(); ++at) {
        if (isOwn(*at) || !rects.contains(*at))
            continue;
        const auto covers = [&](xcb_window_t window) {
            return isOwn(window) && rects.contains(window) && rects.at(window).intersects(rects.at(*at));
        };
        if (std::none_of(at + 1, upper.rend(), covers) || !isManaged(*at))
            continue;
        Offender offender{*at, {}};
        for (const xcb_window_t window : own) {
            if (std::find(at + 1, upper.rend(), window) != upper.rend())
                offender.below.push_back(window);
        }
        return offender;
    }
    return {};
}

// Window managers mark their clients, which may be within one or two frames.
bool StackWatch::isManaged(xcb_window_t window) const {
    std::vector<xcb_window_t> generation = {window};
    for (int depth = 0; depth < 3 && !generation.empty(); ++depth) {
        for (const xcb_window_t one : generation) {
            if (!connection->property32(one, managedMark, managedMark).empty())
                return true;
        }
        generation = childrenOf(*connection, generation);
    }
    return false;
}

bool StackWatch::comesBackEachTime(xcb_window_t window) {
    const auto count = std::count_if(answers.begin(), answers.end(),
                                     [window](const Answer& answer) { return answer.to == window; });
    if (count >= mostAnswers)
        return true;
    // Below that, what is long ago doesn't count.
    const auto now = std::chrono::steady_clock::now();
    std::erase_if(answers,
                  [&](const Answer& answer) { return answer.to == window && now - answer.at > shortTime; });
    return false;
}

} // namespace marrowfin::x11
