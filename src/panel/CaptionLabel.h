// One centred line: the facts in equal-width digits, the hint fainter behind them, cut off at the tail where
// it doesn't fit. Lets the mouse through to the card. Main thread.
#pragma once

#include "base/SystemColors.h"
#include "panel/CaptionText.h"

#include <QLabel>

namespace marrowfin::panel {

class CaptionLabel : public QLabel {
    Q_OBJECT
public:
    explicit CaptionLabel(QWidget* parent);

    void setCaption(const CaptionText& text);
    void setColorScheme(ColorScheme scheme);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CaptionText caption;
    ColorScheme scheme = ColorScheme::Light;
};

} // namespace marrowfin::panel
