// Puts pictures with alpha onto windows of any depth: the server blends them with the window's own
// background. Native pixels. Main thread.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QImage>
#include <map>
#include <xcb/render.h>

namespace marrowfin::x11 {

class IconPainter {
public:
    explicit IconPainter(const Connection& connection);

    // Whether windows of this visual carry alpha of their own.
    bool hasAlpha(xcb_visualid_t visual) const;
    // Clears the window and puts the picture at this place of it.
    void paint(xcb_window_t window, xcb_visualid_t visual, const QImage& picture, const QPoint& place) const;

private:
    void readFormats(const xcb_render_query_pict_formats_reply_t& formats);
    xcb_render_picture_t uploaded(const QImage& picture) const;

    const Connection& connection;
    xcb_render_pictformat_t withAlpha = 0;
    std::map<xcb_visualid_t, xcb_render_pictformat_t> ofVisual;
};

} // namespace marrowfin::x11
