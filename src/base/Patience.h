// Awaiting an outcome no longer than a given time.
#pragma once

#include "base/Outcome.h"

#include <QCoreApplication>
#include <QTimer>
#include <chrono>

namespace marrowfin {

// Settles as the other outcome does, or with an error when the time is up; what comes later is dropped. Main
// thread.
template <class T>
Outcome<T> within(std::chrono::milliseconds patience, const Outcome<T>& outcome) {
    auto [settler, limited] = makeOutcome<T>();
    outcome.then([settler = settler](const Result<T>& result) { settler.settle(result); });
    QTimer::singleShot(patience, QCoreApplication::instance(),
                       [settler = settler] { settler.settle(failure(QStringLiteral("The time was up."))); });
    return limited;
}

} // namespace marrowfin
