#include "app/ApplicationStyle.h"

#include "base/SystemFonts.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QApplication>
#include <QStyleFactory>

namespace marrowfin::app {

namespace {

// The colour as it looks on this ground: menus and buttons of the toolkit want opaque text.
QColor over(const QColor& ground, const QColor& color) {
    const float alpha = color.alphaF();
    const auto mix = [alpha](float above, float below) { return above * alpha + below * (1 - alpha); };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

} // namespace

QPalette applicationPalette(ColorScheme scheme) {
    const bool dark = scheme == ColorScheme::Dark;
    const QColor window = systemColor(SystemColor::windowBackground, scheme);
    const QColor base = dark ? QColor(30, 30, 30) : QColor(255, 255, 255);
    const QColor label = over(window, systemColor(SystemColor::label, scheme));
    const QColor dimmed = over(window, systemColor(SystemColor::secondaryLabel, scheme));
    QPalette palette(label, dark ? QColor(64, 64, 64) : QColor(240, 240, 240), window.lighter(),
                     window.darker(), window.darker(120), label, label, base, window);
    palette.setColor(QPalette::Highlight, systemColor(SystemColor::accentGround, scheme));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, dimmed);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, label);
    palette.setColor(QPalette::AlternateBase, dark ? QColor(36, 36, 36) : QColor(246, 246, 246));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dimmed);
    return palette;
}

void installApplicationStyle() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(systemFont(13));
    platform::Appearance& appearance = platform::services().appearance;
    const auto apply = [&appearance] {
        QApplication::setPalette(applicationPalette(appearance.colorScheme()));
    };
    apply();
    QObject::connect(&appearance, &platform::Appearance::changed, qApp, apply);
}

} // namespace marrowfin::app
