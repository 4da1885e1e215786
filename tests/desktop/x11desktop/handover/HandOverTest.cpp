// With a clipboard manager, what was copied survives the end of the program that copied it.
#include "desktop/x11desktop/support/Copier.h"

using namespace marrowfin::testsupport;

namespace {
QImage pastedImage() {
    const QByteArray bytes = paste(QStringLiteral("image/png")).output;
    return QImage::fromData(bytes).convertToFormat(QImage::Format_RGB32);
}
} // namespace

TEST(HandOver, theManagerKeepsTheImage) {
    ASSERT_EQ(copyAndQuit(gradient()), 0);
    EXPECT_EQ(pastedImage(), gradient());
}

TEST(HandOver, theManagerGetsAnImageThatWasStillBeingEncoded) {
    const QImage other = gradient().mirrored();
    ASSERT_EQ(copyAndQuit(other, {QStringLiteral("--at-once")}), 0);
    EXPECT_EQ(pastedImage(), other);
}
