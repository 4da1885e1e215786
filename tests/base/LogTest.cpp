#include "base/Log.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace marrowfin;

TEST(Log, linesForTheUserGoToStandardOutput) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    printLine("Window capture failed: gone");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Window capture failed: gone\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Log, theSystemLogIsStandardErrorWithTheExactText) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    logLine("[Marrowfin] 100% naïve: %s — done");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[Marrowfin] 100% naïve: %s — done\n");
}

TEST(Log, linesOfSeveralThreadsDoNotMix) {
    testing::internal::CaptureStdout();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([thread] {
            for (int i = 0; i < 100; ++i)
                printLine(QString(200, QChar('a' + thread)));
        });
    for (std::thread& thread : threads)
        thread.join();
    const QStringList lines = QString::fromStdString(testing::internal::GetCapturedStdout()).split('\n');
    ASSERT_EQ(lines.size(), 401);
    for (int i = 0; i < 400; ++i)
        EXPECT_EQ(lines[i], QString(200, lines[i].front()));
}
