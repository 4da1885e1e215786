#include "chrome/ClearPicture.h"

#include <cmath>

namespace marrowfin::chrome {

QImage clearPicture(const QSizeF& size, double density) {
    const auto pixels = [density](double length) {
        return static_cast<int>(std::ceil(length * density - 1e-6));
    };
    QImage picture(pixels(size.width()), pixels(size.height()), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(density);
    picture.fill(Qt::transparent);
    return picture;
}

} // namespace marrowfin::chrome
