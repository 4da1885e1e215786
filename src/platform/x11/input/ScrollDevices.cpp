#include "platform/x11/input/ScrollDevices.h"

#include <cstring>
#include <set>

namespace marrowfin::x11 {

namespace {

double number(const xcb_input_fp3232_t& fixed) {
    return fixed.integral + fixed.frac / 4294967296.0;
}

std::set<std::uint16_t> readTouchpads(const Connection& c) {
    std::set<std::uint16_t> touchpads;
    const auto list = c.reply(xcb_input_list_input_devices_reply, xcb_input_list_input_devices(c.raw()));
    if (!list)
        return touchpads;
    const xcb_input_device_info_t* devices = xcb_input_list_input_devices_devices(list.get());
    for (int i = 0; i < xcb_input_list_input_devices_devices_length(list.get()); ++i)
        if (devices[i].device_type != XCB_ATOM_NONE && devices[i].device_type == c.atom(Atom::XiTouchpad))
            touchpads.insert(devices[i].device_id);
    return touchpads;
}

Reply<xcb_input_xi_get_property_reply_t> property(const Connection& c, std::uint16_t device, Atom name) {
    return c.reply(
        xcb_input_xi_get_property_reply,
        xcb_input_xi_get_property(c.raw(), device, 0, c.atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 2));
}

// One driver says it in so many words and counts in points; the other turns its scrolling distance negative
// and counts in its own units.
void readDirection(const Connection& c, ScrollDevice& device) {
    const auto natural = property(c, device.id, Atom::LibinputNaturalScrolling);
    if (natural && natural->format == 8 && natural->num_items > 0) {
        const auto* values = static_cast<const std::uint8_t*>(xcb_input_xi_get_property_items(natural.get()));
        device.direction = values[0] != 0 ? ScrollDirection::Natural : ScrollDirection::Traditional;
        device.unit = ScrollUnit::Points;
        return;
    }
    const auto distance = property(c, device.id, Atom::SynapticsScrollingDistance);
    if (distance && distance->format == 32 && distance->num_items > 0) {
        std::int32_t vertical = 0;
        std::memcpy(&vertical, xcb_input_xi_get_property_items(distance.get()), sizeof(vertical));
        device.direction = vertical < 0 ? ScrollDirection::Natural : ScrollDirection::Traditional;
    }
}

} // namespace

std::vector<ScrollAxis> scrollAxesOf(const xcb_input_xi_device_info_t& info) {
    std::vector<ScrollAxis> axes;
    for (auto it = xcb_input_xi_device_info_classes_iterator(&info); it.rem > 0;
         xcb_input_device_class_next(&it)) {
        if (it.data->type != XCB_INPUT_DEVICE_CLASS_TYPE_SCROLL)
            continue;
        xcb_input_scroll_class_t scroll;
        std::memcpy(&scroll, it.data, sizeof(scroll));
        axes.push_back(
            {scroll.number,
             scroll.scroll_type == XCB_INPUT_SCROLL_TYPE_HORIZONTAL ? Qt::Horizontal : Qt::Vertical,
             number(scroll.increment)});
    }
    return axes;
}

std::vector<ScrollDevice> readScrollDevices(const Connection& c) {
    std::vector<ScrollDevice> devices;
    const auto all =
        c.reply(xcb_input_xi_query_device_reply, xcb_input_xi_query_device(c.raw(), XCB_INPUT_DEVICE_ALL));
    if (!all)
        return devices;
    const std::set<std::uint16_t> touchpads = readTouchpads(c);
    for (auto it = xcb_input_xi_query_device_infos_iterator(all.get()); it.rem > 0;
         xcb_input_xi_device_info_next(&it)) {
        ScrollDevice device;
        device.id = it.data->deviceid;
        device.axes = scrollAxesOf(*it.data);
        if (device.axes.empty() || it.data->type != XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER)
            continue;
        if (touchpads.contains(device.id)) {
            device.source = ScrollSource::Touchpad;
            readDirection(c, device);
        }
        devices.push_back(std::move(device));
    }
    return devices;
}

AxisPositions axisPositionsOf(const xcb_input_motion_event_t& event) {
    AxisPositions positions{event.event, event.sourceid, event.time, {}};
    const std::uint32_t* mask = xcb_input_button_press_valuator_mask(&event);
    const xcb_input_fp3232_t* value = xcb_input_button_press_axisvalues(&event);
    for (std::uint16_t axis = 0; axis < 32 * event.valuators_len; ++axis)
        if ((mask[axis / 32] >> (axis % 32) & 1) != 0)
            positions.values[axis] = number(*value++);
    return positions;
}

} // namespace marrowfin::x11
