// Nothing that the editor asks or lets a person type runs an event loop of its own: captures, cards and other
// editors go on meanwhile.
#include "RootFixture.h"

#include "support/Input.h"
#include "support/LoopWatch.h"

#include <QColorDialog>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>

namespace marrowfin::editor {

using namespace annotation;
namespace {

class NestedLoop : public RootFixture {
protected:
    NestedLoop() {
        qputenv("XDG_CONFIG_HOME", desktop.folders.configuration().toLocal8Bit());
        QDir().mkpath(*desktop.folders.pictures());
        root->onSave = [this](const QString& path) { saved.append(path); };
    }
    // Until the watch has had its turn.
    static void pass() {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }
    void beginText() {
        tools().setCurrentTool(ToolType::text);
        clickImage({200, 100});
        ASSERT_NE(canvas().textEditor(), nullptr);
    }
    void saveAs(const QString& name) {
        root->savePressed();
        auto* field = root->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(field, nullptr);
        field->setText(name);
        QTest::keyClick(field, Qt::Key_Return);
    }

    QStringList saved;
    testsupport::LoopWatch watch;
};

} // namespace

TEST_F(NestedLoop, TheWatchNoticesOne) {
    QDialog asked;
    asked.exec();
    EXPECT_EQ(watch.nested(), 1);
    const testsupport::LoopWatch another;
    QMenu menu;
    menu.addAction(QStringLiteral("a row"));
    menu.exec();
    EXPECT_EQ(another.nested(), 1);
}

TEST_F(NestedLoop, NoneFromTheBeginningOfAnEditOfTextToItsEnd) {
    beginText();
    for (const char* letters : {"two ", "\r", "lines"}) {
        type(letters);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        pass();
    }
    QContextMenuEvent menu(QContextMenuEvent::Mouse, {2, 2},
                           canvas().textEditor()->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(canvas().textEditor(), &menu);
    pass();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(watch.nested(), 0);
    canvas().commitTextEdit();
    EXPECT_EQ(document().annotations().size(), 1);
}

TEST_F(NestedLoop, NoneWhileTheSaveDialogAsksNorWhenItAsksWhetherToReplace) {
    const QString name = QStringLiteral("mine.png");
    saveAs(name);
    ASSERT_TRUE(fake::waitUntil([&] { return saved.size() == 1; }));
    pass();
    saveAs(name);
    pass();
    auto* question = root->findChild<QMessageBox*>(QStringLiteral("replace"));
    ASSERT_NE(question, nullptr);
    question->buttons().constFirst()->click();
    pass();
    EXPECT_EQ(watch.nested(), 0);
    EXPECT_TRUE(fake::waitUntil([&] { return saved.size() == 2; }));
}

TEST_F(NestedLoop, NoneWhileTheColourPickerIsUp) {
    press(controls().customColorButton);
    auto* picker = testsupport::onlyTopLevel<QColorDialog>();
    ASSERT_NE(picker, nullptr);
    picker->setCurrentColor(QColor(12, 34, 56));
    pass();
    EXPECT_EQ(tools().strokeColor(), QColor(12, 34, 56));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(watch.nested(), 0);
}

} // namespace marrowfin::editor
