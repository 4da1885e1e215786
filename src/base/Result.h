// Fallible calls return Result<T>; nothing in this program throws on an expected failure.
#pragma once

#include <QString>
#include <tl/expected.hpp>
#include <utility>

namespace marrowfin {

struct Error {
    enum class Kind {
        Failed,      // it was tried and did not work
        Unavailable, // this desktop can't do it; the message is a sentence for the user
        Dropped,     // whoever should have answered went away
        Cancelled,   // a change of mind, or nothing to choose from: it ends without a word
    };
    Kind kind = Kind::Failed;
    QString message;

    friend bool operator==(const Error&, const Error&) = default;
};

template <class T>
using Result = tl::expected<T, Error>;

inline tl::unexpected<Error> failure(QString message, Error::Kind kind = Error::Kind::Failed) {
    return tl::unexpected<Error>(Error{kind, std::move(message)});
}
inline tl::unexpected<Error> unavailable(QString sentence) {
    return failure(std::move(sentence), Error::Kind::Unavailable);
}
inline tl::unexpected<Error> cancelled() {
    return failure(QStringLiteral("cancelled"), Error::Kind::Cancelled);
}

} // namespace marrowfin
