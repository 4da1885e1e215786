#include "imaging/CaptureFile.h"

#include "base/Shared.h"
#include "support/BadWorld.h"
#include "support/EventLoop.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <vector>

using namespace marrowfin;
using namespace imaging;

namespace {

Image picture(QRgb color = 0xff336699U) {
    QImage pixels(64, 48, QImage::Format_RGB32);
    pixels.fill(color);
    return Image::captured(pixels);
}

class CaptureFileTest : public testing::Test {
protected:
    ~CaptureFileTest() override { SharedObjects::destroyAll(); }

    CaptureFile file(const QString& name, const Image& image = picture()) const {
        CaptureFile made;
        made.image = image;
        made.path = root.filePath(name);
        return made;
    }
    static QImage pixelsOf(const QString& path) { return QImage(path).convertToFormat(QImage::Format_RGB32); }

    QTemporaryDir root;
};

} // namespace

TEST_F(CaptureFileTest, isTheImagesOnePng) {
    const CaptureFile asked = file("a.png");
    const Result<qint64> bytes = test::awaited(writeCapture(asked));
    QFile written(asked.path);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), asked.image.png());
    EXPECT_EQ(bytes, Result<qint64>(asked.image.png().size()));
}

TEST_F(CaptureFileTest, isAJpegWhereThatIsAskedFor) {
    CaptureFile asked = file("a.jpg");
    asked.format = ImageFormat::jpeg;
    asked.quality = 0.5;
    ASSERT_TRUE(writeCaptureNow(asked));
    QFile written(asked.path);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), encodeImage(asked.image, ImageFormat::jpeg, 0.5));
}

TEST_F(CaptureFileTest, ofTwoUnderOneNameTheLaterStays) {
    for (int i = 0; i < 20; ++i)
        static_cast<void>(writeCapture(file("a.png", picture(Qt::red))));
    const Image last = picture(0xff102030U);
    ASSERT_TRUE(test::awaited(writeCapture(file("a.png", last))));
    EXPECT_EQ(pixelsOf(root.filePath("a.png")), last.pixels());
}

TEST_F(CaptureFileTest, aMissingFolderIsMadeOrAnError) {
    CaptureFile asked = file("one/two/a.png");
    const Error error = writeCaptureNow(asked).error();
    EXPECT_EQ(error.message, "No such file or directory");
    EXPECT_TRUE(cameToWriting(error));
    asked.missingFolder = MissingFolder::IsMade;
    EXPECT_TRUE(writeCaptureNow(asked));
    EXPECT_TRUE(QFile::exists(asked.path));
}

TEST_F(CaptureFileTest, aFolderThatCannotBeMadeAndAnImageWithoutPixelsDontComeToWriting) {
    QFile inTheWay(root.filePath("one"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    CaptureFile asked = file("one/a.png");
    asked.missingFolder = MissingFolder::IsMade;
    EXPECT_FALSE(cameToWriting(writeCaptureNow(asked).error()));
    EXPECT_FALSE(cameToWriting(test::awaited(writeCapture(file("a.png", Image()))).error()));
    EXPECT_FALSE(QFile::exists(root.filePath("a.png")));
}

TEST_F(CaptureFileTest, aFullDiskIsNotWrittenTo) {
    const test::FullDisk full(10);
    const Result<qint64> written = test::awaited(writeCapture(file("a.png")));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().message, "File too large");
    EXPECT_TRUE(cameToWriting(written.error()));
    EXPECT_TRUE(QDir(root.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(CaptureFileTest, itsAccessIsTheCallersToSay) {
    const mode_t before = ::umask(022);
    CaptureFile asked = file("users.png");
    asked.manners.access = FileAccess::AsUsual;
    ASSERT_TRUE(writeCaptureNow(asked));
    ASSERT_TRUE(writeCaptureNow(file("ours.png")));
    ::umask(before);
    EXPECT_EQ(QFile::permissions(asked.path) & QFile::ReadOther, QFile::ReadOther);
    EXPECT_EQ(QFile::permissions(root.filePath("ours.png")) & QFile::ReadOther, QFile::Permissions());
}

TEST_F(CaptureFileTest, finishingWaitsForAllThatWasAskedFor) {
    EXPECT_TRUE(finishCaptureFiles(std::chrono::hours(1))) << "nothing was asked for yet";
    QStringList names;
    for (int i = 0; i < 10; ++i) {
        names << QString("%1.png").arg(i);
        QDir(root.path()).mkdir(QString::number(i));
        static_cast<void>(writeCapture(file(names.back())));
        static_cast<void>(writeCapture(file(QString("%1/b.png").arg(i))));
    }
    EXPECT_TRUE(finishCaptureFiles(std::chrono::hours(1)));
    EXPECT_EQ(QDir(root.path()).entryList(QDir::Files), names);
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(QFile::exists(root.filePath(QString("%1/b.png").arg(i))));
}
