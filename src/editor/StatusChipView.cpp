#include "editor/StatusChipView.h"

#include "base/ColorAlpha.h"
#include "base/SystemColors.h"
#include "chrome/Paths.h"
#include "editor/SecondaryLabel.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QPainter>

namespace marrowfin::editor {

namespace {
constexpr double radius = 6;
constexpr double plateAlpha = 0.05;
constexpr QPoint labelOrigin(8, 4);
} // namespace

StatusChipView::StatusChipView(QWidget* parent) : QWidget(parent), label(new SecondaryLabel(this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(QStringLiteral("Image"));
    label->move(labelOrigin);
    connect(&platform::services().appearance, &platform::Appearance::changed, this,
            qOverload<>(&QWidget::update));
}

void StatusChipView::setText(const QString& text) {
    label->setText(text);
    label->adjustSize();
    resize(label->width() + 2 * labelOrigin.x(), label->height() + 2 * labelOrigin.y());
}

QString StatusChipView::text() const {
    return label->text();
}

void StatusChipView::paintEvent(QPaintEvent*) {
    const QColor ink = systemColor(SystemColor::label, platform::services().appearance.colorScheme());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(chrome::roundedRect(QRectF(rect()), radius, chrome::CornerCurve::Continuous),
                     withAlpha(ink, plateAlpha));
}

} // namespace marrowfin::editor
