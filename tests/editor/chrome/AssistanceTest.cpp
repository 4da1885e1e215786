// What assistive technology does to the chrome, by the interfaces that it uses.
#include "RootFixture.h"

#include <QAccessible>

namespace marrowfin::editor {

using namespace annotation;

namespace {

class ByAssistance : public RootFixture {
protected:
    QAbstractButton* named(const QString& name) {
        for (auto* button : root->findChildren<QAbstractButton*>())
            if (button->accessibleName() == name)
                return button;
        ADD_FAILURE() << "no control is called " << qPrintable(name);
        return nullptr;
    }
    // Its first action, as a screen reader's press.
    void press(const QString& name) {
        QAccessibleActionInterface* actions =
            QAccessible::queryAccessibleInterface(named(name))->actionInterface();
        actions->doAction(actions->actionNames().value(0));
    }
    bool isChecked(const QString& name) {
        return QAccessible::queryAccessibleInterface(named(name))->state().checked;
    }
};

} // namespace

TEST_F(ByAssistance, PressingAToolChoosesItAndItAlone) {
    press(QStringLiteral("Ellipse"));
    QCoreApplication::processEvents();
    EXPECT_EQ(tools().currentTool(), ToolType::ellipse);
    EXPECT_TRUE(isChecked(QStringLiteral("Ellipse")));
    EXPECT_FALSE(isChecked(QStringLiteral("Arrow")));
}

TEST_F(ByAssistance, PressingTheChosenOneLeavesItChosen) {
    press(QStringLiteral("Arrow"));
    press(QStringLiteral("Red"));
    QCoreApplication::processEvents();
    EXPECT_EQ(tools().currentTool(), ToolType::arrow);
    EXPECT_TRUE(isChecked(QStringLiteral("Arrow")));
    EXPECT_TRUE(isChecked(QStringLiteral("Red")));
}

TEST_F(ByAssistance, SwatchWidthAndAspectAreChosenToo) {
    press(QStringLiteral("Blue"));
    press(QStringLiteral("Heavy — 8 pt"));
    press(QStringLiteral("16:9"));
    QCoreApplication::processEvents();
    EXPECT_EQ(tools().strokeWidth(), 8);
    EXPECT_EQ(tools().cropAspect(), CropAspect::wide);
    EXPECT_TRUE(isChecked(QStringLiteral("Blue")));
    EXPECT_FALSE(isChecked(QStringLiteral("Red")));
    EXPECT_FALSE(isChecked(QStringLiteral("Regular — 3 pt")));
}

TEST_F(ByAssistance, EveryControlHasANameOfItsOwn) {
    QStringList names;
    for (auto* button : root->findChildren<QAbstractButton*>())
        names << button->accessibleName();
    EXPECT_EQ(names.removeDuplicates(), 0);
    EXPECT_FALSE(names.contains(QString()));
}

} // namespace marrowfin::editor
