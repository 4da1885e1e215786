// What other programs find on the clipboard, and what we find of theirs.
#include "desktop/x11desktop/support/Copier.h"
#include "desktop/x11desktop/support/PlayedOwner.h"
#include "platform/x11/desktop/ClipboardHandOver.h"
#include "platform/x11/desktop/X11Pasteboard.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QRandomGenerator>

using namespace marrowfin;
using namespace imaging;
using namespace marrowfin::testsupport;
using x11::X11Pasteboard;

namespace {

const QString pngType = QStringLiteral("image/png");
const QString textType = QStringLiteral("UTF8_STRING");

QImage noise(int width, int height, quint32 seed = 1) {
    QImage pixels(width, height, QImage::Format_RGB32);
    QRandomGenerator random(seed);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.setPixel(x, y, 0xff000000u | random.generate());
    return pixels;
}

Image encodedImage(const QImage& pixels) {
    Image image = Image::captured(pixels);
    image.png();
    return image;
}

QByteArray fileBytes(const QImage& pixels, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    pixels.save(&buffer, format);
    return bytes;
}

bool othersOffer(const x11::Connection& connection, const QString& type) {
    return waitUntil([&] {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        return !x11::ownsClipboard(connection) && data && data->hasFormat(type);
    });
}

std::optional<Image> readBack(X11Pasteboard& pasteboard) {
    Result<std::optional<Image>> read = await(pasteboard.readImage());
    EXPECT_TRUE(read.has_value());
    return read ? *read : std::nullopt;
}

class Pasteboard : public testing::Test {
protected:
    std::unique_ptr<x11::Connection> connection = *x11::Connection::adoptQt();
    X11Pasteboard pasteboard{*connection};
};

} // namespace

TEST_F(Pasteboard, anotherProgramReadsTheOneEncoding) {
    const Image image = encodedImage(noise(640, 400));
    ASSERT_TRUE(await(pasteboard.writeImage(image)));
    const ProgramResult pasted = paste(pngType);
    EXPECT_EQ(pasted.exitCode, 0);
    EXPECT_TRUE(pasted.output == image.png());
}

// More than the server takes in one request, so it goes over in pieces.
TEST_F(Pasteboard, aLargeImageArrivesWhole) {
    const Image image = encodedImage(noise(3840, 2160));
    ASSERT_TRUE(await(pasteboard.writeImage(image)));
    EXPECT_TRUE(paste(pngType).output == image.png());
}

TEST_F(Pasteboard, nothingIsOfferedThatWouldBeEncodedAgain) {
    const QImage pixels = noise(32, 20);
    ASSERT_TRUE(await(pasteboard.writeImage(encodedImage(pixels))));
    QStringList images;
    for (const QByteArray& target : paste(QStringLiteral("TARGETS")).output.split('\n'))
        if (target.startsWith("image/"))
            images << QString::fromLatin1(target);
    EXPECT_EQ(images, QStringList{pngType});
    // Our own toolkit finds the pixels all the same.
    EXPECT_EQ(qvariant_cast<QImage>(QGuiApplication::clipboard()->mimeData()->imageData()), pixels);
}

TEST_F(Pasteboard, aWriteWaitsForItsEncoding) {
    const Image image = Image::captured(noise(1600, 1000));
    ASSERT_TRUE(await(pasteboard.writeImage(image)));
    EXPECT_TRUE(image.isEncoded());
    EXPECT_TRUE(paste(pngType).output == image.png());
}

TEST_F(Pasteboard, theLastOfSeveralWritesStays) {
    const Outcome<void> first = pasteboard.writeImage(Image::captured(noise(1600, 1000)));
    pasteboard.clearContents();
    const Outcome<void> second = pasteboard.writeText(QStringLiteral("gr\u00fcn"));
    EXPECT_FALSE(await(first));
    ASSERT_TRUE(await(second));
    EXPECT_EQ(paste(textType).output, QByteArray("gr\xc3\xbcn"));
    EXPECT_EQ(paste(pngType).output, QByteArray());
}

TEST_F(Pasteboard, whatCannotBeEncodedIsRefusedAndLeavesTheContents) {
    ASSERT_TRUE(await(pasteboard.writeText(QStringLiteral("kept"))));
    EXPECT_FALSE(await(pasteboard.writeImage({})));
    EXPECT_EQ(paste(textType).output, QByteArray("kept"));
}

TEST_F(Pasteboard, nothingIsLeftAfterClearing) {
    ASSERT_TRUE(await(pasteboard.writeText(QStringLiteral("secret"))));
    pasteboard.clearContents();
    ASSERT_TRUE(waitUntil([] { return paste(textType).output.isEmpty(); }));
    EXPECT_EQ(readBack(pasteboard), std::nullopt);
}

// The other program copied after the last event that reached us.
TEST_F(Pasteboard, takesTheClipboardFromAProgramThatCopiedLater) {
    ASSERT_TRUE(await(pasteboard.writeText(QStringLiteral("first"))));
    const OtherOwner other(textType, "theirs");
    ASSERT_TRUE(waitUntil([] { return paste(textType).output == "theirs"; }));
    ASSERT_TRUE(await(pasteboard.writeText(QStringLiteral("second"))));
    EXPECT_EQ(paste(textType).output, QByteArray("second"));
}

TEST_F(Pasteboard, ownImagesComeBackAsThemselves) {
    const Image image = Image::captured(noise(640, 400));
    const Outcome<void> written = pasteboard.writeImage(image);
    EXPECT_EQ(readBack(pasteboard), image); // while it is still being encoded
    ASSERT_TRUE(await(written));
    EXPECT_EQ(readBack(pasteboard), image);
}

TEST_F(Pasteboard, readsTheImagesOfOtherPrograms) {
    const QImage pixels = noise(50, 30);
    for (const char* format : {"PNG", "BMP"}) {
        const QString type = QStringLiteral("image/") + QString::fromLatin1(format).toLower();
        const OtherOwner other(type, fileBytes(pixels, format));
        ASSERT_TRUE(othersOffer(*connection, type));
        const std::optional<Image> read = readBack(pasteboard);
        ASSERT_TRUE(read) << format;
        EXPECT_EQ(read->pixels().convertToFormat(pixels.format()), pixels) << format;
        EXPECT_EQ(read->size(), QSizeF(50, 30));
    }
    const OtherOwner other(QStringLiteral("image/jpeg"), fileBytes(pixels, "JPEG"));
    ASSERT_TRUE(othersOffer(*connection, QStringLiteral("image/jpeg")));
    const std::optional<Image> read = readBack(pasteboard);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->size(), QSizeF(50, 30));
}

TEST_F(Pasteboard, hostileBytesAndTextAreNoImage) {
    QByteArray truncated = fileBytes(noise(200, 200), "PNG");
    truncated.truncate(60);
    QByteArray huge = fileBytes(noise(8, 8), "PNG");
    huge.replace(16, 8, QByteArray::fromHex("7fffffff7fffffff"));
    for (const QByteArray& bytes :
         {truncated, huge, QByteArray("\x89PNG\r\n\x1a\n"), QByteArray(5000, 'x')}) {
        const OtherOwner other(pngType, bytes);
        ASSERT_TRUE(othersOffer(*connection, pngType));
        EXPECT_EQ(readBack(pasteboard), std::nullopt);
    }
    const OtherOwner other(textType, "words");
    ASSERT_TRUE(othersOffer(*connection, QStringLiteral("text/plain")));
    EXPECT_EQ(readBack(pasteboard), std::nullopt);
}

// Our own work goes on meanwhile, and in the end there is no picture.
TEST_F(Pasteboard, ownersWithoutMannersAreGivenUp) {
    for (const Manners manners : {Manners::Silent, Manners::ListOnly, Manners::Drips}) {
        const PlayedOwner owner(manners);
        const Outcome<std::optional<Image>> read = pasteboard.readImage();
        EXPECT_FALSE(read.isSettled()) << "it waited for the owner " << int(manners);
        const Result<std::optional<Image>> found = await(read);
        ASSERT_TRUE(found) << found.error().message.toStdString();
        EXPECT_EQ(*found, std::nullopt);
    }
}

TEST_F(Pasteboard, anOwnerIsNotWaitedForAtTheEnd) {
    const PlayedOwner owner(Manners::Silent);
    auto ending = std::make_unique<X11Pasteboard>(*connection);
    const Outcome<std::optional<Image>> read = ending->readImage();
    ending.reset();
    const Result<std::optional<Image>> found = await(read);
    EXPECT_TRUE(!found || *found == std::nullopt);
}

TEST_F(Pasteboard, withoutAManagerTheContentsGoWithTheProgram) {
    EXPECT_EQ(copyAndQuit(noise(64, 64)), 0);
    EXPECT_NE(paste(pngType).exitCode, 0);
}
