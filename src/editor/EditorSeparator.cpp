#include "editor/EditorSeparator.h"

#include "base/SystemColors.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QPainter>

namespace marrowfin::editor {

EditorSeparator::EditorSeparator(QWidget* parent) : QWidget(parent) {
    connect(&platform::services().appearance, &platform::Appearance::changed, this,
            qOverload<>(&QWidget::update));
}

void EditorSeparator::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(
        rect(), systemColor(SystemColor::separator, platform::services().appearance.colorScheme()));
}

} // namespace marrowfin::editor
