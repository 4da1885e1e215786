#include "app/LaunchMode.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace app;

namespace {
using Modes = std::vector<LaunchMode>;

QStringList line(std::initializer_list<const char*> arguments) {
    QStringList list{QStringLiteral("/usr/bin/marrowfin")};
    for (const char* argument : arguments)
        list << QLatin1String(argument);
    return list;
}
} // namespace

TEST(LaunchMode, noFlagIsTheNormalApplication) {
    EXPECT_EQ(launchModes(line({})), Modes{});
    EXPECT_EQ(launchModes(line({"--verbose", "file.png"})), Modes{});
}

TEST(LaunchMode, theFixedOrderDecidesNotTheCommandLine) {
    EXPECT_EQ(launchModes(line({"--crop-demo", "--self-test"})),
              (Modes{LaunchMode::selfTest, LaunchMode::cropDemo}));
    EXPECT_EQ(launchModes(line({"--self-test", "--crop-demo"})),
              (Modes{LaunchMode::selfTest, LaunchMode::cropDemo}));
    EXPECT_EQ(launchModes(line({"--crop-demo", "--blur-demo", "--hero-demo"})),
              (Modes{LaunchMode::heroDemo, LaunchMode::blurDemo, LaunchMode::cropDemo}));
}

TEST(LaunchMode, onlyAnExactElementIsAMatch) {
    EXPECT_EQ(launchModes(line({"--self-test=1"})), Modes{});
    EXPECT_EQ(launchModes(line({"x--self-test"})), Modes{});
    EXPECT_EQ(launchModes(line({"--self"})), Modes{});
    EXPECT_EQ(launchModes(line({"--Self-Test"})), Modes{});
}

TEST(LaunchMode, theProgramsPathCountsAndAFlagGivenTwiceCountsOnce) {
    EXPECT_EQ(launchModes({QStringLiteral("--hero-demo")}), Modes{LaunchMode::heroDemo});
    EXPECT_EQ(launchModes(line({"--ocr-ui-proof", "--ocr-ui-proof"})), Modes{LaunchMode::ocrUIProof});
}

TEST(LaunchMode, eachFlagStartsItsMode) {
    const std::pair<const char*, LaunchMode> all[] = {
        {"--self-test", LaunchMode::selfTest},
        {"--panel-preview", LaunchMode::panelPreview},
        {"--editor-proof", LaunchMode::editorProof},
        {"--crop-proof", LaunchMode::cropProof},
        {"--editor-ui-proof", LaunchMode::editorUIProof},
        {"--ocr-ui-proof", LaunchMode::ocrUIProof},
        {"--hero-demo", LaunchMode::heroDemo},
        {"--blur-demo", LaunchMode::blurDemo},
        {"--crop-demo", LaunchMode::cropDemo},
    };
    for (const auto& [text, mode] : all) {
        EXPECT_EQ(launchModes(line({text})), Modes{mode}) << text;
        EXPECT_EQ(flag(mode), QLatin1String(text));
    }
}
