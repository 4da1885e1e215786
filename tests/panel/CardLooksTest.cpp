// The card as a person sees it, compared with pictures: shapes of captures, rested, hovered and arriving,
// light and dark, at both densities.
#include "base/SystemFonts.h"
#include "panel/CardPicture.h"
#include "panel/PanelFixture.h"
#include "support/Golden.h"

#include <QLinearGradient>

namespace marrowfin::panel {

using namespace imaging;

namespace {
// A window with some lines of text over a colourful desktop.
Image sample(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    QPainter painter(&pixels);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, width, height);
    sky.setColorAt(0, QColor(250, 120, 60));
    sky.setColorAt(0.5, QColor(90, 60, 190));
    sky.setColorAt(1, QColor(20, 180, 160));
    painter.fillRect(pixels.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(252, 252, 252));
    painter.drawRoundedRect(QRectF(width * 0.1, height * 0.15, width * 0.8, height * 0.7), 12, 12);
    painter.setBrush(QColor(60, 60, 70));
    for (int line = 0; line < 6; ++line)
        painter.drawRect(QRectF(width * 0.15, height * (0.22 + 0.1 * line), width * (0.4 + 0.05 * (line % 3)),
                                height * 0.03));
    return Image::captured(pixels);
}

// Bright on the left, dark on the right, and nowhere calm.
QImage busyDesktop() {
    QImage pixels(552, 388, QImage::Format_RGB32);
    pixels.fill(QColor(235, 238, 242));
    QPainter painter(&pixels);
    for (int y = 0; y < 388; y += 14)
        for (int x = 0; x < 552; x += 60)
            painter.fillRect(x, y, 40 + (x * 7 + y * 3) % 20, 8,
                             QColor::fromHsv((x * 3 + y * 5) % 360, 120, 200));
    painter.fillRect(300, 0, 252, 388, QColor(30, 34, 40, 200));
    return pixels;
}
} // namespace

class CardLooks : public PanelFixture {
protected:
    CardLooks() {
        addDisplay(1, {0, 0, 1440, 900});
        // No drag file, so the caption has no byte count that comes when it comes.
        QFile blocker(desktop.folders.temporary());
        EXPECT_TRUE(blocker.open(QIODevice::WriteOnly));
    }

    // A card of its own, without a controller: time is all that moves it.
    std::unique_ptr<CapturePanelContentView> card(const Image& image, bool hint = false) {
        auto view = std::make_unique<CapturePanelContentView>(image, PanelActions());
        view->overrideDragHint(hint);
        view->show();
        view->playArrival();
        view->startCountdown(15);
        return view;
    }
    // As under the pointer: its countdown has stopped.
    void hover(CapturePanelContentView& view) {
        view.setHovered(true, HoverSource::Program);
        view.freezeCountdown();
        pass(2);
    }
    static void expectLooks(CapturePanelContentView& view, const QString& name, double density,
                            const QImage& behind = QImage()) {
        QImage picture = cardPicture(view, density, behind);
        picture.setDevicePixelRatio(1);
        EXPECT_TRUE(test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, name, picture, test::rounding));
    }
};

struct Look {
    ColorScheme scheme;
    double density;
    QString name() const {
        return QStringLiteral("%1-%2x")
            .arg(scheme == ColorScheme::Dark ? QStringLiteral("dark") : QStringLiteral("light"))
            .arg(density);
    }
};
class CardLooksIn : public CardLooks, public testing::WithParamInterface<Look> {
protected:
    CardLooksIn() { desktop.appearance.setColorScheme(GetParam().scheme); }
    void expectLooksLike(CapturePanelContentView& view, const QString& what) {
        expectLooks(view, what + QLatin1Char('-') + GetParam().name(), GetParam().density, busyDesktop());
    }
};
INSTANTIATE_TEST_SUITE_P(EachLook, CardLooksIn,
                         testing::Values(Look{ColorScheme::Light, 1}, Look{ColorScheme::Light, 2},
                                         Look{ColorScheme::Dark, 1}, Look{ColorScheme::Dark, 2}));

TEST_P(CardLooksIn, EveryShapeArrivingRestedAndHovered) {
    const std::vector<std::pair<QString, QSize>> shapes{{QStringLiteral("wide"), {3000, 500}},
                                                        {QStringLiteral("tall"), {300, 1400}},
                                                        {QStringLiteral("tiny"), {40, 30}},
                                                        {QStringLiteral("equal"), {1100, 700}}};
    for (const auto& [shape, size] : shapes) {
        const auto view = card(sample(size.width(), size.height()));
        pass(9 / 60.0);
        expectLooksLike(*view, shape + QStringLiteral("-arriving"));
        pass(3);
        expectLooksLike(*view, shape + QStringLiteral("-rested"));
        hover(*view);
        expectLooksLike(*view, shape + QStringLiteral("-hovered"));
    }
}

TEST_P(CardLooksIn, WithTheHint) {
    const auto view = card(sample(1600, 1000), true);
    pass(3);
    hover(*view);
    expectLooksLike(*view, QStringLiteral("equal-hint"));
}

TEST_F(CardLooks, WhileItArrives) {
    const auto view = card(sample(1600, 1000));
    for (const int frame : {2, 6, 10, 16}) {
        const double now = chrome::AnimationClock::shared().now();
        pass(3600 + frame / 60.0 - now);
        expectLooks(*view, QStringLiteral("arriving-%1").arg(frame), 2, busyDesktop());
    }
}

TEST_F(CardLooks, WhileTheBarRises) {
    const auto view = card(sample(1600, 1000));
    pass(3);
    view->setHovered(true, HoverSource::Program);
    pass(4 / 60.0);
    expectLooks(*view, QStringLiteral("rising"), 2, busyDesktop());
}

TEST_F(CardLooks, WithoutACompositorNothingIsTranslucent) {
    const auto view = card(sample(1600, 1000));
    view->setComposited(false);
    pass(0.1);
    const QRegion outline = view->cardOutline();
    const QImage arriving = cardPicture(*view, 1);
    pass(3);
    const QImage rested = cardPicture(*view, 1);
    for (const QImage& picture : {arriving, rested})
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (outline.contains(QPoint(x, y))) {
                    ASSERT_EQ(qAlpha(picture.pixel(x, y)), 255) << x << ", " << y;
                }
    // Its corner is the plate's colour up to the cut, with no dark edge.
    EXPECT_GT(qGray(rested.pixel(outline.boundingRect().left() + 6, outline.boundingRect().top() + 6)), 150);
}

} // namespace marrowfin::panel
