// A symbol as it stands beside type: its ink as large as the type's, drawn once per colour and density.
// Points. Main thread.
#pragma once

#include "chrome/Symbols.h"

class QPainter;

namespace marrowfin::chrome {

class SymbolPicture {
public:
    SymbolPicture(const QString& name, double pointSize, SymbolWeight weight);

    const QString& name() const { return symbol; }
    // Of the square it stands in.
    double side() const { return square; }
    void paintCentered(QPainter& painter, const QPointF& center, const QColor& color);

private:
    QString symbol;
    double square;
    SymbolWeight weight;
    QImage image;
    QColor tint;
};

} // namespace marrowfin::chrome
