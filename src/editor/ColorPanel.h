// The colour picker that all editors share: beside the editors, without alpha and without buttons. It tells
// every change to the editor that opened it last. Main thread.
#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

class QColorDialog;

namespace marrowfin::editor {

class ColorPanel : public QObject {
    Q_OBJECT
public:
    ColorPanel();
    ~ColorPanel() override;

    static ColorPanel& shared();

    // Shows this colour and the picker, in front but without taking the keyboard. `changed` is called as long
    // as the view exists and nobody else has opened the picker. The picker leaves when the view does.
    void show(const QColor& color, QWidget& view, std::function<void(const QColor&)> changed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setTarget(QWidget& view);

    std::unique_ptr<QColorDialog> picker;
    QPointer<QWidget> target;
    std::function<void(const QColor&)> colorDidChange;
};

} // namespace marrowfin::editor
