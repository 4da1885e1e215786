// What is on the screen.
#include "CanvasFixture.h"

#include "annotation/ImageCompositor.h"
#include "base/SystemColors.h"
#include "support/Golden.h"

#include <cmath>

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class CanvasPaint : public CanvasFixture {};

TEST_F(CanvasPaint, ShowsTheImagePixelForPixel) {
    EXPECT_EQ(shot(), page(640, 400));
}

TEST_F(CanvasPaint, ShowsInkAsItWillBeInTheOutput) {
    document.add(box<RectangleAnnotation>(50, 50, 120, 80));
    document.add(segment<ArrowAnnotation>({200, 60}, {330, 160}));
    document.add(segment<LineAnnotation>({220, 200}, {400, 210}, 5));
    document.add(pen({{30, 200}, {60, 220}, {90, 205}, {130, 260}, {180, 240}}));
    document.add(box<EllipseAnnotation>(400, 60, 120, 90));
    document.add(badge({560, 300}, 12));
    document.add(text({60, 330}, QStringLiteral("Words\nin two lines")));
    HighlightAnnotation marker = box<HighlightAnnotation>(300, 250, 160, 40);
    marker.strokeColor = systemColor(SystemColor::yellow);
    document.add(marker);
    EXPECT_EQ(shot(), ImageCompositor::composite(document).pixels().convertToFormat(QImage::Format_RGB32));
}

// A page many screens high, in lines of one pixel, black and white: an average of them is grey.
QImage scrolledPage() {
    QImage pixels(300, 60'000, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y)
        std::fill_n(reinterpret_cast<QRgb*>(pixels.scanLine(y)), pixels.width(),
                    y % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    return pixels;
}

class CanvasOfAPage : public CanvasFixture {
protected:
    CanvasOfAPage() : CanvasFixture(scrolledPage(), {640, 400}) {}

    bool isFine() {
        const QImage picture = shot();
        const QRect image = canvas->imageRect().toAlignedRect().adjusted(0, 1, 0, -1);
        for (int y = image.top(); y <= image.bottom(); ++y)
            if (std::abs(qGreen(picture.pixel(image.center().x(), y)) - 127) > 10)
                return false;
        return true;
    }
};

TEST_F(CanvasOfAPage, IsUpAtOnceAndItsPictureFollows) {
    int repaints = 0;
    QObject::connect(canvas, &AnnotationCanvasView::contentsChanged, canvas,
                     [&](const QRegion& region) { repaints += region == QRegion(canvas->rect()); });
    EXPECT_EQ(canvas->imageRect(), QRectF(319, 0, 2, 400));
    EXPECT_FALSE(isFine()); // not made of the whole page, which takes its time
    const int before = repaints;
    EXPECT_TRUE(fake::waitUntil([&] { return repaints > before; })); // nobody else asks for it
    EXPECT_TRUE(isFine());
}

TEST_F(CanvasOfAPage, ShowsThePageWhileItsWindowIsResized) {
    ASSERT_TRUE(fake::waitUntil([&] { return isFine(); }));
    for (int height = 399; height > 350; height -= 7) {
        canvas->resize(640, height);
        EXPECT_TRUE(isFine()) << height;
    }
}

TEST_F(CanvasOfAPage, CropsWhatIsFarDown) {
    ASSERT_TRUE(fake::waitUntil([&] { return isFine(); }));
    document.add(box<RectangleAnnotation>(50, 50'100, 100, 80));
    document.crop({0, 50'000, 300, 300});
    EXPECT_EQ(canvas->imageRect(), QRectF(170, 50, 300, 300));
    EXPECT_EQ(shot().copy(170, 50, 300, 300),
              ImageCompositor::composite(document).pixels().convertToFormat(QImage::Format_RGB32));
}

// A picture that only ever gets what the canvas asks to have painted again.
class Screen {
public:
    explicit Screen(AnnotationCanvasView& canvas)
        : canvas(canvas), kept(canvas.size(), QImage::Format_RGB32) {
        QObject::connect(&canvas, &AnnotationCanvasView::contentsChanged, &canvas,
                         [this](const QRegion& region) { stale += region; });
        stale = canvas.rect();
    }
    QImage refreshed() {
        for (const QRect& part : std::exchange(stale, QRegion()))
            canvas.render(&kept, part.topLeft(), part);
        return kept;
    }

private:
    AnnotationCanvasView& canvas;
    QImage kept;
    QRegion stale;
};

TEST_F(CanvasPaint, AChangeRepaintsAllThatItChanged) {
    canvas->resize(840, 600);
    document.add(text({60, 330}, QStringLiteral("Words")));
    Screen screen(*canvas);
    const auto expectFresh = [&](const char* after) {
        EXPECT_EQ(differences(screen.refreshed(), shot()), "")
            << after << " with " << rawValue(tools.currentTool()).toStdString();
    };
    const auto stepwise = [&](QPointF from, QPointF to) {
        screen.refreshed();
        press(from);
        for (int step = 1; step <= 5; ++step) {
            dragTo(from + (to - from) * step / 5);
            expectFresh("a step of a drag");
        }
        release(to);
        expectFresh("a drag");
    };
    for (const ToolType tool : {ToolType::rectangle, ToolType::ellipse, ToolType::arrow, ToolType::line,
                                ToolType::highlight, ToolType::blur}) {
        choose(tool);
        stepwise({100, 100}, {300, 250});
        stepwise({300, 20}, {-40, 180});
    }
    choose(ToolType::number);
    stepwise({400, 300}, {400, 300});
    choose(ToolType::select);
    stepwise({400, 300}, {300, 200}); // moves the badge
    stepwise({300, 200}, {320, 200});
    key(Qt::Key_Delete);
    expectFresh("deleting");
    undo();
    expectFresh("undoing");
    choose(ToolType::crop);
    stepwise({50, 50}, {400, 300});
    stepwise({200, 200}, {260, 210});
    stepwise({460, 310}, {500, 350});
    key(Qt::Key_Return);
    expectFresh("cropping");
    undo();
    choose(ToolType::text);
    click({70, 325});
    expectFresh("opening a text");
    type(QStringLiteral("\nand more"));
    expectFresh("typing");
    key(Qt::Key_A, Qt::ControlModifier);
    expectFresh("selecting letters");
    key(Qt::Key_Backspace);
    expectFresh("wiping");
    type(QStringLiteral("x"));
    key(Qt::Key_Escape);
    expectFresh("ending the edit");
}

TEST_F(CanvasPaint, AGrowingStrokeRepaintsAllThatItChanged) {
    Screen screen(*canvas);
    choose(ToolType::pen);
    tools.setStrokeWidth(8);
    press({50, 200});
    for (int i = 1; i < 120; ++i) {
        const double step = i % 10 == 0 ? 60 : 3.7; // slow and fast
        const QPointF at(50 + std::fmod(step * i, 500), 200 + 90 * std::sin(i / 4.0));
        dragTo(at);
        ASSERT_EQ(differences(screen.refreshed(), shot()), "") << "after point " << i;
    }
}

TEST_F(CanvasPaint, TheWholeIsTheSumOfItsParts) {
    document.add(box<RectangleAnnotation>(50, 50, 120, 80));
    document.add(pen({{30, 200}, {60, 220}, {90, 205}, {130, 260}, {180, 240}}));
    document.add(box<BlurAnnotation>(300, 60, 200, 100));
    document.add(text({60, 330}, QStringLiteral("Words")));
    const QImage whole = shot();
    QImage parts(whole.size(), QImage::Format_RGB32);
    parts.fill(Qt::magenta);
    for (int y = 0; y < 400; y += 37)
        for (int x = 0; x < 640; x += 41)
            canvas->render(&parts, {x, y}, QRegion(x, y, 41, 37));
    EXPECT_EQ(differences(parts, whole), "");
}

TEST_F(CanvasPaint, FitsTogetherAtAFractionalDensity) {
    canvas->resize(501, 333);
    document.add(box<RectangleAnnotation>(50, 50, 120, 80));
    document.add(box<BlurAnnotation>(300, 60, 200, 100));
    for (const double density : {1.25, 1.5}) {
        const QImage whole = shot(density);
        QImage parts(whole.size(), QImage::Format_RGB32);
        parts.setDevicePixelRatio(density);
        parts.fill(Qt::magenta);
        for (int y = 0; y < 333; y += 37)
            for (int x = 0; x < 501; x += 41)
                canvas->render(&parts, {x, y}, QRegion(x, y, 41, 37));
        parts.setDevicePixelRatio(1);
        EXPECT_EQ(
            differences(parts.copy(0, 0, static_cast<int>(500 * density), static_cast<int>(332 * density)),
                        whole.copy(0, 0, static_cast<int>(500 * density), static_cast<int>(332 * density))),
            "");
    }
}

TEST_F(CanvasPaint, ABlurBoxShowsTheBlurredBase) {
    const QImage before = shot();
    document.add(segment<LineAnnotation>({40, 150}, {600, 150}, 8)); // ink beneath isn't blurred live
    document.add(box<BlurAnnotation>(100, 100, 200, 100));
    const QImage blurred = ImageCompositor::blurredImage(page(640, 400), 12);
    const QImage after = shot();
    EXPECT_EQ(after.copy(102, 102, 196, 96), blurred.copy(102, 102, 196, 96).convertToFormat(after.format()));
    EXPECT_EQ(after.copy(310, 180, 100, 100), before.copy(310, 180, 100, 100));
}

TEST_F(CanvasPaint, ABlurIsRealWhileItIsDragged) {
    choose(ToolType::blur);
    press({100, 100});
    dragTo({300, 200});
    const QImage during = shot();
    release({300, 200});
    EXPECT_EQ(shot(), during);
    EXPECT_NE(during.pixel(200, 148), page(640, 400).pixel(200, 148));
}

TEST_F(CanvasPaint, ASliverOfBlurIsNothing) {
    const QImage before = shot();
    document.add(box<BlurAnnotation>(100, 100, 0.9, 100));
    EXPECT_EQ(shot(), before);
}

TEST_F(CanvasPaint, InkBeyondTheImageShows) {
    canvas->resize(840, 600);
    document.add(box<RectangleAnnotation>(-60, -60, 40, 40));
    const QPointF corner = view({-60, -40});
    EXPECT_GT(shot().pixelColor(corner.toPoint()).red(), 200);
}

TEST_F(CanvasPaint, TheSelectionIsFramed) {
    const auto record = box<RectangleAnnotation>(100, 100, 120, 80);
    document.add(record);
    const QImage before = shot();
    choose(ToolType::select);
    click({100, 140});
    EXPECT_NE(shot(), before);
    click({300, 300});
    EXPECT_EQ(shot(), before);
}

TEST_F(CanvasPaint, FollowsTheAppearance) {
    canvas->resize(840, 600);
    EXPECT_EQ(shot().pixelColor(5, 5), systemColor(SystemColor::underPageBackground));
    desktop.appearance.setColorScheme(ColorScheme::Dark);
    EXPECT_EQ(shot().pixelColor(5, 5), systemColor(SystemColor::underPageBackground, ColorScheme::Dark));
}

TEST_F(CanvasPaint, ADocumentWithoutPixelsIsABackground) {
    AnnotationDocument empty{Image()};
    canvas->setDocument(&empty);
    EXPECT_EQ(shot().pixelColor(320, 200), systemColor(SystemColor::underPageBackground));
    canvas->setDocument(&document);
}

class FineLines : public CanvasFixture {
protected:
    static QImage lines() {
        QImage pixels(3840, 2160, QImage::Format_RGB32);
        for (int y = 0; y < pixels.height(); ++y)
            for (int x = 0; x < pixels.width(); ++x)
                pixels.setPixel(x, y, x % 2 ? 0xffffffff : 0xff000000);
        return pixels;
    }
    FineLines() : CanvasFixture(lines(), {1280, 720}) {}
};

TEST_F(FineLines, AThirdOfTheSizeHasNoAliasing) {
    const QImage shown = shot();
    int darkest = 255;
    int lightest = 0;
    for (int x = 100; x < 1100; ++x) {
        darkest = std::min(darkest, qGray(shown.pixel(x, 300)));
        lightest = std::max(lightest, qGray(shown.pixel(x, 300)));
    }
    // Every pixel covers three columns, one or two of them white.
    EXPECT_GE(darkest, 80);
    EXPECT_LE(lightest, 175);
}

TEST_F(CanvasPaint, DoubleDensityShowsInkSharp) {
    document.add(box<RectangleAnnotation>(50, 50, 120, 80));
    const QImage twice = shot(2);
    EXPECT_EQ(twice.size(), QSize(1280, 800));
    EXPECT_GT(twice.pixelColor(100, 180).red(), 220);
    EXPECT_LT(twice.pixelColor(100, 180).green(), 110);
}

} // namespace
} // namespace marrowfin::editor
