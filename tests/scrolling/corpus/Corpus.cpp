#include "scrolling/corpus/Corpus.h"

#include "scrolling/corpus/Pages.h"

#include <QPainter>
#include <array>
#include <cmath>
#include <set>

namespace marrowfin::testsupport {

namespace {

using Visit = std::function<void(const CorpusCase&)>;

struct ScrollingPage {
    const char* group;
    PageKind kind;
    Furniture furniture;
};

const std::array scrollingPages{
    ScrollingPage{"hue bands", PageKind::HueBands, {}},
    ScrollingPage{"prose", PageKind::Prose, {}},
    ScrollingPage{"code", PageKind::Code, {}},
    ScrollingPage{"terminal", PageKind::Terminal, {}},
    ScrollingPage{"sparse page", PageKind::Sparse, {}},
    ScrollingPage{"fixed header and sidebar", PageKind::Prose, {.header = 40, .sidebar = 90}},
    ScrollingPage{"translucent header, fixed footer",
                  PageKind::Prose,
                  {.header = 40, .footer = 36, .translucentHeader = true}},
    ScrollingPage{"moving scroll bar", PageKind::Code, {.scrollBar = true}},
    ScrollingPage{"spinner", PageKind::Prose, {.spinner = 32}},
    ScrollingPage{"caret", PageKind::Terminal, {.caret = true}},
    ScrollingPage{"list of equal rows, numbered", PageKind::EqualRows, {}},
    ScrollingPage{"list of equal rows", PageKind::BareRows, {}},
    ScrollingPage{"photo", PageKind::Photo, {}},
    ScrollingPage{"photo with grain", PageKind::Photo, {.grain = true}},
    ScrollingPage{"prose around a video", PageKind::Prose, {.video = 90}},
};

std::set<int> stepsFor(int height) {
    std::set<int> steps{1, 5, 13, 24, 40, 57, 90, 120, -5, -57};
    for (const double part : {0.2, 0.3, 0.4, 0.5, 0.6, 0.7, -0.4})
        steps.insert(static_cast<int>(std::lround(part * height)));
    return steps;
}

bool isOneColour(const QImage& page, int from, int to) {
    const QRgb first = page.pixel(0, from);
    for (int y = from; y < to; ++y)
        for (int x = 0; x < page.width(); ++x)
            if (page.pixel(x, y) != first)
                return false;
    return true;
}

Truth truthOf(const ScrollingPage& scrolling, const QImage& page, int area, int before, int after,
              double density) {
    if (scrolling.kind == PageKind::BareRows)
        return Truth::Nothing;
    const int top = std::lround(scrolling.furniture.header * density);
    const int bottom = area - std::lround(scrolling.furniture.footer * density);
    const bool blank = isOneColour(page, std::max(before, after) + top, std::min(before, after) + bottom);
    return blank ? Truth::MayBeTold : Truth::Moved;
}

void visitScrolling(QSize area, double density, unsigned seed, const Visit& visit) {
    const int height = area.height();
    for (const ScrollingPage& scrolling : scrollingPages) {
        const QImage whole = page(scrolling.kind, {area.width(), 3 * height}, density, seed + 11);
        unsigned turn = 0;
        for (const int step : stepsFor(height)) {
            const int before =
                height / 2 + static_cast<int>((++turn * 17 + seed) % static_cast<unsigned>(height / 2));
            const int after = before + step;
            CorpusCase one;
            one.group = QString::fromLatin1(scrolling.group);
            one.name = QStringLiteral("%1 px").arg(step);
            one.older = look(whole, area, before, 1, scrolling.furniture, density);
            one.newer = look(whole, area, after, 4, scrolling.furniture, density);
            one.truth = truthOf(scrolling, whole, height, before, after, density);
            one.offset = step;
            visit(one);
        }
    }
}

void visitEnds(QSize area, double density, unsigned seed, const Visit& visit) {
    for (const ScrollingPage& scrolling : scrollingPages) {
        const QImage whole = page(scrolling.kind, {area.width(), 2 * area.height()}, density, seed + 5);
        const int end = area.height();
        visit({QStringLiteral("a page's end"), QString::fromLatin1(scrolling.group),
               look(whole, area, end, 2, scrolling.furniture, density),
               look(whole, area, end, 3, scrolling.furniture, density), Truth::Nothing, 0});
    }
}

void visitSpinners(QSize area, double density, unsigned seed, const Visit& visit) {
    for (const PageKind kind : {PageKind::Prose, PageKind::Sparse, PageKind::Photo})
        for (const SpinnerLook look : {SpinnerLook::Arc, SpinnerLook::Dots, SpinnerLook::Bars})
            for (const double side : {16.0, 32.0, 64.0}) {
                const QImage ground = page(kind, area, density, seed + 31);
                QImage older = ground;
                QImage newer = ground;
                const QRectF box(area.width() * 0.4, area.height() * 0.4, side * density, side * density);
                paintSpinner(older, box, look, 1);
                paintSpinner(newer, box, look, 4);
                visit({QStringLiteral("a spinner and nothing else"),
                       QStringLiteral("%1, %2, %3")
                           .arg(static_cast<int>(kind))
                           .arg(static_cast<int>(look))
                           .arg(side),
                       older, newer, Truth::Nothing, 0});
            }
}

// Something plays in a page that stands: a film, pictures that slide sideways, one that fades into another, a
// light that runs over placeholders, a bar that fills, a row that is lit up.
void visitPlaying(QSize area, double density, unsigned seed, const Visit& visit) {
    const QImage ground = page(PageKind::Prose, area, density, seed + 51);
    const auto one = [&](const char* name, const QImage& older, const QImage& newer) {
        visit({QStringLiteral("something plays, nothing moves"), QString::fromLatin1(name), older, newer,
               Truth::Nothing, 0});
    };
    const auto painted = [&](auto&& paint) {
        QImage image = ground;
        QPainter painter(&image);
        paint(painter);
        painter.end();
        return image;
    };
    const QSize film(area.width() * 6 / 10, area.height() / 2);
    const QPoint at(area.width() / 5, area.height() / 4);
    const QImage first = page(PageKind::Photo, film, density, seed + 61);
    const QImage second = page(PageKind::Photo, film, density, seed + 62);
    one("film", painted([&](QPainter& p) { p.drawImage(at, first); }),
        painted([&](QPainter& p) { p.drawImage(at, second); }));
    const QImage wide = page(PageKind::Photo, {film.width() * 2, film.height()}, density, seed + 63);
    one("pictures that slide sideways", painted([&](QPainter& p) {
            p.drawImage(at, wide, QRect({0, 0}, film));
        }),
        painted([&](QPainter& p) {
            p.drawImage(at, wide, QRect({film.width() / 3, 0}, film));
        }));
    const auto faded = [&](double opacity) {
        return painted([&](QPainter& p) {
            p.drawImage(at, first);
            p.setOpacity(opacity);
            p.drawImage(at, second);
        });
    };
    one("one picture fades into another", faded(0.3), faded(0.6));
    const auto lit = [&](double x) {
        return painted([&](QPainter& p) {
            QLinearGradient light(x - 80 * density, 0, x + 80 * density, 0);
            light.setColorAt(0, QColor(230, 230, 230));
            light.setColorAt(0.5, QColor(245, 245, 245));
            light.setColorAt(1, QColor(230, 230, 230));
            for (double y = 20 * density; y < area.height(); y += 40 * density)
                p.fillRect(QRectF(20 * density, y, area.width() - 40 * density, 24 * density), light);
        });
    };
    one("light over placeholders", lit(area.width() * 0.3), lit(area.width() * 0.7));
    const auto filled = [&](double part) {
        return painted([&](QPainter& p) {
            p.fillRect(QRectF(20, area.height() * 0.5, (area.width() - 40) * part, 30 * density),
                       QColor(60, 120, 220));
        });
    };
    one("a bar that fills", filled(0.3), filled(0.5));
    const auto highlighted = [&](double y) {
        return painted([&](QPainter& p) {
            p.setCompositionMode(QPainter::CompositionMode_Multiply);
            p.fillRect(QRectF(0, y, area.width(), 21 * density), QColor(210, 225, 255));
        });
    };
    one("a row lit up", highlighted(area.height() * 0.3), highlighted(area.height() * 0.6));
    QImage dark = ground;
    dark.invertPixels();
    one("light becomes dark", ground, dark);
}

} // namespace

void eachUnrelatedPair(QSize area, double density, unsigned seed, const Visit& visit) {
    constexpr std::array kinds{PageKind::HueBands, PageKind::Prose,  PageKind::Code,
                               PageKind::Terminal, PageKind::Sparse, PageKind::Photo};
    for (const PageKind one : kinds)
        for (const PageKind other : kinds) {
            if (other < one)
                continue;
            visit({QStringLiteral("two unrelated frames"),
                   QStringLiteral("%1 and %2").arg(static_cast<int>(one)).arg(static_cast<int>(other)),
                   page(one, area, density, seed + 21), page(other, area, density, seed + 42), Truth::Nothing,
                   0});
        }
}

void eachCorpusCase(QSize area, double density, unsigned seed, const Visit& visit) {
    visitScrolling(area, density, seed, visit);
    eachUnrelatedPair(area, density, seed, visit);
    visitEnds(area, density, seed, visit);
    visitSpinners(area, density, seed, visit);
    visitPlaying(area, density, seed, visit);
}

} // namespace marrowfin::testsupport
