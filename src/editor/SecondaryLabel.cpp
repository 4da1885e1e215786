#include "editor/SecondaryLabel.h"

#include "base/SystemColors.h"
#include "base/SystemFonts.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

namespace marrowfin::editor {

namespace {
constexpr double pointSize = 11;
}

SecondaryLabel::SecondaryLabel(QWidget* parent) : QLabel(parent) {
    setFont(monospacedDigitSystemFont(pointSize, QFont::Medium));
    setTextFormat(Qt::PlainText);
    const auto restyle = [this] {
        QPalette colors = palette();
        colors.setColor(QPalette::WindowText, systemColor(SystemColor::secondaryLabel,
                                                          platform::services().appearance.colorScheme()));
        setPalette(colors);
    };
    restyle();
    connect(&platform::services().appearance, &platform::Appearance::changed, this, restyle);
}

void SecondaryLabel::setTextWithin(const QString& text) {
    QFont fitting = monospacedDigitSystemFont(pointSize, QFont::Medium);
    const double wanted = QFontMetricsF(fitting).horizontalAdvance(text);
    if (wanted > width())
        fitting.setLetterSpacing(QFont::AbsoluteSpacing,
                                 (width() - wanted) / static_cast<double>(text.size()));
    if (fitting != font())
        setFont(fitting);
    setText(text);
}

} // namespace marrowfin::editor
