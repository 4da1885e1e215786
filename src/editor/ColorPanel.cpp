#include "editor/ColorPanel.h"

#include "base/Shared.h"

#include <QColorDialog>
#include <QEvent>
#include <QSignalBlocker>
#include <QWindow>

namespace marrowfin::editor {

ColorPanel::ColorPanel() : picker(std::make_unique<QColorDialog>()) {
    picker->setObjectName(QStringLiteral("colors"));
    picker->setWindowTitle(QStringLiteral("Colors"));
    // The desktop's own one has buttons, and reports a choice only when it is closed.
    picker->setOptions(QColorDialog::NoButtons | QColorDialog::DontUseNativeDialog);
    picker->setAttribute(Qt::WA_ShowWithoutActivating);
    connect(picker.get(), &QColorDialog::currentColorChanged, this, [this](const QColor& color) {
        if (target && colorDidChange)
            colorDidChange(color);
    });
}

ColorPanel::~ColorPanel() = default;

ColorPanel& ColorPanel::shared() {
    return Shared<ColorPanel>::instance();
}

void ColorPanel::show(const QColor& color, QWidget& view, std::function<void(const QColor&)> changed) {
    {
        // Neither the editor it had nor the one it gets has chosen this colour.
        const QSignalBlocker quiet(*picker);
        QColor opaque = color.toRgb();
        opaque.setAlpha(255);
        picker->setCurrentColor(opaque);
    }
    colorDidChange = std::move(changed);
    if (target != &view)
        setTarget(view);
    picker->show();
    picker->raise();
}

void ColorPanel::setTarget(QWidget& view) {
    if (target)
        target->removeEventFilter(this);
    target = &view;
    view.installEventFilter(this);
    // A window stays above another only from when it is shown.
    picker->hide();
    picker->winId();
    picker->windowHandle()->setTransientParent(view.window()->windowHandle());
}

bool ColorPanel::eventFilter(QObject* watched, QEvent* event) {
    // Closed, and not only minimised.
    if (watched == target && event->type() == QEvent::Hide && !event->spontaneous())
        picker->hide();
    return false;
}

} // namespace marrowfin::editor
