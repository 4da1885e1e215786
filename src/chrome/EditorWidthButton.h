// A stroke width of the editor, shown as a dot. Points. Main thread.
#pragma once

#include "chrome/EditorButton.h"

namespace marrowfin::chrome {

class EditorWidthButton : public EditorButton {
    Q_OBJECT
public:
    EditorWidthButton(const QString& toolTip, double value, double dotDiameter, QWidget* parent = nullptr);

    double value() const { return strokeWidth; }
    double dotDiameter() const { return diameter; }
    void setCurrent(bool current) { setChosen(current); }
    bool isCurrent() const { return isChecked(); }

protected:
    void paintContent(QPainter& painter) override;

private:
    double strokeWidth;
    double diameter;
};

} // namespace marrowfin::chrome
