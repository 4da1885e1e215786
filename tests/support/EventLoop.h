// Waiting in the event loop for what the program answers there, without a sleep.
#pragma once

#include "base/Outcome.h"

#include <QEventLoop>
#include <optional>

namespace marrowfin::test {

template <class T>
Result<T> awaited(const Outcome<T>& outcome) {
    QEventLoop loop;
    std::optional<Result<T>> answer;
    outcome.then([&](Result<T> result) {
        answer.emplace(std::move(result));
        loop.quit();
    });
    loop.exec();
    return *answer;
}

} // namespace marrowfin::test
