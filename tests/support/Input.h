// Finds widgets and synthesises events as a person's mouse and keyboard would send them. Tests of ring 3.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace marrowfin::testsupport {

// The visible top-level window of this class; null when there is none or several.
template <class T>
T* onlyTopLevel() {
    T* found = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* candidate = qobject_cast<T*>(window);
        if (!candidate || !candidate->isVisible())
            continue;
        if (found)
            return nullptr;
        found = candidate;
    }
    return found;
}

// All children of this class in visible top-level windows.
template <class T>
QList<T*> childrenOfTopLevels() {
    QList<T*> found;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            for (QWidget* child : window->findChildren<QWidget*>())
                if (auto* candidate = dynamic_cast<T*>(child))
                    found << candidate;
    return found;
}

template <class T>
T* onlyChildOfTopLevels() {
    const QList<T*> found = childrenOfTopLevels<T>();
    return found.size() == 1 ? found.first() : nullptr;
}

inline QAbstractButton* buttonNamed(QWidget& window, const QString& text) {
    for (auto* button : window.findChildren<QAbstractButton*>())
        if (button->text() == text)
            return button;
    return nullptr;
}

inline void sendMouse(QWidget& widget, QEvent::Type type, QPointF at, Qt::MouseButton button,
                      Qt::MouseButtons held) {
    QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}
inline void pressMouse(QWidget& widget, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
    sendMouse(widget, QEvent::MouseButtonPress, at, button, button);
}
inline void moveMouse(QWidget& widget, QPointF to) {
    sendMouse(widget, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
}
inline void releaseMouse(QWidget& widget, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
    sendMouse(widget, QEvent::MouseButtonRelease, at, button, Qt::NoButton);
}
inline void clickMouse(QWidget& widget, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
    pressMouse(widget, at, button);
    releaseMouse(widget, at, button);
}
inline void dragMouse(QWidget& widget, QPointF from, QPointF to) {
    pressMouse(widget, from);
    moveMouse(widget, (from + to) / 2);
    moveMouse(widget, to);
    releaseMouse(widget, to);
}

inline void pressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                     const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(&widget, &release);
}

} // namespace marrowfin::testsupport
