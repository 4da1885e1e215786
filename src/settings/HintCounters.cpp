#include "settings/HintCounters.h"

#include "settings/Defaults.h"

namespace marrowfin::settings {

namespace {
const QString completedDragOutsKey = QStringLiteral("panelCompletedDragOuts");
const QString dragHintExposuresKey = QStringLiteral("panelDragHintExposures");
} // namespace

HintCounters::HintCounters() : HintCounters(Defaults::shared()) {}
HintCounters::HintCounters(Defaults& from) : defaults(from) {}

qint64 HintCounters::panelCompletedDragOuts() const {
    return defaults.integerForKey(completedDragOutsKey).value_or(0);
}
void HintCounters::countCompletedDragOut() {
    defaults.addInteger(completedDragOutsKey, 1);
}

qint64 HintCounters::panelDragHintExposures() const {
    return defaults.integerForKey(dragHintExposuresKey).value_or(0);
}
void HintCounters::countDragHintExposure() {
    defaults.addInteger(dragHintExposuresKey, 1);
}

} // namespace marrowfin::settings
