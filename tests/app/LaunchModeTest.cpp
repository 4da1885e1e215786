#include "app/LaunchMode.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace app;

namespace {
QStringList line(std::initializer_list<const char*> arguments) {
    QStringList list{QStringLiteral("/usr/bin/marrowfin")};
    for (const char* argument : arguments)
        list << QLatin1String(argument);
    return list;
}
} // namespace

TEST(LaunchMode, noFlagIsTheNormalApplication) {
    EXPECT_EQ(launchMode(line({})), std::nullopt);
    EXPECT_EQ(launchMode(line({"--verbose", "file.png"})), std::nullopt);
}

TEST(LaunchMode, theFixedOrderDecidesNotTheCommandLine) {
    EXPECT_EQ(launchMode(line({"--crop-demo", "--self-test"})), LaunchMode::selfTest);
    EXPECT_EQ(launchMode(line({"--self-test", "--crop-demo"})), LaunchMode::selfTest);
    EXPECT_EQ(launchMode(line({"--crop-demo", "--blur-demo", "--hero-demo"})), LaunchMode::heroDemo);
}

TEST(LaunchMode, onlyAnExactElementIsAMatch) {
    EXPECT_EQ(launchMode(line({"--self-test=1"})), std::nullopt);
    EXPECT_EQ(launchMode(line({"x--self-test"})), std::nullopt);
    EXPECT_EQ(launchMode(line({"--self"})), std::nullopt);
    EXPECT_EQ(launchMode(line({"--Self-Test"})), std::nullopt);
}

TEST(LaunchMode, theProgramsPathCountsAndAFlagGivenTwiceCountsOnce) {
    EXPECT_EQ(launchMode({QStringLiteral("--hero-demo")}), LaunchMode::heroDemo);
    EXPECT_EQ(launchMode(line({"--ocr-ui-proof", "--ocr-ui-proof"})), LaunchMode::ocrUIProof);
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
        EXPECT_EQ(launchMode(line({text})), mode) << text;
        EXPECT_EQ(flag(mode), QLatin1String(text));
    }
}
