// Any sequence of edits: what undo and redo must keep true. Seeded; the seed is printed on failure.
#include "../Records.h"

#include "annotation/AnnotationDocument.h"

#include <QSet>
#include <gtest/gtest.h>
#include <random>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;
using namespace marrowfin::test;

namespace {

constexpr unsigned sequences = 2000;
constexpr int editsPerSequence = 60;

Image blank() {
    return Image::captured(QImage(64, 48, QImage::Format_RGB32));
}

struct State {
    QList<AnyAnnotation> annotations;
    Image baseImage;
    friend bool operator==(const State&, const State&) = default;
};

State stateOf(const AnnotationDocument& document) {
    return {document.annotations(), document.baseImage()};
}

// A user who does anything, as the canvas would: a resize has its push.
class RandomUser {
public:
    RandomUser(unsigned seed, AnnotationDocument& document) : random(seed), document(document) {}

    void edit() {
        switch (below(9)) {
        case 0:
        case 1:
        case 2:
            return document.add(anyRecord());
        case 3:
            document.selectAnnotation(point(), 6);
            return;
        case 4:
            document.selectAnnotation(point(), 6);
            return document.moveSelected(below(9) - 4, below(9) - 4);
        case 5:
            document.selectAnnotation(point(), 6);
            document.pushUndoSnapshot();
            return document.resizeSelected(allResizeHandles[static_cast<size_t>(below(8))], point());
        case 6:
            return below(2) ? document.deleteSelected() : deleteSome();
        case 7:
            return rename();
        default:
            return below(4) == 0 ? document.crop(QRectF(below(8), below(8), 8 + below(50), 8 + below(40)))
                                 : undoOrRedo();
        }
    }

    void undoOrRedo() { below(2) ? document.undo() : document.redo(); }
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

private:
    QPointF point() { return QPointF(below(64), below(48)); }

    template <class R>
    R boxed() {
        return box<R>(below(60), below(40), below(30), below(30));
    }

    AnyAnnotation anyRecord() {
        switch (below(9)) {
        case 0:
            return boxed<RectangleAnnotation>();
        case 1:
            return boxed<EllipseAnnotation>();
        case 2:
            return boxed<BlurAnnotation>();
        case 3:
            return boxed<HighlightAnnotation>();
        case 4:
            return segment<LineAnnotation>(point(), point());
        case 5:
            return segment<ArrowAnnotation>(point(), point());
        case 6:
            return pen({point(), point(), point()});
        case 7:
            return text(point(), QStringLiteral("w%1").arg(below(5)));
        default:
            return badge(point(), document.takeNumber());
        }
    }

    QUuid someId() {
        const auto& all = document.annotations();
        return all.isEmpty() ? QUuid() : all[below(static_cast<int>(all.size()))].id();
    }
    void deleteSome() { document.deleteAnnotation(someId()); }
    void rename() { document.updateText(someId(), QStringLiteral("w%1").arg(below(5))); }

    std::mt19937 random;
    AnnotationDocument& document;
};

void expectInvariants(const AnnotationDocument& document) {
    EXPECT_LE(document.undoStack().size() + document.redoStack().size(), AnnotationDocument::maxUndoLevels);
    QSet<qint64> seen;
    qint64 last = -1;
    for (const AnyAnnotation& one : document.annotations()) {
        EXPECT_GT(one.zIndex(), last) << "z order rises with insertion";
        last = one.zIndex();
        seen.insert(one.zIndex());
    }
    EXPECT_EQ(seen.size(), document.annotations().size());
    EXPECT_LT(last, document.nextZIndex());
}

} // namespace

TEST(DocumentProperties, theInvariantsHoldAfterEveryEdit) {
    for (unsigned seed = 0; seed < sequences && !HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        AnnotationDocument document(blank());
        RandomUser user(seed, document);
        qint64 z = 0, number = 1;
        for (int i = 0; i < editsPerSequence; ++i) {
            user.edit();
            expectInvariants(document);
            EXPECT_GE(document.nextZIndex(), z);
            EXPECT_GE(document.nextNumber(), number);
            z = document.nextZIndex();
            number = document.nextNumber();
        }
    }
}

TEST(DocumentProperties, undoThenRedoRestoresInkAndImageAndEndsTheSelection) {
    for (unsigned seed = 0; seed < sequences && !HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        AnnotationDocument document(blank());
        RandomUser user(seed, document);
        for (int i = 0; i < editsPerSequence; ++i) {
            user.edit();
            if (document.undoStack().isEmpty() || user.below(3) > 0)
                continue;
            const State before = stateOf(document);
            document.undo();
            document.redo();
            EXPECT_EQ(stateOf(document), before);
            EXPECT_FALSE(document.selectedAnnotationID());
        }
    }
}

TEST(DocumentProperties, undoingAllAndRedoingAllComesBack) {
    for (unsigned seed = 0; seed < sequences && !HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        AnnotationDocument document(blank());
        RandomUser user(seed, document);
        for (int i = 0; i < editsPerSequence; ++i)
            user.edit();
        while (!document.redoStack().isEmpty())
            document.redo();
        const State before = stateOf(document);
        const qsizetype steps = document.undoStack().size();
        QList<State> onTheWay;
        for (qsizetype i = 0; i < steps; ++i) {
            document.undo();
            onTheWay.prepend(stateOf(document));
        }
        EXPECT_TRUE(document.undoStack().isEmpty());
        for (qsizetype i = 0; i < steps; ++i) {
            EXPECT_EQ(stateOf(document), onTheWay[i]) << "step " << i;
            document.redo();
        }
        EXPECT_EQ(stateOf(document), before);
    }
}
