#include "panel/CaptionLabel.h"

#include "base/SystemFonts.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <vector>

namespace marrowfin::panel {

namespace {
constexpr double fontSize = 10;
constexpr char16_t ellipsis = u'\u2026';

struct Glyph {
    QString text;
    QFont font;
    QColor color;
    double advance; // of its cell
    double width;   // of its ink, centred in the cell
};

// Every digit gets the widest digit's room, so that the line doesn't shift when a number changes.
void append(std::vector<Glyph>& line, const QString& text, const QFont& font, const QColor& color,
            bool equalDigits) {
    const QFontMetricsF metrics(font);
    double digit = 0;
    for (char16_t c = u'0'; c <= u'9'; ++c)
        digit = std::max(digit, metrics.horizontalAdvance(QChar(c)));
    for (const QChar c : text) {
        const double width = metrics.horizontalAdvance(c);
        line.push_back({QString(c), font, color, equalDigits && c.isDigit() ? digit : width, width});
    }
}

double widthOf(const std::vector<Glyph>& line) {
    double width = 0;
    for (const Glyph& glyph : line)
        width += glyph.advance;
    return width;
}

void truncate(std::vector<Glyph>& line, double room) {
    if (line.empty() || widthOf(line) <= room)
        return;
    Glyph dots = line.back();
    dots.text = QString(QChar(ellipsis));
    dots.width = dots.advance = QFontMetricsF(dots.font).horizontalAdvance(QChar(ellipsis));
    while (!line.empty() && widthOf(line) + dots.advance > room)
        line.pop_back();
    line.push_back(dots);
}
} // namespace

CaptionLabel::CaptionLabel(QWidget* parent) : QLabel(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void CaptionLabel::setCaption(const CaptionText& text) {
    caption = text;
    setText(text.whole());
    setAccessibleName(text.whole());
    update();
}

void CaptionLabel::setColorScheme(ColorScheme value) {
    scheme = value;
    update();
}

void CaptionLabel::paintEvent(QPaintEvent*) {
    std::vector<Glyph> line;
    append(line, caption.facts, systemFont(fontSize, QFont::Medium),
           systemColor(SystemColor::secondaryLabel, scheme), true);
    append(line, caption.hint, systemFont(fontSize), systemColor(SystemColor::tertiaryLabel, scheme), false);
    truncate(line, width());
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const QFontMetricsF metrics(systemFont(fontSize));
    const double baseline = (height() + metrics.ascent() - metrics.descent()) / 2;
    double x = (width() - widthOf(line)) / 2;
    for (const Glyph& glyph : line) {
        painter.setFont(glyph.font);
        painter.setPen(glyph.color);
        painter.drawText(QPointF(x + (glyph.advance - glyph.width) / 2, baseline), glyph.text);
        x += glyph.advance;
    }
}

} // namespace marrowfin::panel
