// A round button of the card's bar: a symbol, a ring of light under the pointer, and a check mark for a
// moment once it has done its work. Points. Main thread.
#pragma once

#include "base/SystemColors.h"
#include "chrome/Delay.h"
#include "chrome/LayerHost.h"
#include "chrome/SymbolPicture.h"

#include <QAbstractButton>

namespace marrowfin::panel {

class GlassActionButton : public QAbstractButton {
    Q_OBJECT
public:
    static constexpr double side = 26;

    // The title is the tool tip and what a screen reader says.
    GlassActionButton(const QString& symbol, const QString& title, QWidget* parent);

    void setColorScheme(ColorScheme scheme);
    // Shows the check mark, then the symbol again.
    void confirm();
    QString shownSymbol() const { return (confirmation.isRunning() ? checkmark : symbol).name(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void showRing(bool shown);
    QColor ringColor() const;

    chrome::SymbolPicture symbol;
    chrome::SymbolPicture checkmark;
    QString title;
    ColorScheme scheme = ColorScheme::Light;
    bool hovering = false;
    chrome::LayerHost host;
    chrome::Layer& ring;
    chrome::Delay confirmation;
};

} // namespace marrowfin::panel
