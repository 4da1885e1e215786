// A tall picture that grows at its lower end: kept in pieces, so that growing costs what is new and not what
// is there, and put together once somebody asks for the whole. Pixel rows from the top. Plain value; one
// thread at a time.
#pragma once

#include <QImage>
#include <optional>
#include <vector>

namespace marrowfin::scrolling {

class Composite {
public:
    explicit Composite(QImage first);

    int width() const { return columns; }
    int rows() const;

    // Makes it this many rows high and lays the frame over its lower end, but for the frame's topmost rows,
    // of which the composite keeps its own. A frame of another size than this is stretched to it. Rows that
    // nothing covers are clear. False when memory runs out; then nothing has changed.
    bool extend(int newRows, const QImage& frame, int frameRows, int keptRows);
    // Everything as one picture, put together on the first call after it grew; null when memory runs out.
    QImage whole();

private:
    // Some rows of a picture.
    struct Piece {
        QImage pixels;
        int first = 0;
        int rows = 0;
    };
    std::optional<std::vector<Piece>> topPieces(int rows) const;
    QImage::Format format() const;

    int columns;
    std::vector<Piece> pieces; // from the top; the last one is the newest frame itself, not a copy
};

} // namespace marrowfin::scrolling
