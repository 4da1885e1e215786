// Ten thousand events of a hand gone wild, from fixed seeds: after each the document must be sound, and now
// and then what is on the screen must be what a fresh picture shows.
#include "CanvasFixture.h"

#include <QRandomGenerator>
#include <QSet>

namespace marrowfin::editor {

using namespace annotation;
namespace {

class Storm : public CanvasFixture, public testing::WithParamInterface<quint32> {
protected:
    Storm() : CanvasFixture(page(900, 620), {640, 480}), random(GetParam()) {
        QObject::connect(canvas, &AnnotationCanvasView::contentsChanged, canvas,
                         [this](const QRegion& region) { stale += region; });
        stale = canvas->rect();
    }

    int upTo(int limit) { return static_cast<int>(random.bounded(limit)); }
    QPointF somewhere() {
        const QRectF image(QPointF(0, 0), document.baseImage().size());
        if (upTo(3) == 0 && count() > 0) { // aim at ink
            const QRectF ink = document.annotations()[upTo(static_cast<int>(count()))].boundingRect();
            const QPointF corners[] = {ink.topLeft(), ink.bottomRight(), ink.center()};
            return corners[upTo(3)];
        }
        return {image.width() * (random.generateDouble() * 1.4 - 0.2),
                image.height() * (random.generateDouble() * 1.4 - 0.2)};
    }

    void anyEvent() {
        switch (upTo(16)) {
        case 0:
        case 1:
            press(hand = somewhere());
            break;
        case 2:
        case 3:
        case 4:
        case 5:
            dragTo(hand += QPointF(upTo(81) - 40, upTo(81) - 40));
            break;
        case 6:
        case 7:
            release(hand);
            break;
        case 8:
            doubleClick(hand = somewhere());
            break;
        case 9:
            choose(allToolTypes[static_cast<size_t>(upTo(allToolTypes.size()))]);
            break;
        case 10:
            key(upTo(2) ? Qt::Key_Return : Qt::Key_Escape);
            break;
        case 11:
            anyLetter();
            break;
        case 12:
            upTo(3) ? undo() : redo();
            break;
        case 13:
            key(upTo(2) ? Qt::Key_Delete : Qt::Key_Backspace);
            break;
        case 14:
            compose();
            break;
        default:
            anyChange();
            break;
        }
    }
    void anyLetter() {
        const QChar letter(u'a' + upTo(26));
        key(letter.toUpper().unicode(), Qt::NoModifier, QString(letter));
    }
    void compose() {
        if (!canvas->textEditor())
            return;
        const QString words[] = {QStringLiteral("é"), QStringLiteral("日本"), QStringLiteral("שלום"), {}};
        QInputMethodEvent event(words[upTo(4)], {});
        if (upTo(2))
            event.setCommitString(words[upTo(4)]);
        QApplication::sendEvent(canvas->textEditor(), &event);
    }
    void anyChange() {
        switch (upTo(6)) {
        case 0:
            tools.setStrokeWidth(1 + upTo(12));
            break;
        case 1:
            tools.setFontSize(8 + upTo(60));
            break;
        case 2:
            tools.setCropAspect(allCropAspects[static_cast<size_t>(upTo(allCropAspects.size()))]);
            break;
        case 3:
            canvas->resize(300 + upTo(500), 200 + upTo(400));
            break;
        case 4:
            canvas->setContentInsets(QMarginsF(upTo(90), upTo(90), upTo(90), upTo(90)));
            break;
        default:
            canvas->commitTextEdit();
            break;
        }
    }

    void expectSound() {
        QSet<QUuid> ids;
        QSet<qint64> orders;
        for (const AnyAnnotation& annotation : document.annotations()) {
            ids.insert(annotation.id());
            orders.insert(annotation.zIndex());
            ASSERT_LT(annotation.zIndex(), document.nextZIndex());
            if (const auto* badge = annotation.as<NumberAnnotation>()) {
                ASSERT_LT(badge->number, document.nextNumber());
            }
            if (const auto* words = annotation.as<TextAnnotation>()) {
                ASSERT_FALSE(words->text.trimmed().isEmpty());
            }
        }
        ASSERT_EQ(ids.size(), count());
        ASSERT_EQ(orders.size(), count());
        ASSERT_LE(document.undoStack().size() + document.redoStack().size(), 50);
        ASSERT_GE(document.nextZIndex(), lastZ);
        ASSERT_GE(document.nextNumber(), lastNumber);
        lastZ = document.nextZIndex();
        lastNumber = document.nextNumber();
        ASSERT_GE(document.baseImage().size().width(), 1);
        ASSERT_EQ(canvas->textSession().has_value(), canvas->textEditor() != nullptr);
        if (tools.currentTool() != ToolType::crop) {
            ASSERT_FALSE(tools.cropRect());
        }
        const CanvasInteraction& hands = canvas->interaction();
        if (hands.interaction().kind == InteractionState::Kind::idle) {
            ASSERT_FALSE(hands.inProgressAnnotation()); // which would be seen and be nowhere
        }
        const QList<InlineTextEditor*> editors = canvas->findChildren<InlineTextEditor*>();
        ASSERT_LE(std::count_if(editors.begin(), editors.end(), [](auto* one) { return !one->isHidden(); }),
                  1);
        ASSERT_FALSE(QApplication::activeModalWidget());
    }
    void expectFresh() {
        if (kept.size() != canvas->size()) {
            kept = QImage(canvas->size(), QImage::Format_RGB32);
            stale = canvas->rect();
        }
        for (const QRect& part : std::exchange(stale, QRegion()) & canvas->rect())
            canvas->render(&kept, part.topLeft(), part);
        ASSERT_EQ(differences(kept, shot()), "");
    }

    QRandomGenerator random;
    QPointF hand;
    QRegion stale;
    QImage kept;
    qint64 lastZ = 0;
    qint64 lastNumber = 0;
};

TEST_P(Storm, LeavesTheDocumentSound) {
    for (int i = 0; i < 10'000; ++i) {
        anyEvent();
        ASSERT_NO_FATAL_FAILURE(expectSound()) << "after event " << i;
        if (i % 100 == 0) {
            ASSERT_NO_FATAL_FAILURE(expectFresh()) << "after event " << i;
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        if (count() > 60) // a storm that only adds would never come back to what is there
            while (document.undoStack().size() > 0)
                document.undo();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Storm, testing::Values(1u, 2u, 3u));

} // namespace
} // namespace marrowfin::editor
