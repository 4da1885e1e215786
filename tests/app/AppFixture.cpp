#include "AppFixture.h"

#include "capture/ScreenCaptureManager.h"

namespace marrowfin::testsupport {

using namespace app;

using namespace imaging;

void AppFixture::capture(const Image& image) {
    bool routed = false;
    const auto connection =
        QObject::connect(&delegate, &AppDelegate::captureRouted, &delegate, [&] { routed = true; });
    delegate.captureManager()->setCapturedImage(image);
    ASSERT_TRUE(fake::waitUntil([&] { return routed; }));
    QObject::disconnect(connection);
}

Image AppFixture::picture(QColor color) {
    QImage pixels(30, 20, QImage::Format_RGB32);
    pixels.fill(color);
    return Image::captured(pixels);
}

} // namespace marrowfin::testsupport
