#include "base/MainThread.h"
#include "base/SerialQueue.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace marrowfin;

TEST(MainThread, BlocksRunInTheOrderOfTheCallsFromTheLoopAndNotBefore) {
    std::vector<int> ran;
    SerialQueue queue(QStringLiteral("test.posting"));
    QEventLoop loop;
    queue.sync([&] {
        for (int i = 0; i < 100; ++i)
            postToMain([&ran, i] { ran.push_back(i); });
        postToMain([&loop] { loop.quit(); });
    });
    EXPECT_TRUE(ran.empty());
    loop.exec();
    ASSERT_EQ(ran.size(), 100U);
    EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
}

TEST(MainThread, ABlockKeepsItsTurnAmongTheToolkitsOwnCalls) {
    std::vector<int> ran;
    QEventLoop loop;
    QCoreApplication* application = QCoreApplication::instance();
    postToMain([&] { ran.push_back(1); });
    QMetaObject::invokeMethod(
        application, [&] { ran.push_back(2); }, Qt::QueuedConnection);
    postToMain([&] { ran.push_back(3); });
    QMetaObject::invokeMethod(
        application, [&] { loop.quit(); }, Qt::QueuedConnection);
    loop.exec();
    EXPECT_EQ(ran, (std::vector{1, 2, 3}));
}

TEST(MainThread, ABlockIsDestroyedWhenItHasRun) {
    auto held = std::make_shared<int>(1);
    std::weak_ptr<int> watched = held;
    QEventLoop loop;
    postToMain([held = std::move(held)] { EXPECT_EQ(*held, 1); });
    postToMain([&] {
        EXPECT_TRUE(watched.expired());
        loop.quit();
    });
    loop.exec();
}
