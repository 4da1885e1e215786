// A frame cut into strips, and each strip into cells one pixel row high, with a hash of every cell's colours.
// Alpha plays no part. An edge is where a cell differs from the one above it: that is where a row can be told
// from others.
#pragma once

#include <QImage>
#include <span>
#include <vector>

namespace marrowfin::scrolling {

class RowHashes {
public:
    // The topmost rows of a frame of 32 bits a pixel.
    RowHashes(const QImage& frame, int rows);

    int rows() const { return rowCount; }
    int strips() const { return stripCount; }
    int stripWidth() const { return width; }
    std::span<const quint32> cells(int strip) const { return part(cellHashes, strip); }
    // The hash of a cell and the one above it, or 0 where both are the same and in the first row.
    std::span<const quint32> edges(int strip) const { return part(edgeHashes, strip); }

private:
    std::span<const quint32> part(const std::vector<quint32>& all, int strip) const {
        return std::span(all).subspan(static_cast<size_t>(strip) * static_cast<size_t>(rowCount),
                                      static_cast<size_t>(rowCount));
    }
    void hashRow(const quint32* pixels, int pixelCount, int row);
    void findEdges();

    int rowCount;
    int width;
    int stripCount;
    std::vector<quint32> cellHashes; // strip by strip
    std::vector<quint32> edgeHashes;
};

} // namespace marrowfin::scrolling
