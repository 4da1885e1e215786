// Tools, their letters, and what the editor's state does when one is chosen.
#include "annotation/ToolState.h"

#include "base/SystemColors.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace annotation;

TEST(ToolState, startsOnTheArrowInRed) {
    const ToolState state;
    EXPECT_EQ(state.currentTool(), ToolType::arrow);
    EXPECT_EQ(state.strokeColor(), systemColor(SystemColor::red, ColorScheme::Light));
    EXPECT_EQ(state.strokeWidth(), 3.0);
    EXPECT_EQ(state.fontSize(), 24.0);
    EXPECT_EQ(state.cropRect(), std::nullopt);
    EXPECT_EQ(state.cropAspect(), CropAspect::freeform);
}

TEST(ToolState, leavingTheCropToolDropsThePendingCropAndKeepsItsAspect) {
    ToolState state;
    state.setCurrentTool(ToolType::crop);
    state.toolDidChange(ToolType::arrow);
    state.setCropAspect(CropAspect::wide);
    state.setCropRect(QRectF(1, 2, 3, 4));
    state.setCurrentTool(ToolType::select);
    state.toolDidChange(ToolType::crop);
    EXPECT_EQ(state.cropRect(), std::nullopt);
    EXPECT_EQ(state.cropAspect(), CropAspect::wide);
}

TEST(ToolState, choosingTheCurrentToolAgainKeepsThePendingCrop) {
    ToolState state;
    state.setCurrentTool(ToolType::crop);
    state.setCropRect(QRectF(1, 2, 3, 4));
    state.setCurrentTool(ToolType::crop);
    state.toolDidChange(ToolType::crop);
    EXPECT_EQ(state.cropRect(), QRectF(1, 2, 3, 4));
}

TEST(ToolState, choosingAToolDoesAllThatTheChangeEntails) {
    ToolState state;
    state.choose(ToolType::crop);
    state.setCropRect(QRectF(1, 2, 3, 4));
    state.choose(ToolType::crop);
    EXPECT_EQ(state.cropRect(), QRectF(1, 2, 3, 4));
    state.choose(ToolType::pen);
    EXPECT_EQ(state.currentTool(), ToolType::pen);
    EXPECT_EQ(state.cropRect(), std::nullopt);
}

TEST(ToolState, aCropSetOutsideTheCropToolStays) {
    ToolState state;
    state.setCropRect(QRectF(1, 2, 3, 4));
    state.setCurrentTool(ToolType::pen);
    state.toolDidChange(ToolType::arrow);
    EXPECT_EQ(state.cropRect(), QRectF(1, 2, 3, 4));
}

TEST(ToolState, tellsOfEveryFieldAndOfTheToolByItself) {
    ToolState state;
    int changes = 0;
    QList<ToolType> tools;
    QObject::connect(&state, &ToolState::changed, [&] { ++changes; });
    QObject::connect(&state, &ToolState::currentToolSet, [&](ToolType tool) { tools.append(tool); });
    state.setStrokeColor(Qt::blue);
    state.setStrokeWidth(5);
    state.setFontSize(36);
    state.setCropRect(QRectF(0, 0, 5, 5));
    state.setCropAspect(CropAspect::square);
    EXPECT_EQ(changes, 5);
    EXPECT_TRUE(tools.isEmpty());
    state.setCurrentTool(ToolType::text);
    state.setCurrentTool(ToolType::text); // also ends an open text edit
    EXPECT_EQ(tools, (QList<ToolType>{ToolType::text, ToolType::text}));
    EXPECT_EQ(changes, 7);
}

TEST(ToolType, namesAndLettersInTheOrderOfThePalette) {
    QString letters;
    QStringList names;
    for (const ToolType tool : allToolTypes) {
        letters += keyboardLetter(tool);
        names += rawValue(tool);
        EXPECT_EQ(toolType(rawValue(tool)), tool);
        EXPECT_EQ(toolForLetter(QString(keyboardLetter(tool))), tool);
    }
    EXPECT_EQ(letters, QStringLiteral("vcrealphbtn"));
    EXPECT_EQ(names.join(u' '),
              QStringLiteral("select crop rectangle ellipse arrow line pen highlight blur text number"));
}

TEST(ToolType, lettersAreExactAndLowerCase) {
    EXPECT_EQ(toolForLetter(QStringLiteral("V")), std::nullopt);
    EXPECT_EQ(toolForLetter(QStringLiteral("vv")), std::nullopt);
    EXPECT_EQ(toolForLetter(QString()), std::nullopt);
    EXPECT_EQ(toolForLetter(QStringLiteral("z")), std::nullopt);
    EXPECT_EQ(toolType(QStringLiteral("Select")), std::nullopt);
}
