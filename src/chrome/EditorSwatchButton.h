// A colour of the editor's palette. Points. Main thread.
#pragma once

#include "chrome/EditorButton.h"

namespace marrowfin::chrome {

class EditorSwatchButton : public EditorButton {
    Q_OBJECT
public:
    EditorSwatchButton(const QColor& color, const QString& toolTip, QWidget* parent = nullptr);

    QColor swatchColor() const { return swatch; }
    void setCurrent(bool current) { setChosen(current); }
    bool isCurrent() const { return isChecked(); }

protected:
    void paintContent(QPainter& painter) override;
    void paintFocusRing(QPainter& painter) const override;

private:
    QColor swatch;
};

} // namespace marrowfin::chrome
