#include "platform/x11/surfaces/GoneWatch.h"

#include "base/Log.h"
#include "base/Outcome.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <xcb/shape.h>

namespace marrowfin::x11 {

namespace {

using namespace std::chrono_literals;

constexpr auto pause = 700us;
// A compositor that hasn't drawn by then hangs, or doesn't draw what can be grabbed.
constexpr auto patience = 500ms;

// Of a probe that is dimmed or translucent: how long its look must have stayed, longer than two frames of a
// slow screen, and how far one look is from another, in the differences of colour between its two pixels.
constexpr auto steady = 50ms;
constexpr int apart = 12;

// Two pixels of unlike colours: no plain area of a desktop can look like both.
constexpr std::array<std::uint32_t, 2> colors = {0xFFB5179E, 0xFF17B58A};
constexpr std::uint32_t rgb = 0x00FFFFFF;
constexpr QPoint away(-64, -64);

void place(xcb_connection_t* connection, xcb_window_t window, const QPoint& at) {
    const std::uint32_t values[] = {static_cast<std::uint32_t>(at.x()), static_cast<std::uint32_t>(at.y()),
                                    XCB_STACK_MODE_ABOVE};
    xcb_configure_window(connection, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_STACK_MODE, values);
}

void report(bool seen) {
    if (!seen)
        logLine(QStringLiteral("[Marrowfin] The compositor takes more than half a second to draw."));
}

template <class Condition>
bool waitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

const xcb_visualtype_t* visualWithAlpha(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth != 32)
            continue;
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0;
             xcb_visualtype_next(&visual)) {
            if (visual.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR)
                return visual.data;
        }
    }
    return nullptr;
}

using Pixels = std::array<std::uint32_t, 2>;

int channel(std::uint32_t pixel, int shift) {
    return static_cast<int>((pixel >> shift) & 0xFF);
}

// How much of the probe's contrast has come into the picture since: its first pixel is redder than the
// second, the second greener. What gets brighter or darker, as at the edge of a dim, has both change the same
// way.
int contrastSince(const Pixels& before, const Pixels& seen) {
    const auto change = [&](int shift) {
        return channel(seen[0], shift) - channel(seen[1], shift) - channel(before[0], shift) +
               channel(before[1], shift);
    };
    return std::min(change(16), -change(8));
}

bool looksExact(const Pixels& seen) {
    return seen[0] == (colors[0] & rgb) && seen[1] == (colors[1] & rgb);
}

// Nothing when they can't be read or have another form.
std::optional<Pixels> pixelsAt(const Connection& connection, const QPoint& at) {
    const auto answer = connection.reply(xcb_get_image_reply,
                                         xcb_get_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                                       connection.root(), static_cast<std::int16_t>(at.x()),
                                                       static_cast<std::int16_t>(at.y()), 2, 1, ~0U));
    Pixels seen = {};
    if (!answer || xcb_get_image_data_length(answer.get()) < static_cast<int>(sizeof(seen)))
        return std::nullopt;
    std::memcpy(seen.data(), xcb_get_image_data(answer.get()), sizeof(seen));
    for (std::uint32_t& pixel : seen)
        pixel &= rgb;
    return seen;
}

} // namespace

// The looking side: lives on the queue.
class GoneWatch::Eyes {
public:
    explicit Eyes(QByteArray display) : display(std::move(display)) {}

    bool watchProbe(xcb_window_t probe, const Spot& spot) {
        if (!connect())
            return true;
        const std::optional<Pixels> there = waitForProbe(spot);
        place(connection->raw(), probe, away);
        if (!there)
            return false;
        const bool exact = looksExact(*there);
        const int full = contrastSince(spot.before, *there);
        return waitUntil([&] {
            const auto seen = look(spot.at);
            return !seen || (exact ? !looksExact(*seen) : 2 * contrastSince(spot.before, *seen) < full);
        });
    }

    void watchUnmapped(xcb_window_t window) {
        if (!connect())
            return;
        waitUntil([&] {
            const auto state = connection->reply(xcb_get_window_attributes_reply,
                                                 xcb_get_window_attributes(connection->raw(), window));
            return !state || state->map_state != XCB_MAP_STATE_VIEWABLE;
        });
    }

private:
    bool connect() {
        if (!connection) {
            auto opened = Connection::open(display);
            if (opened)
                connection = std::move(*opened);
        }
        return connection && !connection->isLost();
    }

    // What the probe looks like once it is seen; as it ought to where nothing can be read.
    std::optional<Pixels> waitForProbe(const Spot& spot) {
        std::optional<Pixels> last;
        auto since = std::chrono::steady_clock::now();
        const bool came = waitUntil([&] {
            const Pixels seen = look(spot.at).value_or(Pixels{colors[0] & rgb, colors[1] & rgb});
            const bool changed = contrastSince(spot.before, seen) >= apart;
            if (looksExact(seen) ||
                (changed && last == seen && std::chrono::steady_clock::now() - since > steady)) {
                last = seen;
                return true;
            }
            if (last != seen)
                since = std::chrono::steady_clock::now();
            last = seen;
            return false;
        });
        return came ? last : std::nullopt;
    }

    std::optional<Pixels> look(const QPoint& at) const { return pixelsAt(*connection, at); }

    QByteArray display;
    std::unique_ptr<Connection> connection;
};

GoneWatch::GoneWatch(const Connection& qt)
    : qt(qt), eyes(std::make_shared<Eyes>(Connection::qtDisplayName())) {
    // Now rather than at the first use: a compositor may fade it in, and that is over long before it is
    // needed.
    makeProbe();
}

GoneWatch::~GoneWatch() {
    if (probe && !qt.isLost())
        xcb_destroy_window(qt.raw(), probe);
}

void GoneWatch::makeProbe() {
    const xcb_visualtype_t* visual = visualWithAlpha(qt.screen());
    const std::uint8_t depth = visual ? 32 : qt.screen().root_depth;
    const xcb_visualid_t visualID = visual ? visual->visual_id : qt.screen().root_visual;
    const xcb_colormap_t colormap = xcb_generate_id(qt.raw());
    xcb_create_colormap(qt.raw(), XCB_COLORMAP_ALLOC_NONE, colormap, qt.root(), visualID);
    probe = xcb_generate_id(qt.raw());
    const std::uint32_t values[] = {0, 0, 1, colormap};
    xcb_create_window(qt.raw(), depth, probe, qt.root(), away.x(), away.y(), colors.size(), 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visualID,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
                      values);
    xcb_free_colormap(qt.raw(), colormap);
    if (qt.extensions().shape)
        xcb_shape_rectangles(qt.raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                             probe, 0, 0, 0, nullptr);
    xcb_map_window(qt.raw(), probe);
    qt.flush();
}

void GoneWatch::whenShown(std::function<void()> done) {
    waiting.push_back(std::move(done));
    if (!running)
        begin();
}

void GoneWatch::begin() {
    running = true;
    served = std::move(waiting);
    waiting.clear();
    const Spot spot = bringProbe();
    queue.async([guard = QPointer<GoneWatch>(this), eyes = eyes, probe = probe, spot] {
        const bool seen = eyes->watchProbe(probe, spot);
        postToMain([guard, seen] {
            if (guard)
                guard->finish(seen);
        });
    });
}

void GoneWatch::finish(bool seen) {
    report(seen);
    running = false;
    const QPointer<GoneWatch> guard(this);
    for (const auto& done : std::exchange(served, {}))
        done();
    // The last of those who waited may have taken the watch with it.
    if (guard && !running && !waiting.empty())
        begin();
}

void GoneWatch::waitShown() {
    // The probe comes back from its last errand first.
    queue.sync([] {});
    const Spot spot = bringProbe();
    bool seen = false;
    queue.sync([&] { seen = eyes->watchProbe(probe, spot); });
    report(seen);
}

GoneWatch::Spot GoneWatch::bringProbe() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    Spot spot{primary ? primary->geometry().topLeft() : QPoint(), {}};
    spot.before = pixelsAt(qt, spot.at).value_or(spot.before);
    paintProbe();
    place(qt.raw(), probe, spot.at);
    // Painted again in its place: a window that was off the screen may have lost what was painted there.
    paintProbe();
    qt.flush();
    return spot;
}

void GoneWatch::paintProbe() {
    const xcb_gcontext_t context = xcb_generate_id(qt.raw());
    xcb_create_gc(qt.raw(), context, probe, 0, nullptr);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const xcb_rectangle_t pixel = {static_cast<std::int16_t>(i), 0, 1, 1};
        xcb_change_gc(qt.raw(), context, XCB_GC_FOREGROUND, &colors[i]);
        xcb_poly_fill_rectangle(qt.raw(), probe, context, 1, &pixel);
    }
    xcb_free_gc(qt.raw(), context);
}

void GoneWatch::whenUnmapped(xcb_window_t window, std::function<void()> done) {
    qt.flush();
    queue.async([eyes = eyes, window, done = std::move(done)] {
        eyes->watchUnmapped(window);
        postToMain(done);
    });
}

} // namespace marrowfin::x11
