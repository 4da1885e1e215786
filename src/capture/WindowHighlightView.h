// One window's clickable rectangle in the window selector. Widget coordinates, y down. Main thread; a child
// of the selector's overlay.
#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>

namespace marrowfin::capture {

class WindowHighlightView : public QWidget {
    Q_OBJECT
public:
    explicit WindowHighlightView(QWidget* parent);

    std::uint32_t windowID = 0;
    // On the release, here, of a press that landed here.
    std::function<void(std::uint32_t)> onSelect;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace marrowfin::capture
