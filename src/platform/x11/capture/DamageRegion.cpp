#include "platform/x11/capture/DamageRegion.h"

#include <xcb/damage.h>
#include <xcb/xfixes.h>

namespace marrowfin::x11 {

QRegion takeDamage(const Connection& c, std::uint32_t damage) {
    const xcb_xfixes_region_t region = xcb_generate_id(c.raw());
    c.ignore(xcb_xfixes_create_region_checked(c.raw(), region, 0, nullptr));
    c.ignore(xcb_damage_subtract_checked(c.raw(), damage, XCB_NONE, region));
    const auto fetched = c.reply(xcb_xfixes_fetch_region_reply, xcb_xfixes_fetch_region(c.raw(), region));
    c.ignore(xcb_xfixes_destroy_region_checked(c.raw(), region));
    if (!fetched)
        return {};
    QRegion area;
    const xcb_rectangle_t* rects = xcb_xfixes_fetch_region_rectangles(fetched.get());
    for (int i = 0; i < xcb_xfixes_fetch_region_rectangles_length(fetched.get()); ++i)
        area += QRect(rects[i].x, rects[i].y, rects[i].width, rects[i].height);
    return area;
}

} // namespace marrowfin::x11
