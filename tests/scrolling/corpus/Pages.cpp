#include "scrolling/corpus/Pages.h"

#include "base/SystemFonts.h"

#include <QLinearGradient>
#include <QPainter>
#include <QStringList>
#include <array>
#include <cmath>

namespace marrowfin::testsupport {

namespace {

const QStringList words =
    QStringLiteral("the of and window edge a in to selection pixel when each colour is that for region "
                   "it returns with while point measure inside between corner scale screen value opens "
                   "before after second writes folder never again under above text follows release "
                   "order quick answer settles waits nothing small large minutes ago report meeting "
                   "draft notes review summer garden recipe music station weather cloudy rain northern "
                   "coast light wind morning afternoon harbour lantern copper")
        .split(u' ');

class Writer {
public:
    Writer(QImage& onto, double density, unsigned seed) : painter(&onto), density(density), random(seed) {
        painter.setRenderHint(QPainter::Antialiasing);
        width = onto.width() / density;
        height = onto.height() / density;
        painter.scale(density, density);
    }

    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    QString word() { return words[below(static_cast<int>(words.size()))]; }
    QString sentence(double characters) {
        QString text = word();
        while (text.size() < characters - 8)
            text += u' ' + word();
        return text;
    }
    void text(double x, double y, const QString& string, const QFont& font, QColor ink) {
        painter.setFont(font);
        painter.setPen(ink);
        painter.drawText(QPointF(x, y), string);
    }

    void prose() {
        painter.fillRect(QRectF(0, 0, width, height), Qt::white);
        const double column = std::min(width - 40, 720.0);
        const double left = (width - column) / 2;
        double y = 30;
        while (y < height) {
            if (below(4) == 0) {
                text(left, y, sentence(20), systemFont(21, QFont::Bold), QColor(20, 20, 20));
                y += 30;
            }
            for (int line = 1 + below(7); line > 0 && y < height; --line, y += 21)
                text(left, y, sentence(line == 1 ? 20 + below(30) : column / 7.2), systemFont(14),
                     QColor(45, 45, 48));
            y += 14;
        }
    }

    void code() {
        painter.fillRect(QRectF(0, 0, width, height), QColor(40, 42, 54));
        const std::array inks{QColor(248, 248, 242), QColor(139, 233, 253), QColor(255, 121, 198)};
        const QFont font = monospacedSystemFont(13);
        int depth = 1;
        int number = 1;
        for (double y = 16; y < height; y += 18, ++number) {
            text(6, y, QString::number(number).rightJustified(4), font, QColor(98, 114, 164));
            depth = std::clamp(depth + below(3) - 1, 1, 5);
            double x = 50 + 16.0 * depth;
            if (const int kind = below(6); kind == 0)
                text(x, y, QStringLiteral("}"), font, inks[0]);
            else if (kind > 1)
                for (int count = 1 + below(6); count > 0 && x < width; --count) {
                    const QString string = word() + (below(4) == 0 ? QStringLiteral("();") : QString());
                    text(x, y, string, font, inks[static_cast<size_t>(below(3))]);
                    x += static_cast<double>(string.size() + 1) * 7.9;
                }
        }
    }

    void terminal() {
        painter.fillRect(QRectF(0, 0, width, height), QColor(18, 18, 20));
        const QFont font = monospacedSystemFont(13);
        for (double y = 15; y < height; y += 17)
            if (below(5) == 0) {
                text(4, y, QStringLiteral("user@host:~$"), font, QColor(120, 220, 120));
                text(110, y, word() + u' ' + word(), font, QColor(225, 225, 225));
            } else {
                text(4, y, QStringLiteral("-rw-r--r--  1 user user %1 ").arg(below(90000), 6) + word(), font,
                     QColor(205, 205, 205));
            }
    }

    void sparse() {
        painter.fillRect(QRectF(0, 0, width, height), QColor(252, 252, 250));
        for (double y = 40; y < height; y += 70 + below(60)) {
            const double x = 20 + below(static_cast<int>(std::max(1.0, width - 220)));
            text(x, y, sentence(16), systemFont(13), QColor(60, 60, 64));
            if (below(3) == 0)
                painter.fillRect(QRectF(x, y + 12, 24, 24), QColor::fromHsv(below(360), 120, 220));
        }
    }

    enum class Numbers { Shown, None };
    void rows(Numbers numbers) {
        painter.fillRect(QRectF(0, 0, width, height), Qt::white);
        int number = 1 + below(500);
        for (double y = 0; y < height; y += 28, ++number) {
            painter.fillRect(QRectF(0, y + 27, width, 1), QColor(226, 226, 230));
            painter.fillRect(QRectF(12, y + 6, 16, 16), QColor(90, 140, 220));
            text(40, y + 18, QStringLiteral("Untitled document"), systemFont(13), QColor(40, 40, 44));
            text(width - 70, y + 18, QStringLiteral("Today"), systemFont(13), QColor(130, 130, 136));
            if (numbers == Numbers::Shown)
                text(180, y + 18, QString::number(number), systemFont(13), QColor(40, 40, 44));
        }
    }

    void hueBands() {
        int hue = below(360);
        for (double y = 0; y < height; y += 20, hue += 37)
            painter.fillRect(QRectF(0, y, width, 20),
                             QColor::fromHsv(hue % 360, 120 + below(120), 160 + below(90)));
    }

    QPainter painter;
    double density;
    double width = 0;
    double height = 0;

private:
    std::mt19937 random;
};

// Large soft shapes, finer ones on top, a little grain.
QImage photo(QSize size, double density, unsigned seed) {
    QImage small((QSizeF(size) / (24 * density)).toSize() + QSize(2, 2), QImage::Format_RGB32);
    std::mt19937 random(seed);
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x)
            small.setPixel(x, y,
                           qRgb(60 + static_cast<int>(random() % 150), 50 + static_cast<int>(random() % 140),
                                40 + static_cast<int>(random() % 130)));
    QImage image = small.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                       .convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] += (random() & 0x00070707U);
    }
    return image;
}

void addGrain(QImage& image, unsigned seed) {
    std::mt19937 random(seed);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            row[x] = (row[x] & 0xfffcfcfcU) | (random() & 0x00030303U);
    }
}

void paintPlaying(QImage& onto, QRect box, unsigned seed) {
    const QImage frame = photo(box.size(), 1, seed);
    QPainter(&onto).drawImage(box.topLeft(), frame);
}

void paintBar(QPainter& painter, QRectF bar, QColor ground, const QString& title) {
    painter.fillRect(bar, ground);
    painter.fillRect(QRectF(bar.left(), bar.bottom() - 1, bar.width(), 1), QColor(180, 180, 186));
    painter.setFont(systemFont(13, QFont::DemiBold));
    painter.setPen(QColor(40, 40, 46));
    painter.drawText(bar.adjusted(14, 0, -14, 0), Qt::AlignVCenter, title);
}

void paintSidebar(QPainter& painter, QRectF bar) {
    painter.fillRect(bar, QColor(236, 238, 242));
    painter.setFont(systemFont(12));
    painter.setPen(QColor(80, 84, 96));
    int index = 0;
    for (double y = bar.top() + 20; y < bar.bottom(); y += 24)
        painter.drawText(QPointF(bar.left() + 10, y), words[(index++ * 7) % words.size()]);
}

} // namespace

QImage page(PageKind kind, QSize size, double density, unsigned seed) {
    if (kind == PageKind::Photo)
        return photo(size, density, seed);
    QImage image(size, QImage::Format_RGB32);
    Writer writer(image, density, seed);
    switch (kind) {
    case PageKind::HueBands:
        writer.hueBands();
        break;
    case PageKind::Prose:
        writer.prose();
        break;
    case PageKind::Code:
        writer.code();
        break;
    case PageKind::Terminal:
        writer.terminal();
        break;
    case PageKind::Sparse:
        writer.sparse();
        break;
    case PageKind::EqualRows:
        writer.rows(Writer::Numbers::Shown);
        break;
    default:
        writer.rows(Writer::Numbers::None);
    }
    return image;
}

void paintSpinner(QImage& onto, QRectF box, SpinnerLook look, int stage) {
    QPainter painter(&onto);
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = box.width();
    constexpr int count = 8;
    if (look == SpinnerLook::Arc) {
        painter.setPen(QPen(QColor(60, 120, 220), side / 8));
        painter.drawArc(box.adjusted(side / 8, side / 8, -side / 8, -side / 8), stage * 45 * 16, 250 * 16);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.translate(box.center());
    for (int i = 0; i < count; ++i) {
        const int shade = 230 - 25 * ((i + stage) % count);
        painter.setBrush(QColor(shade, shade, shade));
        if (look == SpinnerLook::Dots)
            painter.drawEllipse(QPointF(0, -side * 0.38), side / 11, side / 11);
        else
            painter.drawRoundedRect(QRectF(-side / 20, -side * 0.48, side / 10, side * 0.26), 2, 2);
        painter.rotate(360.0 / count);
    }
}

QImage look(const QImage& page, QSize area, int scrolledTo, int moment, const Furniture& furniture,
            double density) {
    QImage shown = page.copy(QRect(QPoint(0, scrolledTo), area));
    const double width = area.width() / density;
    const double height = area.height() / density;
    if (furniture.video > 0) {
        const int top = static_cast<int>(height * density * 0.9) - scrolledTo;
        paintPlaying(shown, QRect(0, top, area.width(), static_cast<int>(furniture.video * density)),
                     static_cast<unsigned>(moment) + 900);
    }
    QPainter painter(&shown);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    if (furniture.sidebar > 0)
        paintSidebar(painter, QRectF(0, furniture.header, furniture.sidebar, height));
    if (furniture.header > 0) {
        paintBar(painter, QRectF(0, 0, width, furniture.header),
                 QColor(246, 247, 250, furniture.translucentHeader ? 215 : 255),
                 QStringLiteral("Reading list"));
        QLinearGradient shadow(0, furniture.header, 0, furniture.header + 6);
        shadow.setColorAt(0, QColor(0, 0, 0, 40));
        shadow.setColorAt(1, Qt::transparent);
        painter.fillRect(QRectF(0, furniture.header, width, 6), shadow);
    }
    if (furniture.footer > 0)
        paintBar(painter, QRectF(0, height - furniture.footer, width, furniture.footer),
                 QColor(230, 234, 240), QStringLiteral("We use biscuits on this page"));
    if (furniture.scrollBar) {
        const double thumb = height * area.height() / page.height();
        painter.fillRect(QRectF(width - 12, 0, 12, height), QColor(240, 240, 242));
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(150, 150, 156));
        painter.drawRoundedRect(QRectF(width - 10, height * scrolledTo / page.height(), 8, thumb), 4, 4);
    }
    if (furniture.caret && moment % 2 == 0)
        painter.fillRect(QRectF(90, height / 2, 2, 17), QColor(20, 20, 20));
    painter.end();
    if (furniture.spinner > 0) {
        const double side = furniture.spinner * density;
        paintSpinner(shown, QRectF(area.width() / 2.0 - side, area.height() / 2.0 - side, side, side),
                     SpinnerLook::Dots, moment);
    }
    if (furniture.grain)
        addGrain(shown, static_cast<unsigned>(moment) + 77);
    return shown;
}

} // namespace marrowfin::testsupport
