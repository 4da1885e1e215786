#include "scrolling/Composite.h"

#include <algorithm>
#include <cstring>

namespace marrowfin::scrolling {

namespace {

QImage plain(const QImage& pixels) {
    const bool isPlain =
        pixels.format() == QImage::Format_RGB32 || pixels.format() == QImage::Format_ARGB32_Premultiplied;
    return isPlain ? pixels
                   : pixels.convertToFormat(pixels.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                     : QImage::Format_RGB32);
}

QImage stretched(const QImage& pixels, QSize size) {
    if (pixels.size() == size)
        return plain(pixels);
    return plain(pixels).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// Between plain formats; what isn't known to be opaque is made so.
void copyRows(const QImage& from, int first, int rows, QImage& to, int at) {
    const size_t length = static_cast<size_t>(to.width()) * sizeof(QRgb);
    for (int i = 0; i < rows; ++i) {
        const uchar* source = from.constScanLine(first + i);
        uchar* target = to.scanLine(at + i);
        std::memcpy(target, source, length);
        if (from.format() == to.format())
            continue;
        auto* pixels = reinterpret_cast<QRgb*>(target);
        std::for_each(pixels, pixels + to.width(), [](QRgb& pixel) { pixel |= 0xff000000U; });
    }
}

} // namespace

Composite::Composite(QImage first) : columns(first.width()) {
    const int rows = first.height();
    pieces.push_back({plain(first), 0, rows});
}

int Composite::rows() const {
    int sum = 0;
    for (const Piece& piece : pieces)
        sum += piece.rows;
    return sum;
}

bool Composite::extend(int newRows, const QImage& frame, int frameRows, int keptRows) {
    const QImage pixels = stretched(frame, {columns, frameRows});
    // A frame higher than the whole loses its top.
    const int above = std::max(newRows - frameRows, 0);
    const int hidden = std::max(frameRows - newRows, 0);
    const int kept = std::clamp(keptRows - hidden, 0, newRows - above);
    std::optional<std::vector<Piece>> grown = topPieces(above + kept);
    if (pixels.isNull() || !grown)
        return false;
    if (const int rest = newRows - above - kept; rest > 0)
        grown->push_back({pixels, frameRows - rest, rest});
    pieces = *std::move(grown);
    return true;
}

// What stays of the newest frame is copied, so that the rest of it can go.
std::optional<std::vector<Composite::Piece>> Composite::topPieces(int rows) const {
    std::vector<Piece> top;
    for (const Piece& piece : pieces) {
        const int taken = std::min(piece.rows, rows);
        if (taken <= 0)
            break;
        rows -= taken;
        top.push_back({piece.pixels, piece.first, taken});
        if (&piece == &pieces.back() && taken < piece.pixels.height())
            top.back() = {piece.pixels.copy(0, piece.first, columns, taken), 0, taken};
    }
    if (rows > 0) {
        top.push_back({QImage(columns, rows, QImage::Format_ARGB32_Premultiplied), 0, rows});
        top.back().pixels.fill(Qt::transparent);
    }
    const bool complete =
        std::none_of(top.begin(), top.end(), [](const Piece& piece) { return piece.pixels.isNull(); });
    return complete ? std::optional(std::move(top)) : std::nullopt;
}

QImage::Format Composite::format() const {
    const bool opaque = std::all_of(pieces.begin(), pieces.end(), [](const Piece& piece) {
        return piece.pixels.format() == QImage::Format_RGB32;
    });
    return opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
}

// Each piece goes as soon as its rows are in the whole, so that there are never two wholes; but the newest
// frame stays, for what comes after it to lie on.
QImage Composite::whole() {
    if (pieces.size() == 1 && pieces[0].rows == pieces[0].pixels.height())
        return pieces[0].pixels;
    QImage all(columns, rows(), format());
    if (all.isNull())
        return all;
    int row = 0;
    const int newest = pieces.back().rows;
    for (Piece& piece : pieces) {
        copyRows(piece.pixels, piece.first, piece.rows, all, row);
        row += piece.rows;
        if (&piece != &pieces.back())
            piece.pixels = QImage();
    }
    pieces.erase(pieces.begin(), pieces.end() - 1);
    if (row > newest)
        pieces.insert(pieces.begin(), {all, 0, row - newest});
    return all;
}

} // namespace marrowfin::scrolling
