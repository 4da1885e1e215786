// The document's operations and what each leaves on the undo stack.
#include "Records.h"

#include "annotation/AnnotationDocument.h"
#include "annotation/ImageCompositor.h"

#include <gtest/gtest.h>
#include <limits>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;
using namespace marrowfin::test;

namespace {

Image blank(int width = 640, int height = 400) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(Qt::white);
    return Image::captured(pixels);
}

// Counts what an observer of the document is told.
struct Observer {
    explicit Observer(AnnotationDocument& document) {
        QObject::connect(&document, &AnnotationDocument::annotationsChanged, [this] { ++annotations; });
        QObject::connect(&document, &AnnotationDocument::selectedAnnotationIDChanged,
                         [this] { ++selection; });
        QObject::connect(&document, &AnnotationDocument::baseImageChanged, [this] { ++baseImage; });
        QObject::connect(&document, &AnnotationDocument::undoStateChanged, [this] { ++undoState; });
    }
    int annotations = 0, selection = 0, baseImage = 0, undoState = 0;
};

} // namespace

TEST(Document, startsEmptyOnItsImage) {
    const Image image = blank();
    const AnnotationDocument document(image);
    EXPECT_TRUE(document.annotations().isEmpty());
    EXPECT_FALSE(document.selectedAnnotationID());
    EXPECT_EQ(document.baseImage(), image);
    EXPECT_TRUE(document.undoStack().isEmpty());
    EXPECT_TRUE(document.redoStack().isEmpty());
    EXPECT_EQ(document.nextZIndex(), 0);
    EXPECT_EQ(document.nextNumber(), 1);
}

TEST(Document, fiftyOneAdditionsLoseTheOldestState) {
    AnnotationDocument document(blank());
    for (int i = 0; i < 51; ++i)
        document.add(badge({0, 0}, i));
    EXPECT_EQ(document.undoStack().size(), 50);
    for (int i = 0; i < 50; ++i)
        document.undo();
    EXPECT_EQ(document.annotations().size(), 1);
    document.undo();
    EXPECT_EQ(document.annotations().size(), 1);
    EXPECT_EQ(document.redoStack().size(), 50);
}

TEST(Document, countersGrowAcrossUndoAndANewEditForgetsRedo) {
    AnnotationDocument document(blank());
    document.add(badge({0, 0}));
    document.undo();
    document.add(badge({1, 1}));
    EXPECT_TRUE(document.redoStack().isEmpty());
    EXPECT_EQ(document.annotations().first().zIndex(), 1);
}

TEST(Document, badgeNumbersAreNeverGivenTwice) {
    AnnotationDocument document(blank());
    document.add(badge({0, 0}, document.takeNumber()));
    document.add(badge({1, 1}, document.takeNumber()));
    document.deleteAnnotation(document.annotations().last().id());
    document.add(badge({2, 2}, document.takeNumber()));
    EXPECT_EQ(document.annotations()[0].as<NumberAnnotation>()->number, 1);
    EXPECT_EQ(document.annotations()[1].as<NumberAnnotation>()->number, 3);
    document.undo();
    EXPECT_EQ(document.nextNumber(), 4);
}

TEST(Document, aBadgeThatTookItsOwnZIndexUsesUpTwo) {
    AnnotationDocument document(blank());
    auto first = badge({0, 0}, document.takeNumber());
    first.zIndex = document.takeZIndex();
    document.add(first);
    EXPECT_EQ(document.annotations().first().zIndex(), 1);
    EXPECT_EQ(document.nextZIndex(), 2);
}

TEST(Document, addingKeepsTheSelection) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}));
    const auto selected = document.selectAnnotation({50, 50}, 6);
    document.add(badge({90, 90}));
    EXPECT_EQ(document.selectedAnnotationID(), selected);
}

TEST(Document, selectingTakesTheYoungestHitOrNothing) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}, 1));
    document.add(badge({55, 50}, 2));
    EXPECT_EQ(document.selectAnnotation({52, 50}, 6), document.annotations()[1].id());
    EXPECT_EQ(document.selectAnnotation({30, 50}, 6), document.annotations()[0].id());
    EXPECT_EQ(document.selectAnnotation({300, 300}, 6), std::nullopt);
    EXPECT_EQ(document.selectedAnnotationID(), std::nullopt);
    EXPECT_EQ(document.undoStack().size(), 2);
}

TEST(Document, aMoveIsNoStepAndGoesWithTheStepBeforeIt) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}));
    document.selectAnnotation({50, 50}, 6);
    document.moveSelected(7, 9);
    EXPECT_EQ(document.undoStack().size(), 1);
    document.undo();
    EXPECT_TRUE(document.annotations().isEmpty());
    document.redo();
    EXPECT_EQ(document.annotations().first().as<NumberAnnotation>()->center, QPointF(57, 59));
}

TEST(Document, movingDoesNotReachIntoWhatUndoKnows) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}));
    document.add(badge({200, 200}));
    document.selectAnnotation({50, 50}, 6);
    document.moveSelected(7, 9);
    document.undo();
    EXPECT_EQ(document.annotations().first().as<NumberAnnotation>()->center, QPointF(50, 50));
}

TEST(Document, aResizeIsOneStepForTheWholeDrag) {
    AnnotationDocument document(blank());
    document.add(box<RectangleAnnotation>(10, 10, 50, 50));
    document.selectAnnotation({10, 30}, 6);
    document.pushUndoSnapshot();
    document.resizeSelected(ResizeHandle::bottomRight, {80, 80});
    document.resizeSelected(ResizeHandle::bottomRight, {100, 90});
    EXPECT_EQ(document.annotations().first().boundingRect(), QRectF(10, 10, 90, 80));
    EXPECT_EQ(document.undoStack().size(), 2);
    document.undo();
    EXPECT_EQ(document.annotations().first().boundingRect(), QRectF(10, 10, 50, 50));
    EXPECT_FALSE(document.selectedAnnotationID());
}

TEST(Document, movingOrResizingWithoutASelectionDoesNothing) {
    AnnotationDocument document(blank());
    document.add(box<RectangleAnnotation>(10, 10, 50, 50));
    Observer observer(document);
    document.moveSelected(5, 5);
    document.resizeSelected(ResizeHandle::topLeft, {0, 0});
    document.deleteSelected();
    EXPECT_EQ(document.annotations().first().boundingRect(), QRectF(10, 10, 50, 50));
    EXPECT_EQ(document.undoStack().size(), 1);
    EXPECT_EQ(observer.annotations, 0);
}

TEST(Document, deletingTheSelectedIsOneStepAndEndsTheSelection) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}));
    document.selectAnnotation({50, 50}, 6);
    document.deleteSelected();
    EXPECT_TRUE(document.annotations().isEmpty());
    EXPECT_FALSE(document.selectedAnnotationID());
    document.undo();
    EXPECT_EQ(document.annotations().size(), 1);
}

TEST(Document, deletingByIdPushesOnlyIfItIsThere) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}, 1));
    document.add(badge({150, 50}, 2));
    const QUuid first = document.annotations().first().id();
    document.selectAnnotation({150, 50}, 6);
    document.deleteAnnotation(QUuid::createUuid());
    EXPECT_EQ(document.undoStack().size(), 2);
    document.deleteAnnotation(first);
    EXPECT_EQ(document.undoStack().size(), 3);
    EXPECT_TRUE(document.selectedAnnotationID()) << "another annotation is selected still";
    document.deleteAnnotation(document.annotations().first().id());
    EXPECT_FALSE(document.selectedAnnotationID());
}

TEST(Document, changedTextIsOneStepUnderTheSameId) {
    AnnotationDocument document(blank());
    document.add(text({10, 30}, QStringLiteral("OLD")));
    document.add(badge({300, 300}));
    const AnyAnnotation before = document.annotations().first();
    document.updateText(before.id(), QStringLiteral("OLD"));
    EXPECT_EQ(document.undoStack().size(), 2);
    document.updateText(before.id(), QStringLiteral("NEW WORDS"));
    EXPECT_EQ(document.undoStack().size(), 3);
    EXPECT_EQ(document.annotations().first().as<TextAnnotation>()->text, QStringLiteral("NEW WORDS"));
    EXPECT_EQ(document.annotations().first().id(), before.id());
    EXPECT_EQ(document.annotations().first().zIndex(), before.zIndex());
    document.undo();
    EXPECT_EQ(document.annotations().first(), before);
}

TEST(Document, textOfWhatIsNoTextStaysAway) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}));
    document.updateText(document.annotations().first().id(), QStringLiteral("words"));
    document.updateText(QUuid::createUuid(), QStringLiteral("words"));
    EXPECT_EQ(document.undoStack().size(), 1);
}

TEST(Document, aCropCarriesAllInkAndOneUndoBringsBothBack) {
    const Image image = blank();
    AnnotationDocument document(image);
    document.add(badge({200, 150}));
    document.add(text({600, 390}, QStringLiteral("outside")));
    document.crop({100, 60, 300, 200});
    EXPECT_EQ(document.baseImage().size(), QSizeF(300, 200));
    ASSERT_EQ(document.annotations().size(), 2);
    EXPECT_EQ(document.annotations()[0].as<NumberAnnotation>()->center, QPointF(100, 90));
    EXPECT_EQ(document.annotations()[1].as<TextAnnotation>()->position, QPointF(500, 330));
    const Image cropped = document.baseImage();
    document.undo();
    EXPECT_EQ(document.baseImage(), image) << "the very image, not a copy of it";
    EXPECT_EQ(document.annotations()[0].as<NumberAnnotation>()->center, QPointF(200, 150));
    document.redo();
    EXPECT_EQ(document.baseImage(), cropped);
    EXPECT_EQ(document.annotations()[0].as<NumberAnnotation>()->center, QPointF(100, 90));
}

TEST(Document, aCropThatChangesNothingIsNoEdit) {
    AnnotationDocument document(blank());
    document.add(badge({200, 150}));
    document.undo();
    for (const QRectF& rect :
         {QRectF(0, 0, 640, 400), QRectF(-50, -50, 900, 900), QRectF(10, 10, 0.9, 100),
          QRectF(10, 10, 100, 0.9), QRectF(700, 10, 50, 50), QRectF(640, 0, 10, 10), QRectF()}) {
        document.crop(rect);
        EXPECT_TRUE(document.undoStack().isEmpty());
        EXPECT_EQ(document.redoStack().size(), 1) << "what can be redone stays so";
    }
}

TEST(Document, aCropALittleSmallerThanTheImageIsAnEdit) {
    AnnotationDocument document(blank());
    document.crop({0, 0, 640, 400 - 1e-10});
    EXPECT_EQ(document.undoStack().size(), 1);
}

TEST(Document, aCropIsCutToTheImage) {
    AnnotationDocument document(blank());
    document.add(badge({200, 150}));
    document.crop({-100, 100, 300, 1000});
    EXPECT_EQ(document.baseImage().size(), QSizeF(200, 300));
    EXPECT_EQ(document.annotations()[0].as<NumberAnnotation>()->center, QPointF(200, 50));
}

TEST(Document, aCropOfNoImageOrByNoNumbersDoesNothing) {
    AnnotationDocument without{Image()};
    without.add(badge({5, 5}));
    without.crop({0, 0, 10, 10});
    EXPECT_EQ(without.undoStack().size(), 1);

    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    AnnotationDocument document(blank());
    document.crop({notANumber, 0, 10, 10});
    document.crop({0, 0, notANumber, 10});
    document.crop({-infinity, 0, infinity, 10});
    EXPECT_TRUE(document.undoStack().isEmpty());
}

TEST(Document, theBaseImagesObserversStayQuietWhenItIsTheSame) {
    AnnotationDocument document(blank());
    document.add(badge({200, 150}));
    document.crop({100, 60, 300, 200});
    document.add(badge({20, 20}));
    Observer observer(document);
    document.undo();
    EXPECT_EQ(observer.baseImage, 0);
    EXPECT_EQ(observer.annotations, 1);
    document.undo();
    EXPECT_EQ(observer.baseImage, 1);
    EXPECT_EQ(observer.annotations, 2);
}

TEST(Document, undoAndRedoEndTheSelection) {
    AnnotationDocument document(blank());
    document.add(badge({50, 50}));
    document.add(badge({150, 50}));
    document.selectAnnotation({50, 50}, 6);
    Observer observer(document);
    document.undo();
    EXPECT_FALSE(document.selectedAnnotationID());
    document.selectAnnotation({50, 50}, 6);
    document.redo();
    EXPECT_FALSE(document.selectedAnnotationID());
    EXPECT_EQ(observer.selection, 3);
}

TEST(Document, observersSeeTheWholeOfACropAtOnce) {
    AnnotationDocument document(blank());
    document.add(badge({200, 150}));
    QSizeF sizeSeen;
    QPointF centerSeen;
    const auto look = [&] {
        sizeSeen = document.baseImage().size();
        centerSeen = document.annotations().first().as<NumberAnnotation>()->center;
    };
    QObject::connect(&document, &AnnotationDocument::annotationsChanged, &document, look,
                     Qt::SingleShotConnection);
    document.crop({100, 60, 300, 200});
    EXPECT_EQ(sizeSeen, QSizeF(300, 200));
    EXPECT_EQ(centerSeen, QPointF(100, 90));
}

TEST(Document, observersLearnWhatCanBeUndone) {
    AnnotationDocument document(blank());
    Observer observer(document);
    document.pushUndoSnapshot();
    EXPECT_EQ(observer.undoState, 1);
    EXPECT_EQ(observer.annotations, 0);
    document.undo();
    document.redo();
    EXPECT_EQ(observer.undoState, 3);
    document.redo();
    EXPECT_EQ(observer.undoState, 3);
}
