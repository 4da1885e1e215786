// The last frame of an edit against the ink it becomes: caret, selection and outline are all that differs.
#include "CanvasFixture.h"

namespace marrowfin::editor {

using namespace annotation;
namespace {

struct Place {
    QSize view;
    double density;
    const char* name;
};

class TextPlace : public CanvasFixture, public testing::WithParamInterface<Place> {
protected:
    TextPlace() : CanvasFixture(page(1000, 700), GetParam().view) { choose(ToolType::text); }

    // Where caret and outline are: the frame's dashes, and the caret's column.
    QRegion chrome() const {
        const QRectF frame = canvas->textEditor()->frameAt(CanvasFit::of(canvas->size(), {}, {1000, 700}));
        const QRegion outline = QRegion(frame.adjusted(-5, -4, 5, 4).toAlignedRect()) -
                                QRegion(frame.adjusted(-1, 0, 1, 0).toRect());
        const QRectF caret = canvas->textEditor()->caretRect();
        const QPointF top = view(caret.topLeft());
        return outline + QRectF(top.x() - 2, top.y() - 2, 5, caret.height() * canvas->displayScale() + 4)
                             .toAlignedRect();
    }
    void expectSameBut(const QRegion& region) {
        const double density = GetParam().density;
        QImage during = shot(density);
        canvas->commitTextEdit();
        ASSERT_GT(count(), 0);
        QImage after = shot(density);
        ASSERT_NE(after, before);
        for (QImage* one : {&during, &after}) {
            QPainter painter(one);
            for (const QRect& rect : region)
                painter.fillRect(QRectF(rect.x() * density, rect.y() * density, rect.width() * density,
                                        rect.height() * density)
                                     .toAlignedRect(),
                                 Qt::black);
        }
        EXPECT_EQ(during, after);
        EXPECT_NE(after.copy(), before);
    }
    QImage before = QImage();
};

TEST_P(TextPlace, NewTextStandsWhereItWasTyped) {
    before = shot(GetParam().density);
    click({211, 187});
    QInputMethodEvent words;
    words.setCommitString(QStringLiteral("Ég typed, jolly quick\nzweite Zeile 日本語\n"));
    QApplication::sendEvent(canvas->textEditor(), &words);
    expectSameBut(chrome());
}

TEST_P(TextPlace, TextTypedAgainStandsWhereItStood) {
    before = shot(GetParam().density);
    document.add(text({140, 260}, QStringLiteral("Again and again,\nAV To fi")));
    const QImage stood = shot(GetParam().density);
    click({150, 255});
    ASSERT_TRUE(canvas->textEditor());
    expectSameBut(chrome());
    EXPECT_EQ(shot(GetParam().density), stood);
}

INSTANTIATE_TEST_SUITE_P(Fits, TextPlace,
                         testing::Values(Place{{1000, 700}, 1, "Full"}, Place{{500, 350}, 1, "Half"},
                                         Place{{370, 259}, 1, "Odd"}, Place{{1000, 700}, 2, "FullTwice"},
                                         Place{{500, 350}, 2, "HalfTwice"}, Place{{370, 259}, 2, "OddTwice"}),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace marrowfin::editor
