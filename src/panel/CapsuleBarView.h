// The bar of buttons that rises under the pointer. Beside its buttons the mouse goes to the card; while it
// isn't revealed, all of it. Points. Main thread.
#pragma once

#include "panel/GlassActionButton.h"

#include <QWidget>
#include <array>

namespace marrowfin::panel {

class CapsuleBarView : public QWidget {
    Q_OBJECT
public:
    static constexpr double barHeight = 34;
    // The bar for this many buttons.
    static double widthFor(int buttons);

    explicit CapsuleBarView(QWidget* parent);

    // To the right of those before it.
    GlassActionButton& addButton(const QString& symbol, const QString& title);
    const std::vector<GlassActionButton*>& buttons() const { return row; }

    bool isRevealed() const { return revealed; }
    void setRevealed(bool value);
    void setColorScheme(ColorScheme scheme);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    chrome::LayerHost host;
    chrome::Layer& plate;
    std::vector<GlassActionButton*> row;
    bool revealed = false;
};

} // namespace marrowfin::panel
