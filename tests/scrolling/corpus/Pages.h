// Pages as programs show them, taller than what is seen of them, drawn afresh from a seed; and areas that
// show a part of one, with what doesn't scroll along. Pixels; density 2 draws everything twice as large. GUI
// thread (text).
#pragma once

#include <QImage>
#include <QString>
#include <optional>
#include <random>

namespace marrowfin::testsupport {

enum class PageKind { HueBands, Prose, Code, Terminal, Sparse, EqualRows, BareRows, Photo };

QImage page(PageKind kind, QSize size, double density, unsigned seed);

// What stands before the page or moves by a rule of its own. Lengths at density 1.
struct Furniture {
    double header = 0;
    double footer = 0;
    double sidebar = 0;
    bool translucentHeader = false;
    bool scrollBar = false;
    bool caret = false;
    double spinner = 0; // its side
    double video = 0;   // height of a picture in the page that plays
    bool grain = false; // every pixel a little different in each frame
};

// One look at the area: the page scrolled to this row, at this moment of whatever plays.
QImage look(const QImage& page, QSize area, int scrolledTo, int moment, const Furniture& furniture,
            double density);

// An arc, dots or bars that turn; the stage is where it stands in its turn.
enum class SpinnerLook { Arc, Dots, Bars };
void paintSpinner(QImage& onto, QRectF box, SpinnerLook look, int stage);

} // namespace marrowfin::testsupport
