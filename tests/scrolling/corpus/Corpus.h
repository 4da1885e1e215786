// Pairs of looks at one area and what is to be read from them: pages that scroll, and pairs without a
// movement. One table for the tests and the benchmark.
#pragma once

#include <QImage>
#include <QString>
#include <functional>

namespace marrowfin::testsupport {

enum class Truth {
    Moved,     // by the offset, exactly
    MayBeTold, // by the offset, but what both looks share is of one colour: nothing is a right answer too
    Nothing,   // no movement, or none that can be told
};

struct CorpusCase {
    QString group; // a row of the table
    QString name;
    QImage older;
    QImage newer;
    Truth truth = Truth::Nothing;
    int offset = 0;
};

// Each case in turn; only one of them is in memory. Another seed gives other pages.
void eachCorpusCase(QSize area, double density, unsigned seed,
                    const std::function<void(const CorpusCase&)>& visit);
// Of these the pairs that have nothing to do with each other.
void eachUnrelatedPair(QSize area, double density, unsigned seed,
                       const std::function<void(const CorpusCase&)>& visit);

} // namespace marrowfin::testsupport
