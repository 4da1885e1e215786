#include "CorpusTable.h"

#include "PhaseCorrelation.h"
#include "annotation/Ratio.h"
#include "scrolling/ImageRegistration.h"
#include "scrolling/corpus/Corpus.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

namespace marrowfin::bench {

namespace {

using namespace testsupport;

struct Score {
    int right = 0;
    int refused = 0; // where there was something to tell
    int wrong = 0;   // a join that isn't one, or by the wrong offset
    void add(const CorpusCase& one, std::optional<int> answer) {
        const bool none = !answer || *answer == 0;
        if (none ? one.truth != Truth::Moved : one.truth != Truth::Nothing && *answer == one.offset)
            ++right;
        else if (none)
            ++refused;
        else
            ++wrong;
    }
};

struct Row {
    QString group;
    Score ours;
    Score reference;
};

struct Table {
    std::vector<Row> rows;
    double ours = 0;
    double reference = 0;
    int cases = 0;
    PhaseCorrelation correlation;

    Row& row(const QString& group) {
        if (rows.empty() || rows.back().group != group)
            rows.push_back({group, {}, {}});
        return rows.back();
    }
    void add(const CorpusCase& one) {
        std::optional<int> mine;
        std::optional<int> theirs;
        ours += secondsOf([&] {
            const auto movement = scrolling::ImageRegistration::movement(one.older, one.newer);
            if (movement && *movement)
                mine = (*movement)->offset;
        });
        reference += secondsOf([&] { theirs = correlation.offset(one.older, one.newer); });
        Row& to = row(one.group);
        const int wasRight = to.ours.right;
        to.ours.add(one, mine);
        to.reference.add(one, theirs);
        ++cases;
        if (to.ours.right == wasRight && qEnvironmentVariableIsSet("MARROWFIN_CORPUS_MISSES"))
            std::printf("  missed: %s, %s: %s\n", qPrintable(one.group), qPrintable(one.name),
                        mine ? qPrintable(QString::number(*mine)) : "none");
    }
};

void print(const Table& table, QSize area) {
    std::printf("\n%dx%d, %d cases\n", area.width(), area.height(), table.cases);
    std::printf("| | right | refused | wrong | phaseCorrelate: right | refused | wrong "
                "|\n|---|---|---|---|---|---|---|\n");
    Row all{QStringLiteral("all"), {}, {}};
    const auto line = [](const Row& row) {
        std::printf("| %s | %d | %d | %d | %d | %d | %d |\n", qPrintable(row.group), row.ours.right,
                    row.ours.refused, row.ours.wrong, row.reference.right, row.reference.refused,
                    row.reference.wrong);
    };
    const auto sum = [](Score& to, const Score& more) {
        to.right += more.right;
        to.refused += more.refused;
        to.wrong += more.wrong;
    };
    for (const Row& row : table.rows) {
        line(row);
        sum(all.ours, row.ours);
        sum(all.reference, row.reference);
    }
    line(all);
    const double n = table.cases;
    std::printf("right: %.1f%%; CPU a pair: %.2f ms, phaseCorrelate %.1f ms, %.1f times\n",
                100.0 * all.ours.right / n, 1e3 * table.ours / n, 1e3 * table.reference / n,
                table.reference / table.ours);
}

} // namespace

void printCorpusTable(QSize area, double density) {
    Table table;
    eachCorpusCase(area, density, 0, [&](const CorpusCase& one) { table.add(one); });
    print(table, area);
    std::fflush(stdout);
}

} // namespace marrowfin::bench
