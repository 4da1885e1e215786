#include "base/Shared.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace marrowfin;

namespace {

QStringList events;

template <int Number>
struct Told {
    Told() { events << QString("made %1").arg(Number); }
    ~Told() { events << QString("gone %1").arg(Number); }
};

using One = Told<1>;
using Two = Told<2>;

// Uses One from the first to the last.
struct User {
    User() { Shared<One>::instance(); }
    ~User() {
        events << "user goes";
        Shared<One>::instance();
    }
};

// Uses, in its destructor, an object that is younger and gone by then.
struct LateUser {
    ~LateUser() { Shared<Two>::instance(); }
};

class SharedObject : public testing::Test {
protected:
    void SetUp() override {
        SharedObjects::destroyAll();
        events.clear();
    }
    void TearDown() override { SharedObjects::destroyAll(); }
};

} // namespace

TEST_F(SharedObject, isBuiltOnFirstUseAndOnce) {
    EXPECT_FALSE(Shared<One>::exists());
    const One* first = &Shared<One>::instance();
    EXPECT_EQ(&Shared<One>::instance(), first);
    EXPECT_TRUE(Shared<One>::exists());
    EXPECT_EQ(events, QStringList("made 1"));
}

TEST_F(SharedObject, theOldestMayBeKeptForLater) {
    Shared<One>::instance();
    const std::size_t oldest = SharedObjects::count();
    Shared<Two>::instance();
    SharedObjects::destroyAllBut(oldest);
    EXPECT_EQ(events, QStringList({"made 1", "made 2", "gone 2"}));
    EXPECT_TRUE(Shared<One>::exists());
}

TEST_F(SharedObject, noneIsBuiltOnceTheyAreClosed) {
    Shared<One>::instance();
    SharedObjects::close();
    Shared<One>::instance();
    EXPECT_DEATH(Shared<Two>::instance(), "invariant broken");
    SharedObjects::destroyAll();
    EXPECT_DEATH(Shared<One>::instance(), "invariant broken");
    SharedObjects::reopen();
    Shared<One>::instance();
}

TEST_F(SharedObject, theYoungestGoesFirst) {
    Shared<Two>::instance();
    Shared<One>::instance();
    SharedObjects::destroyAll();
    EXPECT_EQ(events, QStringList({"made 2", "made 1", "gone 1", "gone 2"}));
}

TEST_F(SharedObject, whatAConstructorUsesOutlivesIt) {
    Shared<User>::instance();
    SharedObjects::destroyAll();
    EXPECT_EQ(events, QStringList({"made 1", "user goes", "gone 1"}));
}

TEST_F(SharedObject, aDestructorMayRebuildAYoungerOne) {
    Shared<LateUser>::instance();
    Shared<Two>::instance();
    SharedObjects::destroyAll();
    EXPECT_EQ(events, QStringList({"made 2", "gone 2", "made 2", "gone 2"}));
    EXPECT_FALSE(Shared<Two>::exists());
}

TEST_F(SharedObject, theNextUseBuildsAnew) {
    Shared<One>::instance();
    SharedObjects::destroyAll();
    Shared<One>::instance();
    EXPECT_EQ(events, QStringList({"made 1", "gone 1", "made 1"}));
}

TEST_F(SharedObject, aReplacementTakesThePlace) {
    auto mine = std::make_unique<One>();
    const One* place = mine.get();
    Shared<One>::replace(std::move(mine));
    EXPECT_EQ(&Shared<One>::instance(), place);
    Shared<One>::replace(std::make_unique<One>());
    EXPECT_EQ(events, QStringList({"made 1", "made 1", "gone 1"}));
    SharedObjects::destroyAll();
    EXPECT_EQ(events.count("gone 1"), 2);
}

TEST_F(SharedObject, threadsThatReachForItAtOnceGetTheSame) {
    std::vector<One*> seen(8);
    std::vector<std::thread> threads;
    for (One*& place : seen)
        threads.emplace_back([&place] { place = &Shared<One>::instance(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(seen, std::vector<One*>(8, &Shared<One>::instance()));
    EXPECT_EQ(events, QStringList("made 1"));
}
