// main() of the tests that paint or show widgets: the offscreen plugin, our own fonts, 96 dpi, the Fusion
// style with a fixed palette, so that a pixel is the same on every machine.
#include "support/OffscreenWorld.h"

#include <QApplication>
#include <QStyleFactory>
#include <gtest/gtest.h>

namespace {
// What a test left waiting happens before the next one begins: dropped flows end, deleted widgets go.
class Drain : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};
} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    marrowfin::test::chooseOffscreenWorld();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    testing::UnitTest::GetInstance()->listeners().Append(new Drain);
    return RUN_ALL_TESTS();
}
