// What the server tells about scrolling: its devices with their scroll axes, and the movements of these. Main
// thread.
#pragma once

#include "platform/x11/input/TouchpadScrolling.h"
#include "platform/x11/server/Connection.h"

#include <xcb/xinput.h>

namespace marrowfin::x11 {

// Three round trips and one a touchpad. Only of clients that speak XInput 2.1.
std::vector<ScrollDevice> readScrollDevices(const Connection& c);

// The scroll axes in a device's classes, as XIQueryDevice lists them.
std::vector<ScrollAxis> scrollAxesOf(const xcb_input_xi_device_info_t& info);

// The axes of a movement. As libxcb hands events over: with the whole sequence number after the first 32
// bytes.
AxisPositions axisPositionsOf(const xcb_input_motion_event_t& event);

} // namespace marrowfin::x11
