// The read-out at the editor's bottom left: the image's size and how much ink is on it. It never takes the
// mouse; the canvas under it does. Points, y down. Owned by the editor's root view. Main thread.
#pragma once

#include <QWidget>

class QLabel;

namespace marrowfin::editor {

class StatusChipView : public QWidget {
    Q_OBJECT
public:
    explicit StatusChipView(QWidget* parent = nullptr);

    // Takes the size that the text needs.
    void setText(const QString& text);
    QString text() const;
    const QLabel& textLabel() const { return *label; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* label;
};

} // namespace marrowfin::editor
