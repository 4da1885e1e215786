// Arithmetic on premultiplied pixels of 8 bits a channel, rounded as the toolkit does. Any thread.
#pragma once

#include <QRgb>

namespace marrowfin::chrome {

// All four channels times alpha / 255.
inline QRgb timesAlpha(QRgb pixel, int alpha) {
    constexpr quint32 evenBytes = 0x00ff00ff;
    constexpr quint32 halves = 0x00800080;
    const auto factor = static_cast<quint32>(alpha);
    quint32 even = (pixel & evenBytes) * factor; // two channels each, 16 bits apart
    quint32 odd = ((pixel >> 8) & evenBytes) * factor;
    even = ((even + ((even >> 8) & evenBytes) + halves) >> 8) & evenBytes;
    odd = (odd + ((odd >> 8) & evenBytes) + halves) & ~evenBytes;
    return even | odd;
}

} // namespace marrowfin::chrome
