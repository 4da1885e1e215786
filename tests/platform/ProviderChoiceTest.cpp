#include "platform/ProviderChoice.h"
#include "platform/ServiceSet.h"

#include <gtest/gtest.h>
#include <map>

using namespace marrowfin;
using namespace marrowfin::platform;

namespace {

struct Wheel {
    QString name;
};

class ProviderChoiceTest : public testing::Test {
protected:
    std::map<QString, QString> variables;
    ProviderChoice choice{[this](const QString& variable) { return variables[variable]; }};
    Wheel native{QStringLiteral("native")};
    Wheel portal{QStringLiteral("portal")};
    bool nativeWorks = true;
    bool portalWorks = true;
    int made = 0;

    Result<Wheel*> choose() { return choice.choose<Wheel>(QStringLiteral("scrollPoster"), providers()); }
    std::vector<Provider<Wheel>> providers() {
        return {{QStringLiteral("native"), [this] { return make(native, nativeWorks); }},
                {QStringLiteral("portal"), [this] { return make(portal, portalWorks); }}};
    }
    Result<Wheel*> make(Wheel& wheel, bool works) {
        ++made;
        if (!works)
            return unavailable(wheel.name + QStringLiteral(" isn't here"));
        return &wheel;
    }
};

} // namespace

TEST_F(ProviderChoiceTest, theFirstThatWorksIsTakenAndNoOtherIsMade) {
    EXPECT_EQ(choose(), &native);
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(choice.overrideLine().isEmpty());
}

TEST_F(ProviderChoiceTest, oneThatDoesNotWorkIsPassedOver) {
    nativeWorks = false;
    EXPECT_EQ(choose(), &portal);
}

TEST_F(ProviderChoiceTest, withoutAnyTheLastOnesReasonIsTheAnswer) {
    nativeWorks = portalWorks = false;
    const Result<Wheel*> none = choose();
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().message, QStringLiteral("portal isn't here"));
}

TEST_F(ProviderChoiceTest, theEnvironmentMayNameAnother) {
    variables[QStringLiteral("MARROWFIN_PROVIDER_SCROLLPOSTER")] = QStringLiteral("portal");
    EXPECT_EQ(choose(), &portal);
    EXPECT_EQ(made, 1) << "the one that wasn't wanted was made";
    EXPECT_EQ(choice.overrideLine(),
              QStringLiteral("[Marrowfin] Providers named by the environment: scrollPoster=portal"));
}

TEST_F(ProviderChoiceTest, aNameThatDoesNotWorkHereIsToldAndChangesNothing) {
    portalWorks = false;
    variables[QStringLiteral("MARROWFIN_PROVIDER_SCROLLPOSTER")] = QStringLiteral("portal");
    EXPECT_EQ(choose(), &native);
    EXPECT_TRUE(choice.overrideLine().endsWith(QStringLiteral("scrollPoster=portal (not here)")));
}

TEST_F(ProviderChoiceTest, anUnknownNameIsToldAndChangesNothing) {
    variables[QStringLiteral("MARROWFIN_PROVIDER_SCROLLPOSTER")] = QStringLiteral("prtal");
    EXPECT_EQ(choose(), &native);
    EXPECT_TRUE(choice.overrideLine().endsWith(QStringLiteral("scrollPoster=prtal (not here)")));
}

TEST(ServiceSet, destroysTheYoungestFirst) {
    struct Part {
        Part(int number, std::vector<int>& order) : number(number), order(order) {}
        ~Part() { order.push_back(number); }
        int number;
        std::vector<int>& order;
    };
    std::vector<int> order;
    {
        ServiceSet set;
        for (int number = 1; number <= 3; ++number)
            EXPECT_EQ(set.keep(std::make_unique<Part>(number, order)).number, number);
    }
    EXPECT_EQ(order, (std::vector<int>{3, 2, 1}));
}
