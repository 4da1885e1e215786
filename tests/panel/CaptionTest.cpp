// What the caption says, and how bytes are counted.
#include "panel/PanelFixture.h"

namespace marrowfin::panel {

using namespace imaging;

class Caption : public PanelFixture {
protected:
    Caption() { addDisplay(1, {0, 0, 1440, 900}); }
};

TEST(ByteCounts, AreDecimalAndShort) {
    const std::vector<std::pair<qint64, const char*>> counts{
        {0, "Zero KB"},         {1, "1 byte"},       {999, "999 bytes"},  {1000, "1 KB"},
        {1499, "1 KB"},         {1500, "2 KB"},      {345678, "346 KB"},  {999499, "999 KB"},
        {999500, "1 MB"},       {1234567, "1.2 MB"}, {12000000, "12 MB"}, {999960000, "1 GB"},
        {1234567890, "1.23 GB"}};
    for (const auto& [bytes, text] : counts)
        EXPECT_EQ(fileByteCount(bytes), QLatin1String(text)) << bytes;
}

TEST_F(Caption, StatesTheCapturesPixels) {
    CapturePanel* panel = present(capture(1234, 567));
    panel->content().overrideDragHint(false);
    EXPECT_EQ(panel->content().captionText(), QStringLiteral("1234 × 567"));
}

TEST_F(Caption, StatesPixelsAndNeverPoints) {
    QImage pixels(1234, 567, QImage::Format_RGB32);
    pixels.fill(Qt::gray);
    CapturePanel* panel = present(Image::withSize(pixels, {617, 283.5}));
    EXPECT_TRUE(panel->content().captionText().startsWith(QStringLiteral("1234 × 567")));
}

TEST_F(Caption, TheByteCountJoinsOnceTheFileIsWritten) {
    CapturePanel* panel = present(capture(1234, 567));
    EXPECT_EQ(panel->content().captionText(), QStringLiteral("1234 × 567  —  Drag out to share"));
    ASSERT_TRUE(fake::waitUntil([&] { return panel->content().dragExport().isReady(); }));
    const qint64 bytes = QFileInfo(panel->content().dragExport().destination()).size();
    EXPECT_EQ(panel->content().captionText(),
              QStringLiteral("1234 × 567 · %1  —  Drag out to share").arg(fileByteCount(bytes)));
}

TEST_F(Caption, IsEmptyWithoutPixelsAndTheCardStillStands) {
    CapturePanel* panel = present(Image());
    EXPECT_EQ(panel->content().captionText(), QString());
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->content().capsuleBar().buttons().size(), 5u);
    pass(30); // its file never comes, its timer does
    EXPECT_TRUE(controller().panels().empty());
}

} // namespace marrowfin::panel
