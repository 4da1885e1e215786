#include "SampleScreens.h"

#include "base/SystemFonts.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace marrowfin::bench {

namespace {

const QStringList words = QStringLiteral("the of and capture window edge a in to selection pixel frame when "
                                         "editor each colour is that for region layer "
                                         "buffer it returns with while const auto draws point measure inside "
                                         "return shadow between corner scale screen "
                                         "value opens before after second queue writes history file name "
                                         "folder reads never again under above stroke text "
                                         "follows release pointer drag keeps order display monitor quick "
                                         "answer settles thread waits nothing small large "
                                         "seven minutes ago report meeting budget draft Tuesday notes review "
                                         "invoice travel summer garden recipe photo "
                                         "album music station weather forecast partly cloudy rain expected "
                                         "northern coast light wind morning afternoon")
                              .split(u' ');

class Scene {
public:
    explicit Scene(QImage& onto) : painter(&onto), random(20) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
    }

    QRectF window(const QRectF& frame, const QString& title, QColor inside, bool dark = false) {
        for (int spread = 24; spread > 0; spread -= 2) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(0, 0, 0, 5));
            painter.drawRoundedRect(frame.adjusted(-spread, -spread + 8, spread, spread + 8), 12 + spread,
                                    12 + spread);
        }
        QLinearGradient bar(frame.topLeft(), frame.topLeft() + QPointF(0, 44));
        bar.setColorAt(0, dark ? QColor(64, 64, 68) : QColor(250, 250, 250));
        bar.setColorAt(1, dark ? QColor(50, 50, 54) : QColor(228, 228, 230));
        QPainterPath outline;
        outline.addRoundedRect(frame, 12, 12);
        painter.fillPath(outline, bar);
        const QRectF body = frame.adjusted(1, 44, -1, -12);
        painter.fillRect(body, inside);
        const std::array dots{QColor(255, 95, 87), QColor(254, 188, 46), QColor(40, 200, 64)};
        for (size_t i = 0; i < dots.size(); ++i) {
            painter.setBrush(dots[i]);
            painter.drawEllipse(frame.topLeft() + QPointF(24 + 24.0 * static_cast<double>(i), 22), 7, 7);
        }
        line(frame.topLeft() + QPointF(110, 28), title, systemFont(17, QFont::DemiBold),
             dark ? QColor(220, 220, 220) : QColor(60, 60, 60));
        return body;
    }

    void paragraph(const QRectF& area, double size, QColor ink) {
        const QFont font = systemFont(size);
        for (double y = area.top() + size * 1.4; y < area.bottom(); y += size * 1.5)
            line({area.left(), y}, sentence(area.width() / (size * 0.56)), font, ink);
    }

    void code(const QRectF& area, double size, const std::vector<QColor>& inks, QColor gutter) {
        const QFont font = monospacedSystemFont(size);
        int number = 1;
        for (double y = area.top() + size * 1.4; y < area.bottom(); y += size * 1.4, ++number) {
            line({area.left(), y}, QString::number(number).rightJustified(4), font, gutter);
            double x = area.left() + size * (3.4 + 1.2 * below(5));
            if (below(7) == 0)
                continue;
            while (x < area.left() + area.width() * (0.35 + 0.1 * below(5))) {
                const QString word = pick() + (below(4) == 0 ? QStringLiteral("();") : QStringLiteral(" "));
                line({x, y}, word, font, inks[below(static_cast<int>(inks.size()))]);
                x += static_cast<double>(word.size() + 1) * size * 0.6;
            }
        }
    }

    void fileList(const QRectF& area) {
        const QFont font = systemFont(17);
        int row = 0;
        for (double y = area.top(); y + 36 < area.bottom(); y += 36, ++row) {
            if (row % 2 == 1)
                painter.fillRect(QRectF(area.left(), y, area.width(), 36), QColor(245, 246, 248));
            QLinearGradient icon(0, y + 6, 0, y + 30);
            const QColor tint = QColor::fromHsv(below(360), 140, 230);
            icon.setColorAt(0, tint.lighter(115));
            icon.setColorAt(1, tint.darker(115));
            painter.setPen(Qt::NoPen);
            painter.setBrush(icon);
            painter.drawRoundedRect(QRectF(area.left() + 14, y + 6, 24, 24), 5, 5);
            line({area.left() + 52, y + 24}, pick() + u' ' + pick() + QStringLiteral(".png"), font,
                 QColor(40, 40, 40));
            line({area.left() + area.width() * 0.55, y + 24}, QStringLiteral("%1 KB").arg(below(9000)), font,
                 Qt::gray);
            line({area.left() + area.width() * 0.75, y + 24}, pick() + QStringLiteral(" %1").arg(below(31)),
                 font, Qt::gray);
        }
    }

    void line(QPointF at, const QString& text, const QFont& font, QColor ink) {
        painter.setFont(font);
        painter.setPen(ink);
        painter.drawText(at, text);
    }
    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    QString pick() { return words[below(static_cast<int>(words.size()))]; }
    QString sentence(double length) {
        QString text = pick();
        while (text.size() < length - 8)
            text += u' ' + pick();
        return text;
    }

    QPainter painter;

private:
    std::mt19937 random;
};

// One octave of value noise, added to the plane.
void addOctave(std::vector<float>& plane, QSize size, double cell, float amplitude, std::mt19937& random) {
    const int columns = static_cast<int>(size.width() / cell) + 2;
    const int rows = static_cast<int>(size.height() / cell) + 2;
    std::vector<float> grid(static_cast<size_t>(columns) * static_cast<size_t>(rows));
    for (float& value : grid)
        value = static_cast<float>(random() % 2001) / 1000.0F - 1.0F;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const double u = x / cell;
            const double v = y / cell;
            const size_t at = static_cast<size_t>(v) * static_cast<size_t>(columns) + static_cast<size_t>(u);
            const auto fx = static_cast<float>(u - std::floor(u));
            const auto fy = static_cast<float>(v - std::floor(v));
            const float top = grid[at] + (grid[at + 1] - grid[at]) * fx;
            const size_t under = at + static_cast<size_t>(columns);
            const float low = grid[under] + (grid[under + 1] - grid[under]) * fx;
            plane[static_cast<size_t>(y) * static_cast<size_t>(size.width()) + static_cast<size_t>(x)] +=
                amplitude * (top + (low - top) * fy);
        }
}

} // namespace

QImage samplePhoto(QSize size, quint32 seed) {
    std::mt19937 random(seed);
    const size_t count = static_cast<size_t>(size.width()) * static_cast<size_t>(size.height());
    std::array<std::vector<float>, 3> planes;
    std::vector<float> light(count, 120.0F);
    struct Octave {
        double cell;
        float amplitude;
    };
    constexpr std::array octaves{Octave{640, 70}, Octave{160, 36}, Octave{48, 18}, Octave{14, 9},
                                 Octave{5, 4}};
    for (const auto& [cell, amplitude] : octaves)
        addOctave(light, size, cell, amplitude, random);
    for (std::vector<float>& plane : planes) {
        plane = light;
        addOctave(plane, size, 420, 40.0F, random);
    }
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const size_t at =
                static_cast<size_t>(y) * static_cast<size_t>(size.width()) + static_cast<size_t>(x);
            const auto level = [&](size_t channel) {
                const float grain = static_cast<float>(random() % 5) - 2.0F;
                return static_cast<int>(std::clamp(planes[channel][at] + grain, 0.0F, 255.0F));
            };
            row[x] = qRgb(level(0), level(1), level(2));
        }
    }
    return image;
}

QImage sampleNoise(QSize size) {
    std::mt19937 random(7);
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] = 0xff000000U | static_cast<QRgb>(random());
    }
    return image;
}

QImage sampleScreen(QSize size, Wallpaper wallpaper, PictureWindow picture) {
    QImage image = wallpaper == Wallpaper::Photo ? samplePhoto(size, 3) : QImage(size, QImage::Format_RGB32);
    const double w = size.width();
    const double h = size.height();
    if (wallpaper == Wallpaper::Gradient) {
        QPainter painter(&image);
        QLinearGradient sky(0, 0, w * 0.4, h);
        sky.setColorAt(0, QColor(38, 70, 130));
        sky.setColorAt(1, QColor(150, 90, 140));
        painter.fillRect(image.rect(), sky);
    }
    Scene scene(image);
    scene.painter.fillRect(QRectF(0, 0, w, 40), QColor(30, 30, 34));
    scene.line({20, 27}, QStringLiteral("Activities      Editor"), systemFont(17), Qt::white);
    scene.line({w / 2 - 60, 27}, QStringLiteral("Tue 12 May  14:02"), systemFont(17), Qt::white);

    const QRectF editor = scene.window({w * 0.03, h * 0.06, w * 0.45, h * 0.6}, QStringLiteral("main.cpp"),
                                       QColor(40, 42, 54), true);
    scene.code(editor.adjusted(12, 8, -12, -8), 18,
               {QColor(248, 248, 242), QColor(139, 233, 253), QColor(255, 121, 198), QColor(241, 250, 140)},
               QColor(98, 114, 164));
    const QRectF page =
        scene.window({w * 0.5, h * 0.08, w * 0.46, h * 0.7}, QStringLiteral("Weather and notes"), Qt::white);
    scene.line(page.topLeft() + QPointF(60, 80), QStringLiteral("A quiet morning on the coast"),
               systemFont(44, QFont::Bold), QColor(20, 20, 20));
    scene.paragraph(page.adjusted(60, 110, -page.width() * 0.42, -page.height() * 0.3), 20,
                    QColor(50, 50, 50));
    const QRectF pictured(page.right() - page.width() * 0.38, page.top() + 120, page.width() * 0.34,
                          page.height() * 0.5);
    if (picture == PictureWindow::Photo)
        scene.painter.drawImage(pictured.topLeft(), samplePhoto(pictured.size().toSize(), 9));
    else
        scene.paragraph(pictured, 17, QColor(90, 90, 90));
    scene.paragraph(page.adjusted(60, page.height() * 0.74, -60, -20), 16, QColor(70, 70, 80));

    const QRectF terminal = scene.window({w * 0.08, h * 0.55, w * 0.4, h * 0.4}, QStringLiteral("Terminal"),
                                         QColor(18, 18, 20), true);
    scene.code(terminal.adjusted(10, 4, -10, -6), 17, {QColor(210, 210, 210), QColor(120, 220, 120)},
               QColor(110, 110, 110));
    const QRectF files =
        scene.window({w * 0.55, h * 0.58, w * 0.4, h * 0.37}, QStringLiteral("Pictures"), Qt::white);
    scene.fileList(files);
    const QRectF dialog = scene.window({w * 0.38, h * 0.42, w * 0.2, h * 0.16},
                                       QStringLiteral("Save changes?"), QColor(240, 240, 242));
    scene.paragraph(dialog.adjusted(24, 14, -24, -90), 18, QColor(50, 50, 50));
    return image;
}

} // namespace marrowfin::bench
