// Takes the keyboard of an overlay, for Escape. Ignores clicks.
#pragma once

#include <QKeyEvent>
#include <QWidget>
#include <functional>

namespace marrowfin {

class KeyCaptureView : public QWidget {
    Q_OBJECT
public:
    explicit KeyCaptureView(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::StrongFocus); }

    std::function<void()> onEscape;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && onEscape)
            onEscape();
        else
            QWidget::keyPressEvent(event);
    }
};

} // namespace marrowfin
