// Finds links, mail addresses and telephone numbers in text. Main thread; the work is done elsewhere.
#pragma once

#include "base/Outcome.h"

#include <QString>
#include <QUrl>
#include <optional>
#include <vector>

namespace marrowfin::platform {

// One of the two is set.
struct TextMatch {
    std::optional<QString> phoneNumber; // as written
    std::optional<QUrl> url;            // mail addresses with the scheme "mailto"
};

class TextDetector {
public:
    virtual ~TextDetector() = default;
    // In the order of the text; a match may span a line break.
    virtual Outcome<std::vector<TextMatch>> matches(const QString& text) = 0;
};

} // namespace marrowfin::platform
