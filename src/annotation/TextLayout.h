// The one layout of ink text: what is measured, what is painted and where the caret stands. Image points
// relative to the left end of the first line's baseline, y down. Positions are UTF-16 offsets into the whole
// text. GUI thread.
#pragma once

#include "annotation/FontMetrics.h"

#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <vector>

class QPainter;

namespace marrowfin::annotation {

class TextLayout {
public:
    TextLayout(const QString& text, double fontSize);
    ~TextLayout();
    TextLayout(TextLayout&&) noexcept;
    TextLayout& operator=(TextLayout&&) noexcept;

    const LineMetrics& metrics() const { return lineMetrics; }
    int lineCount() const;
    // All lines, from the top of the first; the width is that of the widest.
    QRectF rect() const;

    // Paints with the left end of the first baseline at this point. Lines that can't be seen cost nothing. A
    // painter that stretches type beyond recognition, or to more than 12800 pixels, gets none.
    void draw(QPainter& painter, const QPointF& baseline, const QColor& color) const;

    // The caret before this position: a rectangle without width, as high as its line.
    QRectF caretRect(int position) const;
    // The position whose caret is nearest.
    int positionAt(const QPointF& point) const;
    // The areas of the text between two positions, for selections and compositions: one or more to a line.
    QList<QRectF> rangeRects(int from, int to) const;
    // The positions one step away, over whole characters as a reader counts them and over line ends.
    int positionBefore(int position) const;
    int positionAfter(int position) const;

private:
    struct Line;
    void drawLines(QPainter& painter) const;
    const Line& lineOf(int position) const;
    double topOf(const Line& line) const;

    LineMetrics lineMetrics;
    double scale = 0;        // of what the lines are laid out in
    std::vector<Line> lines; // never empty
};

// How many lines the text has; an empty text has one.
int textLineCount(const QString& text);

} // namespace marrowfin::annotation
