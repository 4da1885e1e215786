// With fixed rows once, a page under a header and over a footer comes out as in a window as high as the page.
#include "scrolling/StitchingManager.h"

#include "scrolling/BandedPage.h"

#include <QPainter>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::scrolling;
using namespace marrowfin::testsupport;
using imaging::Image;

namespace {

constexpr int width = 400;
constexpr int header = 48;
constexpr int footer = 30;

// A window of this height on the page: beneath its header the page begins, scrolled by so much.
QImage window(const QImage& page, int scrolled, int height) {
    QImage frame(width, height, QImage::Format_RGB32);
    frame.fill(Qt::white);
    QPainter painter(&frame);
    painter.drawImage(0, header - scrolled, page);
    painter.fillRect(0, 0, width, header, QColor(230, 232, 238));
    painter.drawImage(10, 12, markedPage(120, 24, 8));
    painter.fillRect(0, header - 1, width, 1, Qt::gray);
    painter.fillRect(0, height - footer, width, footer, QColor(40, 44, 52));
    painter.drawImage(20, height - footer + 6, markedPage(160, 20, 9));
    return frame;
}

QImage stitched(StitchingManager::FixedRows fixedRows, const QImage& page, const std::vector<int>& scrolls) {
    StitchingManager stitcher(fixedRows);
    stitcher.begin(Image::captured(window(page, 0, 300)));
    for (const int scrolled : scrolls)
        EXPECT_TRUE(stitcher.addImage(Image::captured(window(page, scrolled, 300)))) << scrolled;
    return stitcher.finalImage()->pixels();
}

const std::vector<int> scrolls{90, 180, 187, 300, 421, 500};

} // namespace

TEST(PageMode, fixedRowsComeOnce) {
    const QImage page = markedPage(width, 500 + 300 - header - footer);
    const QImage expected = window(page, 0, 800);
    EXPECT_EQ(stitched(StitchingManager::FixedRows::Once, page, scrolls), expected);
}

TEST(PageMode, withoutItTheHeaderStandsInEveryJoin) {
    const QImage page = markedPage(width, 500 + 300 - header - footer);
    const QImage pixels = stitched(StitchingManager::FixedRows::InEveryFrame, page, scrolls);
    for (const int scrolled : scrolls)
        EXPECT_EQ(pixels.copy(0, scrolled, width, 5), window(page, 0, 300).copy(0, 0, width, 5)) << scrolled;
}

TEST(PageMode, aPageWithoutFixedRowsIsTheSameInBoth) {
    const QImage page = markedPage(width, 900);
    for (const auto fixedRows :
         {StitchingManager::FixedRows::Once, StitchingManager::FixedRows::InEveryFrame}) {
        StitchingManager stitcher(fixedRows);
        stitcher.begin(frameAt(page, 0, 300));
        for (int row = 120; row <= 600; row += 120)
            ASSERT_TRUE(stitcher.addImage(frameAt(page, row, 300)));
        EXPECT_EQ(stitcher.finalImage()->pixels(), page);
    }
}
