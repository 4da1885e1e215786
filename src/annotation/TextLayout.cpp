#include "annotation/TextLayout.h"

#include "annotation/DeviceSpace.h"
#include "base/Geometry.h"

#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <memory>

namespace marrowfin::annotation {

namespace {

// Wider than any line, within the layout engine's fixed-point range.
constexpr double unlimitedWidth = 1 << 24;

// Within a line only "\n" ends it. The other separators take a space's place, so that positions stay.
QString shownLine(QStringView line) {
    QString shown = line.toString();
    for (QChar& character : shown)
        if (character == QChar::LineSeparator || character == QChar::ParagraphSeparator ||
            character == QChar::CarriageReturn)
            character = QChar::Space;
    return shown;
}

QTextOption singleLine() {
    // The left end of a line is at x 0 whichever way it reads, and spaces at its end count.
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    option.setUseDesignMetrics(true);
    return option;
}

std::unique_ptr<QTextLayout> makeLayout(QStringView line, const QFont& font) {
    auto layout = std::make_unique<QTextLayout>(shownLine(line), font);
    layout->setTextOption(singleLine());
    layout->beginLayout();
    layout->createLine().setLineWidth(unlimitedWidth);
    layout->endLayout();
    return layout;
}

// The toolkit's glyph renderer fails on glyphs that are stretched out of all shape, or larger than any
// screen.
bool canRenderGlyphs(const QTransform& toDevice) {
    const double across = std::hypot(toDevice.m11(), toDevice.m12());
    const double down = std::hypot(toDevice.m21(), toDevice.m22());
    const auto [smaller, larger] = std::minmax(across, down);
    constexpr double largestScale = 100;
    constexpr double longestStretch = 8;
    return larger <= largestScale && larger <= longestStretch * smaller;
}

} // namespace

struct TextLayout::Line {
    int index = 0;
    int start = 0; // of its first character
    int length = 0;
    std::unique_ptr<QTextLayout> layout; // none for an empty line
    QTextLine shaped;                    // the layout's only line
};

TextLayout::TextLayout(const QString& text, double fontSize) : lineMetrics(textLineMetrics(fontSize)) {
    const bool drawable = isTextSize(fontSize);
    const ExactFont font = drawable ? textFont(fontSize) : ExactFont();
    scale = font.scale;
    int start = 0;
    for (const QStringView part : QStringView(text).split(u'\n')) {
        Line& line = lines.emplace_back();
        line.index = lineCount() - 1;
        line.start = start;
        line.length = static_cast<int>(part.size());
        if (drawable && !part.isEmpty()) {
            line.layout = makeLayout(part, font.font);
            line.shaped = line.layout->lineAt(0);
        }
        start += line.length + 1;
    }
}

TextLayout::~TextLayout() = default;
TextLayout::TextLayout(TextLayout&&) noexcept = default;
TextLayout& TextLayout::operator=(TextLayout&&) noexcept = default;

int TextLayout::lineCount() const {
    return static_cast<int>(lines.size());
}

QRectF TextLayout::rect() const {
    double width = 0;
    for (const Line& line : lines)
        if (line.layout)
            width = std::max(width, line.shaped.horizontalAdvance());
    return {0, -lineMetrics.baseline, width * scale, lineMetrics.height * lineCount()};
}

void TextLayout::draw(QPainter& painter, const QPointF& baseline, const QColor& color) const {
    if (!isPaintable(QRectF(baseline, QSizeF(0, 0))))
        return;
    painter.save();
    painter.setPen(color);
    painter.translate(baseline);
    painter.scale(scale, scale);
    if (canRenderGlyphs(painter.deviceTransform()))
        drawLines(painter);
    painter.restore();
}

void TextLayout::drawLines(QPainter& painter) const {
    const QRectF visible = paintableRect(painter);
    const double lineHeight = lineMetrics.height / scale;
    for (const Line& line : lines) {
        const double y = lineHeight * line.index;
        // Accents and glyphs of other scripts may leave their line's box, hardly by more than a line.
        if (!line.layout || y + 2 * lineHeight < minY(visible) || y - 2 * lineHeight > maxY(visible))
            continue;
        // The layout places a line by its top, which glyphs of other fonts push up; the baseline counts here.
        line.layout->draw(&painter, {0, y - line.shaped.ascent()});
    }
}

double TextLayout::topOf(const Line& line) const {
    return lineMetrics.height * line.index - lineMetrics.baseline;
}

const TextLayout::Line& TextLayout::lineOf(int position) const {
    const auto after = std::upper_bound(lines.begin(), lines.end(), position,
                                        [](int wanted, const Line& line) { return wanted < line.start; });
    return after == lines.begin() ? lines.front() : *std::prev(after);
}

QRectF TextLayout::caretRect(int position) const {
    const Line& line = lineOf(position);
    const int within = std::clamp(position - line.start, 0, line.length);
    const double x = line.layout ? line.shaped.cursorToX(within) * scale : 0;
    return {x, topOf(line), 0, lineMetrics.height};
}

int TextLayout::positionAt(const QPointF& point) const {
    const double row = (point.y() + lineMetrics.baseline) / lineMetrics.height;
    const int index = std::isnan(row) ? 0 : static_cast<int>(std::clamp(row, 0.0, lineCount() - 1.0));
    const Line& line = lines[static_cast<size_t>(index)];
    return line.start + (line.layout ? line.shaped.xToCursor(point.x() / scale) : 0);
}

QList<QRectF> TextLayout::rangeRects(int from, int to) const {
    QList<QRectF> rects;
    for (const Line& line : lines) {
        const int first = std::max(from - line.start, 0);
        const int last = std::min(to - line.start, line.length);
        if (!line.layout || first >= last)
            continue;
        // Character by character, joined where they touch: a range is in pieces where the direction of
        // reading changes.
        for (int at = first; at < last;) {
            const int next = std::min(line.layout->nextCursorPosition(at), last);
            const double a = line.shaped.cursorToX(at) * scale;
            const double b = line.shaped.cursorToX(next) * scale;
            const QRectF cell(std::min(a, b), topOf(line), std::abs(b - a), lineMetrics.height);
            const bool joins = !rects.isEmpty() && rects.last().top() == cell.top() &&
                               (maxX(rects.last()) == cell.left() || rects.last().left() == maxX(cell));
            if (joins)
                rects.last() = unionOf(rects.last(), cell);
            else
                rects.append(cell);
            at = next;
        }
    }
    return rects;
}

int TextLayout::positionBefore(int position) const {
    const Line& line = lineOf(position);
    if (position <= line.start)
        return std::max(line.start - 1, 0);
    return line.layout ? line.start + line.layout->previousCursorPosition(position - line.start) : line.start;
}

int TextLayout::positionAfter(int position) const {
    const Line& line = lineOf(position);
    const int end = line.start + line.length;
    if (position >= end)
        return line.index + 1 < lineCount() ? end + 1 : end;
    return line.layout ? line.start + line.layout->nextCursorPosition(position - line.start) : end;
}

int textLineCount(const QString& text) {
    return static_cast<int>(text.count(u'\n')) + 1;
}

} // namespace marrowfin::annotation
