// Where each edge of one strip stands: how often there is one like it, and in which rows. Filled anew for
// each strip.
#pragma once

#include <QtGlobal>
#include <span>
#include <vector>

namespace marrowfin::scrolling {

class EdgeIndex {
public:
    explicit EdgeIndex(int rows);

    void fill(std::span<const quint32> edges);
    int count(quint32 edge) const { return places[placeOf(edge)].count; }

    template <class Visit>
    void eachRow(quint32 edge, Visit&& visit) const {
        for (int row = places[placeOf(edge)].lastRow; row >= 0; row = rowBefore[static_cast<size_t>(row)])
            visit(row);
    }

private:
    struct Place {
        quint32 edge = 0;
        int count = 0;
        int lastRow = -1;
    };
    // That of the edge, or the empty one where it would go.
    size_t placeOf(quint32 edge) const {
        size_t at = (edge >> 1) & mask;
        while (places[at].count > 0 && places[at].edge != edge)
            at = (at + 1) & mask;
        return at;
    }

    std::vector<Place> places; // at most half full
    size_t mask;
    std::vector<int> rowBefore;
};

} // namespace marrowfin::scrolling
