// How well the user knows that a card can be dragged out; the hint on the cards ends by these two counts.
// Kept in the defaults, so they last beyond the run. Main thread only.
#pragma once

#include <QtGlobal>

namespace marrowfin::settings {

class Defaults;

class HintCounters {
public:
    // Over Defaults::shared().
    HintCounters();
    explicit HintCounters(Defaults& defaults);

    // Drags of a card that ended in a drop.
    qint64 panelCompletedDragOuts() const;
    void countCompletedDragOut();
    // Cards on which the hint was seen.
    qint64 panelDragHintExposures() const;
    void countDragHintExposure();

private:
    Defaults& defaults;
};

} // namespace marrowfin::settings
