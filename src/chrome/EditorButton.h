// What the five buttons of the editor's chrome have in common: a background that lights up under the pointer,
// the appearance, the alpha that the caller sets, and the ring around the one that has the keyboard. A press
// doesn't take the keyboard; Tab does. Points. Main thread.
#pragma once

#include "base/SystemColors.h"
#include "chrome/LayerHost.h"

#include <QAbstractButton>

namespace marrowfin::chrome {

class EditorButton : public QAbstractButton {
    Q_OBJECT
public:
    // Of the whole button. How far a disabled one is dimmed is the caller's choice.
    void setAlphaValue(double alpha);
    double alphaValue() const { return alpha; }
    // As shown now.
    QColor backgroundColor() const;

protected:
    enum class Hover { Ignored, AtOnce, Animated };
    enum class Change { AtOnce, Animated };
    // The name is what a screen reader says.
    EditorButton(Hover hover, const QString& name, const QString& toolTip, QWidget* parent);

    void setCornerRadius(double radius, CornerCurve curve = CornerCurve::Continuous);
    void restyle(Change change);
    // A button that can be the chosen one of several; pressing it doesn't choose it, its owner does.
    void setChosen(bool chosen);

    bool isHovering() const { return hovering; }
    ColorScheme colorScheme() const { return scheme; }
    QColor color(SystemColor name) const { return systemColor(name, scheme); }
    // labelColor at this alpha.
    QColor labelColor(double alpha) const;

    virtual QColor wantedBackground() const { return Qt::transparent; }
    // Above the background.
    virtual void paintContent(QPainter& painter) = 0;
    // Above everything, on the button that has the keyboard.
    virtual void paintFocusRing(QPainter& painter) const;

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void nextCheckState() override {}

private:
    void setHovering(bool value, Change change);
    void wasToggled();
    void paintAll(QPainter& painter, const QRect& dirty);

    Hover hover;
    ColorScheme scheme;
    bool hovering = false;
    bool choosing = false;
    double alpha = 1;
    double radius = 0;
    LayerHost host;
    Layer& background;
};

} // namespace marrowfin::chrome
