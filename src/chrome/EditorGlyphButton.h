// A tool or a command of the editor as a symbol. Points. Main thread.
#pragma once

#include "chrome/EditorButton.h"
#include "chrome/SymbolPicture.h"

namespace marrowfin::chrome {

class EditorGlyphButton : public EditorButton {
    Q_OBJECT
public:
    EditorGlyphButton(const QString& symbol, const QString& toolTip, double pointSize,
                      QWidget* parent = nullptr);

    // The chosen tool. Its owner sets it; a press only clicks.
    void setSelectedTool(bool selected) { setChosen(selected); }
    bool isSelectedTool() const { return isChecked(); }

protected:
    QColor wantedBackground() const override;
    void paintContent(QPainter& painter) override;

private:
    SymbolPicture picture;
};

} // namespace marrowfin::chrome
