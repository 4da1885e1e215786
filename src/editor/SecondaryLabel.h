// A short read-out in the chrome: small digits of equal width in the secondary label colour, which follow the
// appearance. Main thread.
#pragma once

#include <QLabel>

namespace marrowfin::editor {

class SecondaryLabel : public QLabel {
    Q_OBJECT
public:
    explicit SecondaryLabel(QWidget* parent = nullptr);

    // Sets the text with its letters closer together where it is wider than the label.
    void setTextWithin(const QString& text);
};

} // namespace marrowfin::editor
