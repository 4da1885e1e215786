#include "imaging/Resampling.h"

#include <algorithm>
#include <array>
#include <vector>

namespace marrowfin::imaging {

namespace {

QImage::Format plainFormat(const QImage& pixels) {
    return pixels.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
}

// Reads a picture of any format from top to bottom, some rows at a time converted.
class PlainRows {
public:
    PlainRows(const QImage& pixels, int atOnce) : all(pixels), format(plainFormat(pixels)), atOnce(atOnce) {}

    const quint32* row(int y) {
        if (y < first || y >= first + band.height()) {
            first = y;
            QImage part(all.constScanLine(y), all.width(), std::min(atOnce, all.height() - y),
                        all.bytesPerLine(), all.format());
            part.setColorTable(all.colorTable());
            band = part.convertToFormat(format); // the same memory where there is nothing to convert
        }
        return reinterpret_cast<const quint32*>(std::as_const(band).constScanLine(y - first));
    }

private:
    const QImage& all;
    QImage::Format format;
    int atOnce;
    int first = 0;
    QImage band;
};

// What of a line one pixel of the smaller line stands for: whole pixels, and parts of those beside them.
struct Span {
    int first;
    int last;     // not inside
    float before; // of the pixel before the first
    float after;  // of the last
};

Span spanOf(int index, qint64 from, qint64 to) {
    const qint64 low = index * from; // in parts of `to` to a pixel
    const qint64 high = low + from;
    const qint64 first = (low + to - 1) / to;
    const qint64 last = high / to;
    return {static_cast<int>(first), static_cast<int>(last),
            static_cast<float>(first * to - low) / static_cast<float>(to),
            static_cast<float>(high - last * to) / static_cast<float>(to)};
}

std::vector<Span> spans(int from, int to) {
    std::vector<Span> result;
    for (int i = 0; i < to; ++i)
        result.push_back(spanOf(i, from, to));
    return result;
}

using Sum = std::array<float, 4>; // one for each byte of a pixel

void add(Sum& sum, quint32 pixel, float weight) {
    for (std::size_t byte = 0; byte < sum.size(); ++byte)
        sum[byte] += weight * static_cast<float>((pixel >> (8 * byte)) & 0xff);
}

// Two bytes of a pixel share a word: 16 bits hold the sum of as many as this.
constexpr int mostInWord = 256;

void addWhole(Sum& sum, const quint32* pixels, int count) {
    constexpr quint32 evenBytes = 0x00ff00ff;
    quint32 even = 0;
    quint32 odd = 0;
    for (int i = 0; i < count; ++i) {
        even += pixels[i] & evenBytes;
        odd += (pixels[i] >> 8) & evenBytes;
    }
    const std::array<quint32, 4> sums{even & 0xffff, odd & 0xffff, even >> 16, odd >> 16};
    for (std::size_t byte = 0; byte < sum.size(); ++byte)
        sum[byte] += static_cast<float>(sums[byte]);
}

void sumRow(const quint32* row, const std::vector<Span>& columns, std::vector<Sum>& sums) {
    for (std::size_t x = 0; x < columns.size(); ++x) {
        const Span& span = columns[x];
        Sum sum{};
        for (int i = span.first; i < span.last; i += mostInWord)
            addWhole(sum, row + i, std::min(span.last - i, mostInWord));
        if (span.before > 0)
            add(sum, row[span.first - 1], span.before);
        if (span.after > 0)
            add(sum, row[span.last], span.after);
        sums[x] = sum;
    }
}

void addRow(std::vector<Sum>& to, const std::vector<Sum>& row, float weight) {
    for (std::size_t x = 0; x < to.size(); ++x)
        for (std::size_t byte = 0; byte < row[x].size(); ++byte)
            to[x][byte] += weight * row[x][byte];
}

void writeRow(quint32* to, const std::vector<Sum>& sums, float area) {
    for (const Sum& sum : sums) {
        quint32 pixel = 0;
        for (std::size_t byte = 0; byte < sum.size(); ++byte)
            pixel |= static_cast<quint32>(std::clamp(sum[byte] / area + 0.5F, 0.0F, 255.0F)) << (8 * byte);
        *to++ = pixel;
    }
}

} // namespace

bool isLongToResample(const QImage& pixels) {
    return static_cast<qint64>(pixels.width()) * pixels.height() > mostPixelsAtOnce;
}

QImage resampled(const QImage& pixels, const QSize& size) {
    const QImage plain = pixels.convertToFormat(plainFormat(pixels));
    // The toolkit's smooth scaling averages all pixels that fall into one when it makes an image smaller.
    return plain.size() == size ? plain : plain.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage areaAveraged(const QImage& pixels, const QSize& size, const std::atomic<bool>& stop) {
    QImage result(size, plainFormat(pixels));
    if (result.isNull())
        return {};
    PlainRows rows(pixels, 32);
    const std::vector<Span> columns = spans(pixels.width(), size.width());
    const float area = static_cast<float>(pixels.width()) / static_cast<float>(size.width()) *
                       static_cast<float>(pixels.height()) / static_cast<float>(size.height());
    std::vector<Sum> sums(columns.size());
    std::vector<Sum> row(columns.size());
    int summed = -1;
    const auto addSource = [&](int y, float weight) {
        if (y != summed) // the row that two of the result share is summed once
            sumRow(rows.row(y), columns, row);
        summed = y;
        addRow(sums, row, weight);
    };
    for (int y = 0; y < size.height() && !stop; ++y) {
        const Span span = spanOf(y, pixels.height(), size.height());
        std::fill(sums.begin(), sums.end(), Sum{});
        if (span.before > 0)
            addSource(span.first - 1, span.before);
        for (int from = span.first; from < span.last; ++from)
            addSource(from, 1);
        if (span.after > 0)
            addSource(span.last, span.after);
        writeRow(reinterpret_cast<quint32*>(result.scanLine(y)), sums, area);
    }
    return stop ? QImage() : result;
}

QImage picked(const QImage& pixels, const QSize& size) {
    QImage result(size, plainFormat(pixels));
    if (result.isNull())
        return {};
    const auto middle = [](qint64 index, qint64 from, qint64 to) {
        return (2 * index + 1) * from / (2 * to);
    };
    PlainRows rows(pixels, 1);
    for (int y = 0; y < size.height(); ++y) {
        const quint32* row = rows.row(static_cast<int>(middle(y, pixels.height(), size.height())));
        auto* to = reinterpret_cast<quint32*>(result.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            to[x] = row[middle(x, pixels.width(), size.width())];
    }
    return result;
}

} // namespace marrowfin::imaging
