// The pictures on buttons and menu rows: one own-drawn SVG per name (resources/symbols/), painted in one
// colour at any size. An unknown name is a broken invariant. GUI thread.
#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QString>
#include <QStringList>

namespace marrowfin::chrome {

enum class SymbolWeight { Regular, Medium, Semibold };

// Every name that can be drawn.
QStringList symbolNames();

// A picture of the symbol in a square of pointSize points, at this density (device pixel ratio set).
QImage symbolImage(const QString& name, double pointSize, const QColor& color, double devicePixelRatio = 1,
                   SymbolWeight weight = SymbolWeight::Regular);

// An icon that draws itself at whatever size and density it is asked for.
QIcon symbolIcon(const QString& name, const QColor& color, SymbolWeight weight = SymbolWeight::Regular);

} // namespace marrowfin::chrome
