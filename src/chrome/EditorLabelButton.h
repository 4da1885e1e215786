// A command of the editor as a word, with a symbol before it or not. Points. Main thread.
#pragma once

#include "chrome/EditorButton.h"
#include "chrome/SymbolPicture.h"

#include <optional>

namespace marrowfin::chrome {

enum class Prominence { Plain, Prominent };

class EditorLabelButton : public EditorButton {
    Q_OBJECT
public:
    // No symbol and no tool tip when these are null strings.
    EditorLabelButton(const QString& title, const QString& symbol, Prominence prominence,
                      const QString& toolTip = {}, QWidget* parent = nullptr);

    bool isProminent() const { return prominence == Prominence::Prominent; }
    // As wide as its title and symbol need and this high, with round ends.
    void fitToHeight(double height);
    QSize sizeHint() const override;

protected:
    QColor wantedBackground() const override;
    void paintContent(QPainter& painter) override;

private:
    Prominence prominence;
    std::optional<SymbolPicture> picture;
};

} // namespace marrowfin::chrome
