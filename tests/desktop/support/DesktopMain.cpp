// Entry of a test program on the virtual desktop (ring 4): an application on the display that ./session
// started.
#include <QApplication>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
