// Watches the left presses of a window while text is edited on its canvas, and hands them all on: a press on
// anything of that window but the canvas ends the edit. Owned by the canvas for the length of an edit. Main
// thread.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

namespace marrowfin::editor {

class TextClickMonitor : public QObject {
    Q_OBJECT
public:
    TextClickMonitor(QWidget* canvas, std::function<void()> pressedElsewhere);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> canvas;
    std::function<void()> pressedElsewhere;
};

} // namespace marrowfin::editor
