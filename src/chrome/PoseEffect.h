// Alpha and displacement of a widget with everything in it, for as long as it isn't at rest: at its own place
// and opaque it paints itself, at alpha 0 nothing is painted. Points, y up. Owned by its widget. Main thread.
#pragma once

#include <QGraphicsEffect>

class QWidget;

namespace marrowfin::chrome {

struct Pose {
    QPointF offset;
    double opacity = 1;
    friend bool operator==(const Pose&, const Pose&) = default;
};

class PoseEffect : public QGraphicsEffect {
    Q_OBJECT
public:
    // Becomes the widget's effect. Reach: the farthest that an offset goes, either way.
    PoseEffect(QWidget& widget, double reach);

    void setPose(const Pose& pose);
    const Pose& pose() const { return current; }

    QRectF boundingRectFor(const QRectF& rect) const override;

protected:
    void draw(QPainter* painter) override;

private:
    Pose current;
    double reach;
};

} // namespace marrowfin::chrome
