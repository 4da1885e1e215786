#include "base/SerialQueue.h"

#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <pthread.h>
#include <thread>
#include <vector>

using namespace marrowfin;

TEST(SerialQueue, knowsItsLabelAndQuality) {
    const SerialQueue plain("io.tessaly.marrowfin.writerQueue");
    EXPECT_EQ(plain.label(), "io.tessaly.marrowfin.writerQueue");
    EXPECT_EQ(plain.quality(), SerialQueue::QualityOfService::Default);
    const SerialQueue urgent("io.tessaly.marrowfin.capture", SerialQueue::QualityOfService::UserInitiated);
    EXPECT_EQ(urgent.quality(), SerialQueue::QualityOfService::UserInitiated);
}

TEST(SerialQueue, runsBlocksInOrderOneAtATime) {
    std::vector<int> order;
    std::atomic<int> running{0};
    bool overlapped = false;
    SerialQueue queue("test");
    for (int i = 0; i < 500; ++i)
        queue.async([&, i] {
            overlapped = overlapped || ++running != 1;
            order.push_back(i);
            --running;
        });
    queue.sync([] {});
    ASSERT_EQ(order.size(), 500U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_FALSE(overlapped);
}

TEST(SerialQueue, syncReturnsWhenTheBlockHasRun) {
    SerialQueue queue("test");
    int value = 0;
    queue.async([&] { value = 1; });
    queue.sync([&] { value *= 10; });
    EXPECT_EQ(value, 10);
}

TEST(SerialQueue, finishingWaitsForWhatIsQueued) {
    SerialQueue queue("test");
    EXPECT_TRUE(queue.finish(std::chrono::milliseconds(0))) << "nothing was asked of it";
    int count = 0;
    for (int i = 0; i < 5; ++i)
        queue.async([&] { ++count; });
    EXPECT_TRUE(queue.finish(std::chrono::hours(1)));
    EXPECT_EQ(count, 5);
}

TEST(SerialQueue, finishingGivesUpOnABlockThatHangs) {
    SerialQueue queue("test");
    std::mutex disk;
    {
        const std::lock_guard hangs(disk);
        queue.async([&] { const std::lock_guard hold(disk); });
        EXPECT_FALSE(queue.finish(std::chrono::milliseconds(1)));
    }
    EXPECT_TRUE(queue.finish(std::chrono::hours(1)));
}

TEST(SerialQueue, allBlocksRunOnOneThreadThatIsNotTheCallers) {
    SerialQueue queue("test");
    std::thread::id first;
    std::thread::id second;
    bool isCurrent = false;
    EXPECT_FALSE(queue.isCurrent());
    queue.sync([&] {
        first = std::this_thread::get_id();
        isCurrent = queue.isCurrent();
    });
    queue.sync([&] { second = std::this_thread::get_id(); });
    EXPECT_EQ(first, second);
    EXPECT_NE(first, std::this_thread::get_id());
    EXPECT_TRUE(isCurrent);
    EXPECT_FALSE(queue.isCurrent());
}

TEST(SerialQueue, theThreadCarriesTheEndOfTheLabel) {
    SerialQueue queue("io.tessaly.marrowfin.stitching");
    char name[16] = {};
    queue.sync([&] { pthread_getname_np(pthread_self(), name, sizeof name); });
    EXPECT_STREQ(name, "owfin.stitching");
}

TEST(SerialQueue, manyThreadsMayQueueAndWait) {
    SerialQueue queue("test");
    int total = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int i = 0; i < 200; ++i) {
                queue.async([&] { ++total; });
                queue.sync([&] { ++total; });
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(total, 1600);
}

TEST(SerialQueue, destroyingItFinishesWhatIsInIt) {
    int done = 0;
    {
        SerialQueue queue("test");
        for (int i = 0; i < 100; ++i)
            queue.async([&] { ++done; });
    }
    EXPECT_EQ(done, 100);
}

TEST(SerialQueue, aLastBlockMayAskForMore) {
    int done = 0;
    {
        SerialQueue queue("test");
        queue.async([&] {
            queue.async([&] {
                queue.async([&] { ++done; });
                ++done;
            });
            ++done;
        });
    }
    EXPECT_EQ(done, 3);
}

TEST(SerialQueue, lettingGoOfABlockLetsGoOfWhatItHolds) {
    SerialQueue queue("test");
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = held;
    queue.async([held = std::move(held)] {});
    queue.sync([] {});
    EXPECT_TRUE(watch.expired());
}

TEST(SerialQueue, syncFromItsOwnThreadIsABrokenInvariant) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            SerialQueue queue("test");
            queue.sync([&] { queue.sync([] {}); });
        },
        "invariant broken");
}
