#include "panel/CapsuleBarView.h"

#include "chrome/Place.h"

#include <QPaintEvent>
#include <QPainter>

namespace marrowfin::panel {

namespace {
constexpr double endInset = 12;
constexpr double buttonGap = 8;
constexpr double buttonStep = GlassActionButton::side + buttonGap;
} // namespace

double CapsuleBarView::widthFor(int buttons) {
    return buttons * GlassActionButton::side + (buttons - 1) * buttonGap + 2 * endInset;
}

CapsuleBarView::CapsuleBarView(QWidget* parent) : QWidget(parent), host(*this), plate(host.root().add()) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(QStringLiteral("Capture actions"));
    plate.setCornerRadius(barHeight / 2);
}

GlassActionButton& CapsuleBarView::addButton(const QString& symbol, const QString& title) {
    auto* button = new GlassActionButton(symbol, title, this);
    row.push_back(button);
    const int count = static_cast<int>(row.size());
    const QSizeF size(widthFor(count), barHeight);
    resize(size.toSize());
    host.setSize(size);
    plate.setFrame({QPointF(0, 0), size});
    for (int index = 0; index < count; ++index)
        chrome::place(*row[index], {endInset + index * buttonStep, (barHeight - GlassActionButton::side) / 2,
                                    GlassActionButton::side, GlassActionButton::side});
    return *button;
}

void CapsuleBarView::setRevealed(bool value) {
    revealed = value;
    setAttribute(Qt::WA_TransparentForMouseEvents, !revealed);
}

void CapsuleBarView::setColorScheme(ColorScheme scheme) {
    // The bar stands on the card's plate: a touch lighter or darker than that, or nobody would see it.
    const bool dark = scheme == ColorScheme::Dark;
    plate.setValue(chrome::Property::BackgroundColor, dark ? QColor(255, 255, 255, 20) : QColor(0, 0, 0, 13));
    plate.setBorder({1, QColor(255, 255, 255, 38)});
    for (GlassActionButton* button : row)
        button->setColorScheme(scheme);
}

void CapsuleBarView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    host.paint(painter, event->rect());
}

} // namespace marrowfin::panel
