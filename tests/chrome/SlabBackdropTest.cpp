// What a plate shows of the view beneath it: blurred, never out of date, and only the changed part of it done
// again.
#include "chrome/SlabBackdrop.h"
#include "chrome/SlabFixture.h"

namespace marrowfin::chrome {

class Backdrops : public SlabFixture {
protected:
    Backdrops() {
        floatOver(slab);
        slab.setContentSize(200, 60, 0, 0, 0, 0);
        place(slab, {100, 100, 200, 60});
        window.show();
    }
    // White, but black in this rectangle.
    void blacken(const QRect& rect) {
        QImage image = plain(Qt::white);
        QPainter(&image).fillRect(rect, Qt::black);
        below.setPicture(image);
        slab.backdropChanged(rect);
    }
    int grey(const QPoint& inSlab) {
        return picture().pixelColor(slab.geometry().topLeft() + inSlab).lightness();
    }

    EditorSlabView slab{SlabGround::Window, 12, &window};
};

TEST_F(Backdrops, AnEdgeBeneathIsBlurred) {
    blacken({0, 0, 200, 300}); // its edge runs through the middle of the plate
    EXPECT_NEAR(grey({20, 30}), 226, 1);
    EXPECT_NEAR(grey({100, 30}), 237, 1);
    EXPECT_NEAR(grey({180, 30}), 247, 1);
    const QImage seen = picture();
    for (int x = 30; x < 170; ++x) {
        const QPoint at = slab.geometry().topLeft() + QPoint(x, 30);
        EXPECT_LE(std::abs(seen.pixelColor(at).lightness() - seen.pixelColor(at + QPoint(1, 0)).lightness()),
                  1);
    }
}

TEST_F(Backdrops, WithoutABackdropAnEdgeIsSharp) {
    EditorSlabView bare(SlabGround::Desktop, 12, &window);
    bare.setContentSize(200, 60, 0, 0, 0, 0);
    bare.move(slab.pos());
    bare.show();
    blacken({0, 0, 200, 300});
    slab.hide();
    EXPECT_NEAR(grey({99, 30}), 226, 1);
    EXPECT_NEAR(grey({100, 30}), 247, 1);
}

TEST_F(Backdrops, ChangesOneByOneGiveTheSamePictureAsAllAtOnce) {
    for (const QPoint place :
         {QPoint(100, 140), QPoint(-30, -20), QPoint(230, 260)}) { // also beyond the edges
        slab.move(place);
        QImage image = plain(Qt::white);
        below.setPicture(image);
        slab.backdropChanged(below.rect());
        picture();
        for (int i = 0; i < 40; ++i) {
            const QRect dot = QRect(i * 53 % 220, i * 29 % 90, 9, 7).translated(place - QPoint(10, 20));
            QPainter(&image).fillRect(dot, QColor::fromHsv(i * 9, 255, 200));
            below.setPicture(image);
            slab.backdropChanged(dot & below.rect());
            picture();
        }
        const QImage stepwise = picture();
        slab.backdropChanged(below.rect()); // everything anew
        EXPECT_EQ(picture(), stepwise) << place.x();
    }
}

TEST_F(Backdrops, FarBesideTheViewItsEdgeIsRepeatedToo) {
    below.setGeometry(180, 0, 220, 300); // the plate's first 80 points have nothing below them
    below.setPicture(plain(Qt::black));
    slab.backdropChanged(below.rect());
    const int before = grey({10, 30});
    below.setPicture(plain(Qt::white));
    for (int y = 0; y < 300; y += 10)
        slab.backdropChanged(QRect(0, y, 20, 10));
    EXPECT_GT(grey({10, 30}), before + 10);
}

TEST_F(Backdrops, OnlyWhatChangedIsPaintedAgain) {
    picture();
    below.paintedParts = {};
    picture();
    EXPECT_TRUE(below.paintedParts.isEmpty());
    slab.backdropChanged(QRect(150, 150, 10, 10));
    picture();
    EXPECT_TRUE(below.paintedParts.contains(QPoint(155, 155)));
    EXPECT_TRUE(QRect(146, 146, 18, 18).contains(below.paintedParts.boundingRect()));
}

TEST_F(Backdrops, AChangeFarAwayIsNobodysBusiness) {
    picture();
    below.paintedParts = {};
    slab.backdropChanged(QRect(0, 0, 40, 40));
    picture();
    EXPECT_TRUE(below.paintedParts.isEmpty());
}

TEST_F(Backdrops, APlateAtTheEdgeOfTheViewRepeatsItsEdge) {
    slab.move(-50, 270); // partly outside, at the left and below
    blacken({0, 0, 400, 300});
    EXPECT_NEAR(grey({55, 10}), 226, 1);
    slab.backdropChanged(QRect(0, 0, 400, 300));
    below.setPicture(plain(Qt::white));
    EXPECT_NEAR(grey({55, 10}), 247, 1);
}

TEST_F(Backdrops, MovingThePlateShowsWhatIsBeneathItThere) {
    blacken({0, 0, 400, 100});
    EXPECT_NEAR(grey({100, 30}), 247, 2);
    slab.move(100, 20);
    EXPECT_NEAR(grey({100, 30}), 226, 2);
}

TEST_F(Backdrops, TheViewBeneathMayGoFirst) {
    auto* gone = new QWidget(&window);
    slab.setBackdrop(*gone, [](QPainter&, const QRect&) { FAIL(); });
    delete gone;
    slab.backdropChanged(QRect(150, 150, 10, 10));
    EXPECT_NEAR(grey({100, 30}), 247, 1);
}

TEST_F(Backdrops, AChangeRepaintsThePlateAsFarAsTheBlurCarriesIt) {
    blacken({0, 0, 1, 1});
    picture();
    QCoreApplication::processEvents();
    QRegion repainted;
    class Watch : public QObject {
    public:
        explicit Watch(QRegion& into) : region(into) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
        QRegion& region;
    } watch(repainted);
    slab.installEventFilter(&watch);
    slab.backdropChanged(QRect(200, 160, 8, 8)); // 100, 20 in the plate
    QEvent request(QEvent::UpdateRequest);
    QApplication::sendEvent(&window, &request);
    EXPECT_TRUE(repainted.contains(QPoint(70, 20)));
    EXPECT_TRUE(repainted.contains(QPoint(140, 20)));
    EXPECT_FALSE(repainted.contains(QPoint(20, 20)));
    EXPECT_FALSE(repainted.contains(QPoint(180, 20)));
}

} // namespace marrowfin::chrome
