// Takes the keyboard of an overlay, for Escape. Ignores clicks. Main thread; a child of the overlay's window.
#pragma once

#include <QKeyEvent>
#include <QWidget>
#include <functional>

namespace marrowfin::capture {

class KeyCaptureView : public QWidget {
    Q_OBJECT
public:
    explicit KeyCaptureView(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::StrongFocus); }

    std::function<void()> onEscape;

protected:
    // The focus doesn't show: nothing of the screen is painted again for it.
    void focusInEvent(QFocusEvent*) override {}
    void focusOutEvent(QFocusEvent*) override {}
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && onEscape)
            onEscape();
        else
            QWidget::keyPressEvent(event);
    }
};

} // namespace marrowfin::capture
