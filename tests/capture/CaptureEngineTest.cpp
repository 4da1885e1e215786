#include "capture/CaptureEngine.h"
#include "capture/CaptureError.h"
#include "platform/fake/FakeDesktop.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace capture;
using namespace imaging;
using namespace marrowfin::platform;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::FakeStream;
using marrowfin::fake::waitUntil;

namespace {

QImage filled(QColor color, int side = 4) {
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

Frame frameOf(const QImage& pixels) {
    Frame frame;
    frame.pixels = pixels;
    return frame;
}

class CaptureEngineTest : public testing::Test {
protected:
    FakeDesktop desktop;
    std::optional<Result<Image>> result;
    int resumed = 0;

    // Starts a capture of which the stream plays this once it runs.
    void capture(std::function<void(FakeStream&)> onStart, std::function<void(FakeStream&)> prepare = {}) {
        desktop.screenSource.prepare = [=](FakeStream& stream) {
            stream.onStart = onStart;
            if (prepare)
                prepare(stream);
        };
        CaptureEngine::make()->capture(DisplayFilter{1}, {}).then([this](Result<Image> settled) {
            ++resumed;
            result = std::move(settled);
        });
    }
    FakeStream& stream() { return *desktop.screenSource.streams.back(); }
};

} // namespace

TEST_F(CaptureEngineTest, theFirstCompleteFrameIsTheImageAndTheStreamIsStopped) {
    capture([](FakeStream& playing) {
        playing.deliver(frameOf(filled(Qt::red)));
        playing.deliver(frameOf(filled(Qt::blue)));
    });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    ASSERT_TRUE(result->has_value());
    EXPECT_EQ((*result)->pixels().pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ((*result)->size(), QSizeF(4, 4)) << "one size unit per pixel";
    EXPECT_EQ(stream().stopCount, 1);
}

TEST_F(CaptureEngineTest, aFrameAfterTheFirstResumesNobody) {
    capture([](FakeStream& playing) { playing.deliver(frameOf(filled(Qt::red))); });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    stream().deliver(frameOf(filled(Qt::blue)));
    stream().finishDeliveries();
    QCoreApplication::processEvents();
    EXPECT_EQ(resumed, 1);
    EXPECT_EQ((*result)->pixels().pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(stream().stopCount, 1);
}

TEST_F(CaptureEngineTest, invalidEmptyForeignAndIdleFramesLeaveTheStreamRunning) {
    capture([](FakeStream& playing) {
        Frame invalid = frameOf(filled(Qt::blue));
        invalid.valid = false;
        playing.deliver(invalid);
        Frame without = frameOf(filled(Qt::blue));
        without.sampleCount = 0;
        playing.deliver(without);
        playing.deliver(frameOf(filled(Qt::blue)), OutputType::Audio);
        Frame idle;
        idle.status = FrameStatus::Idle;
        playing.deliver(idle);
        playing.deliver(frameOf(filled(Qt::green)));
    });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    ASSERT_TRUE(result->has_value());
    EXPECT_EQ((*result)->pixels().pixelColor(0, 0), QColor(Qt::green));
}

TEST_F(CaptureEngineTest, aStreamWithoutAUsableFrameLeavesTheCallerWaitingAndRuns) {
    capture([](FakeStream& playing) {
        Frame blank;
        blank.status = FrameStatus::Blank;
        playing.deliver(blank);
    });
    stream().finishDeliveries();
    QCoreApplication::processEvents();
    EXPECT_FALSE(result.has_value());
    EXPECT_EQ(stream().startCount, 1);
    EXPECT_EQ(stream().stopCount, 0);
    stream().deliver(frameOf(filled(Qt::red)));
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    EXPECT_TRUE(result->has_value()) << "the frame that came late counts";
}

TEST_F(CaptureEngineTest, anErrorAfterAFrameDoesNothing) {
    capture([](FakeStream& playing) { playing.deliver(frameOf(filled(Qt::red))); },
            [](FakeStream& made) {
                made.lateStartError = Error{Error::Kind::Failed, QStringLiteral("too late")};
            });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    stream().finishDeliveries();
    QCoreApplication::processEvents();
    EXPECT_TRUE(result->has_value());
    EXPECT_EQ(resumed, 1);
}

TEST_F(CaptureEngineTest, aCompleteFrameWithoutPixelsIsNoImageBuffer) {
    capture([](FakeStream& playing) { playing.deliver(Frame()); });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    ASSERT_FALSE(result->has_value());
    EXPECT_EQ(result->error().message, QStringLiteral("noImageBuffer"));
    EXPECT_EQ(stream().stopCount, 1);
}

TEST_F(CaptureEngineTest, pixelsOfWhichNoImageCanBeMadeAreImageCreationFailed) {
    // So wide that no picture of 32 bits can hold it. Its memory is never read.
    uchar nothing[4] = {};
    const QImage tooWide(nothing, 1 << 30, 1, 1 << 27, QImage::Format_Mono);
    ASSERT_FALSE(tooWide.isNull());
    capture([&tooWide](FakeStream& playing) { playing.deliver(frameOf(tooWide)); });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    ASSERT_FALSE(result->has_value());
    EXPECT_EQ(result->error().message, QStringLiteral("imageCreationFailed"));
    EXPECT_EQ(stream().stopCount, 1);
}

TEST_F(CaptureEngineTest, aStreamThatCannotTakeAnOutputIsNeverStarted) {
    capture({}, [](FakeStream& made) {
        made.addOutputError = Error{Error::Kind::Failed, QStringLiteral("no output")};
    });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->error().message, QStringLiteral("no output"));
    EXPECT_EQ(stream().startCount, 0);
    EXPECT_EQ(stream().stopCount, 0);
}

TEST_F(CaptureEngineTest, aStreamThatFailsToStartGivesThePlatformsError) {
    capture({}, [](FakeStream& made) {
        made.startError = Error{Error::Kind::Failed, QStringLiteral("gone")};
    });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->error().message, QStringLiteral("gone"));
}

TEST_F(CaptureEngineTest, aStreamThatEndsBeforeItsFirstFrameGivesItsReason) {
    capture([](FakeStream& playing) {
        playing.endByItself(Error{Error::Kind::Failed, QStringLiteral("the window closed")});
    });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    ASSERT_FALSE(result->has_value());
    EXPECT_EQ(result->error().message, QStringLiteral("the window closed"));
}

TEST_F(CaptureEngineTest, aStreamThatEndsWithoutAReasonGaveNoImageBuffer) {
    capture([](FakeStream& playing) { playing.endByItself(); });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    ASSERT_FALSE(result->has_value());
    EXPECT_EQ(result->error().message, QStringLiteral("noImageBuffer"));
}

TEST_F(CaptureEngineTest, anEndAfterTheFrameChangesNothing) {
    capture([](FakeStream& playing) {
        playing.deliver(frameOf(filled(Qt::red)));
        playing.endByItself();
    });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    stream().finishDeliveries();
    QCoreApplication::processEvents();
    EXPECT_TRUE(result->has_value());
    EXPECT_EQ(resumed, 1);
}

TEST_F(CaptureEngineTest, theEncodingHasBegunWhenTheCallerResumes) {
    capture([](FakeStream& playing) { playing.deliver(frameOf(filled(Qt::red))); });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    // Without anyone asking for it.
    EXPECT_TRUE(waitUntil([&] { return (*result)->isEncoded(); }));
}

TEST_F(CaptureEngineTest, pixelsWithAlphaKeepIt) {
    capture([](FakeStream& playing) {
        QImage translucent(2, 2, QImage::Format_ARGB32);
        translucent.fill(QColor(200, 100, 50, 128));
        playing.deliver(frameOf(translucent));
    });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    EXPECT_EQ((*result)->pixels().format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(qAlpha((*result)->pixels().pixel(0, 0)), 128);
}

TEST(CaptureError, textsAreTheCasesOwnNames) {
    EXPECT_EQ(toError(CaptureError::noImageBuffer).message, QStringLiteral("noImageBuffer"));
    EXPECT_EQ(toError(CaptureError::imageCreationFailed).message, QStringLiteral("imageCreationFailed"));
    EXPECT_EQ(toError(CaptureError::streamStartFailed).message, QStringLiteral("streamStartFailed"));
}
