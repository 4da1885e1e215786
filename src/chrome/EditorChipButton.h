// One choice of several in the editor's crop bar, as a word. Points. Main thread.
#pragma once

#include "chrome/EditorButton.h"

namespace marrowfin::chrome {

class EditorChipButton : public EditorButton {
    Q_OBJECT
public:
    EditorChipButton(const QString& title, const QString& toolTip = {}, QWidget* parent = nullptr);

    void setCurrent(bool current) { setChosen(current); }
    bool isCurrent() const { return isChecked(); }
    // What the title needs, with no room around it.
    QSize sizeHint() const override;

protected:
    QColor wantedBackground() const override;
    void paintContent(QPainter& painter) override;
};

} // namespace marrowfin::chrome
