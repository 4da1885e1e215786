#include "platform/HotKeyHandlers.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace marrowfin::platform;

namespace {

class HotKeyHandlersTest : public testing::Test {
protected:
    HotKeyHandlers handlers;
    QStringList asked;

    HotKeyHandlerRef add(const QString& name, HotKeyStatus status) {
        return handlers.add([this, name, status](HotKeyID) {
            asked << name;
            return status;
        });
    }
};

} // namespace

TEST_F(HotKeyHandlersTest, theOwnerIsAskedBeforeTheNewest) {
    const HotKeyHandlerRef owner = add(QStringLiteral("owner"), hotKeyNoError);
    add(QStringLiteral("newest"), hotKeyNoError);
    EXPECT_EQ(handlers.deliver({1, 1}, owner), hotKeyNoError);
    EXPECT_EQ(asked, QStringList{QStringLiteral("owner")});
}

TEST_F(HotKeyHandlersTest, whatIsPassedOnReachesTheOthersNewestFirst) {
    add(QStringLiteral("oldest"), -50);
    add(QStringLiteral("middle"), hotKeyNotHandled);
    add(QStringLiteral("newest"), hotKeyNotHandled);
    EXPECT_EQ(handlers.deliver({1, 1}, 0), -50);
    EXPECT_EQ(asked,
              QStringList({QStringLiteral("newest"), QStringLiteral("middle"), QStringLiteral("oldest")}));
}

TEST_F(HotKeyHandlersTest, aRemovedHandlerIsNotAskedAndLeavesTheOthers) {
    const HotKeyHandlerRef gone = add(QStringLiteral("gone"), hotKeyNoError);
    add(QStringLiteral("stays"), hotKeyNoError);
    handlers.remove(gone);
    EXPECT_EQ(handlers.deliver({1, 1}, gone), hotKeyNoError);
    EXPECT_EQ(asked, QStringList{QStringLiteral("stays")});
}

TEST_F(HotKeyHandlersTest, aHandlerMayRemoveAnotherAndItselfWhileItIsCalled) {
    const HotKeyHandlerRef other = add(QStringLiteral("other"), hotKeyNoError);
    HotKeyHandlerRef self = 0;
    self = handlers.add([&](HotKeyID) {
        handlers.remove(other);
        handlers.remove(self);
        return hotKeyNotHandled;
    });
    EXPECT_EQ(handlers.deliver({1, 1}, self), hotKeyNotHandled);
    EXPECT_TRUE(asked.isEmpty());
}
