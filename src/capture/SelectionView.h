// Tracks one drag over a dimmed screen and draws the dim, the border and the size label. All rectangles are
// in view coordinates with y up, in points. Main thread; a child of the overlay's window.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QWidget>
#include <functional>
#include <optional>

namespace marrowfin::capture {

class SelectionView : public QWidget {
public:
    explicit SelectionView(QWidget* parent);

    // With the drag's rectangle, always of positive size.
    std::function<void(QRectF)> onComplete;
    // On Escape, or when the drag was too small.
    std::function<void()> onCancel;

    QRectF currentRect;
    bool isDragging = false;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    // The focus doesn't show: nothing of the screen is painted again for it.
    void focusInEvent(QFocusEvent*) override {}
    void focusOutEvent(QFocusEvent*) override {}

private:
    struct Label {
        QString text;
        QRectF textRect; // both y-down, widget coordinates
        QRectF rect;
    };
    QPointF viewPoint(const QMouseEvent& event) const;
    QRectF toWidget(const QRectF& rect) const;
    Label label() const;
    void drawSelection(QPainter& painter) const;
    void updateSelection(const QRectF& rect);
    QRegion drawnRegion() const;

    std::optional<QPointF> startPoint;
};

} // namespace marrowfin::capture
