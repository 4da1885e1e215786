// A one-point line between controls of the editor's chrome. Main thread.
#pragma once

#include <QWidget>

namespace marrowfin::editor {

class EditorSeparator : public QWidget {
    Q_OBJECT
public:
    explicit EditorSeparator(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace marrowfin::editor
