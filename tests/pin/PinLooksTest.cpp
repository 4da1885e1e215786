// A pin as a person sees it: its image, the shadow around it, and its button, on bright and on dark pictures.
#include "base/Shared.h"
#include "chrome/AnimationClock.h"
#include "pin/PinManager.h"
#include "pin/PinnedContentView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Golden.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QPainter>
#include <gtest/gtest.h>

namespace marrowfin::pin {

using namespace imaging;

namespace {
// A window with lines of text on one half, a slope on the other.
Image sample(const QColor& paper, const QColor& ink) {
    QImage pixels(220, 140, QImage::Format_RGB32);
    pixels.fill(paper);
    QPainter painter(&pixels);
    for (int line = 0; line < 8; ++line)
        painter.fillRect(14, 14 + 15 * line, 50 + (line * 37) % 50, 5, ink);
    for (int x = 120; x < 220; ++x)
        painter.fillRect(x, 0, 1, 140, QColor::fromHsv((x * 3) % 360, 140, 210));
    return Image::captured(pixels);
}
} // namespace

class PinLooks : public testing::Test {
protected:
    PinLooks() {
        chrome::AnimationClock::shared().hold();
        desktop.addScreen(1, {0, 0, 1440, 900});
    }
    ~PinLooks() override { SharedObjects::destroyAll(); }

    PinnedContentView& pinned(const Image& image) {
        PinManager::shared().pin(image);
        return PinManager::shared().pinnedWindows().back()->content();
    }
    static void hover(PinnedContentView& view) {
        const QPointF place = view.imageArea().center();
        QEnterEvent event(place, place, place);
        QCoreApplication::sendEvent(&view, &event);
        chrome::AnimationClock::shared().advance(1);
    }
    static void expectLooks(PinnedContentView& view, const char* name, double density) {
        QImage picture((QSizeF(view.size()) * density).toSize(), QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(density);
        picture.fill(QColor(226, 230, 235)); // a desktop behind the shadow
        QPainter painter(&picture);
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
        painter.end();
        picture.setDevicePixelRatio(1);
        EXPECT_TRUE(
            test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, QLatin1String(name), picture, test::rounding));
    }

    fake::FakeDesktop desktop;
};

TEST_F(PinLooks, RestedAndUnderThePointer) {
    PinnedContentView& bright = pinned(sample(Qt::white, QColor(60, 60, 70)));
    QCoreApplication::processEvents(); // the window learns where the real pointer is
    expectLooks(bright, "bright-rested-1x", 1);
    hover(bright);
    expectLooks(bright, "bright-hovered-1x", 1);
    expectLooks(bright, "bright-hovered-2x", 2);
    PinnedContentView& dark = pinned(sample(QColor(28, 28, 32), QColor(190, 190, 200)));
    QCoreApplication::processEvents();
    hover(dark);
    expectLooks(dark, "dark-hovered-2x", 2);
}

} // namespace marrowfin::pin
