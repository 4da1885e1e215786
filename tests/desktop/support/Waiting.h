// Waiting on real programs without a sleep: the event loop runs until what is awaited has happened. Tests
// only.
#pragma once

#include "base/Outcome.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <functional>
#include <optional>

namespace marrowfin::testsupport {

// False when it never held within a generous limit, which is there for a hang and measures nothing.
inline bool waitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(20000);
    // What another program does shows in no event of ours.
    QTimer pulse;
    pulse.start(10);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

template <class T>
Result<T> await(const Outcome<T>& outcome) {
    std::optional<Result<T>> result;
    outcome.then([&result](const Result<T>& value) { result = value; });
    if (!waitUntil([&result] { return result.has_value(); }))
        return failure(QStringLiteral("never settled"));
    return *result;
}

} // namespace marrowfin::testsupport
