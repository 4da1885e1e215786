// Reads the text in an image. Main thread; the work is done elsewhere.
#pragma once

#include "base/Outcome.h"
#include "imaging/Image.h"

#include <QString>
#include <vector>

namespace marrowfin::platform {

struct RecognizedLine {
    QString text;         // the best candidate; never empty
    float confidence = 0; // 0 to 1
};

class TextRecognizer {
public:
    virtual ~TextRecognizer() = default;
    // In the recogniser's own order, with care rather than speed, words corrected by the language that it
    // finds. No lines is no error.
    virtual Outcome<std::vector<RecognizedLine>> recognize(const imaging::Image& image) = 0;
};

} // namespace marrowfin::platform
