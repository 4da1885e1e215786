#include "imaging/PlainPng.h"

#include <QtEndian>
#include <cstdlib>
#include <libdeflate.h>

namespace marrowfin::test {

namespace {

quint32 number(const QByteArray& bytes, qsizetype at) {
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

quint32 crc(const QByteArray& bytes) {
    quint32 value = 0xffffffffU;
    for (const char byte : bytes) {
        value ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            value = value & 1 ? 0xedb88320U ^ value >> 1 : value >> 1;
    }
    return ~value;
}

int predicted(int filter, int left, int above, int corner) {
    const int guess = left + above - corner;
    const int a = std::abs(guess - left);
    const int b = std::abs(guess - above);
    const int c = std::abs(guess - corner);
    switch (filter) {
    case 0:
        return 0;
    case 1:
        return left;
    case 2:
        return above;
    case 3:
        return (left + above) / 2;
    default:
        return a <= b && a <= c ? left : b <= c ? above : corner;
    }
}

// Undoes the filters in place; false for a filter that doesn't exist.
bool unfilter(QByteArray& data, qsizetype rowBytes, qsizetype pixel) {
    auto* bytes = reinterpret_cast<uchar*>(data.data());
    for (qsizetype row = 0; row < data.size(); row += rowBytes + 1) {
        const int filter = bytes[row];
        if (filter > 4)
            return false;
        for (qsizetype i = row + 1; i <= row + rowBytes; ++i) {
            const bool isFirst = i - row <= pixel;
            const int left = isFirst ? 0 : bytes[i - pixel];
            const int above = row == 0 ? 0 : bytes[i - rowBytes - 1];
            const int corner = isFirst || row == 0 ? 0 : bytes[i - rowBytes - 1 - pixel];
            bytes[i] = static_cast<uchar>(bytes[i] + predicted(filter, left, above, corner));
        }
    }
    return true;
}

QImage painted(const QByteArray& data, QSize size, qsizetype pixel) {
    QImage image(size, QImage::Format_ARGB32);
    const auto* at = reinterpret_cast<const uchar*>(data.constData());
    for (int y = 0; y < size.height(); ++y) {
        ++at;
        for (int x = 0; x < size.width(); ++x, at += pixel)
            reinterpret_cast<QRgb*>(image.scanLine(y))[x] = pixel == 1   ? qRgb(at[0], at[0], at[0])
                                                            : pixel == 3 ? qRgb(at[0], at[1], at[2])
                                                                         : qRgba(at[0], at[1], at[2], at[3]);
    }
    return image;
}

struct Reading {
    PlainPng png;
    QByteArray header;
    QByteArray data;

    QString readChunks(const QByteArray& file) {
        if (!file.startsWith(QByteArray("\x89PNG\r\n\x1a\n", 8)))
            return QStringLiteral("no signature");
        qsizetype at = 8;
        while (at + 12 <= file.size()) {
            const auto length = static_cast<qsizetype>(number(file, at));
            if (length > file.size() - at - 12)
                return QStringLiteral("a chunk is longer than the file");
            const QByteArray typed = file.mid(at + 4, length + 4);
            if (crc(typed) != number(file, at + 8 + length))
                return QStringLiteral("a chunk's checksum is wrong");
            take(typed.left(4), typed.mid(4));
            at += length + 12;
        }
        return at == file.size() ? QString() : QStringLiteral("bytes after the end");
    }

    void take(const QByteArray& type, const QByteArray& content) {
        const QString name = QString::fromLatin1(type);
        if (name != QLatin1String("IDAT") || png.chunks.isEmpty() || png.chunks.last() != name)
            png.chunks << name;
        if (type == "IHDR")
            header = content;
        if (type == "IDAT")
            data += content;
    }

    QString decode() {
        if (png.chunks.first() != QLatin1String("IHDR") || png.chunks.last() != QLatin1String("IEND") ||
            header.size() != 13 || png.chunks.count(QLatin1String("IDAT")) != 1)
            return QStringLiteral("chunks are missing or not in order");
        const QSize size(static_cast<int>(number(header, 0)), static_cast<int>(number(header, 4)));
        png.bitDepth = header[8];
        png.colorType = header[9];
        const qsizetype pixel = png.colorType == 0 ? 1 : png.colorType == 2 ? 3 : png.colorType == 6 ? 4 : 0;
        if (pixel == 0 || png.bitDepth != 8 || header.mid(10) != QByteArray(3, '\0'))
            return QStringLiteral("a header that this reader doesn't know");
        const qsizetype rowBytes = pixel * size.width();
        QByteArray rows((rowBytes + 1) * size.height(), '\0');
        libdeflate_decompressor* inflater = libdeflate_alloc_decompressor();
        size_t used = 0;
        const libdeflate_result result =
            libdeflate_zlib_decompress_ex(inflater, data.constData(), static_cast<size_t>(data.size()),
                                          rows.data(), static_cast<size_t>(rows.size()), &used, nullptr);
        libdeflate_free_decompressor(inflater);
        if (result != LIBDEFLATE_SUCCESS || used != static_cast<size_t>(data.size()))
            return QStringLiteral("the compressed stream is broken");
        if (!unfilter(rows, rowBytes, pixel))
            return QStringLiteral("an unknown filter");
        png.pixels = painted(rows, size, pixel);
        return {};
    }
};

} // namespace

PlainPng readPlainPng(const QByteArray& file) {
    Reading reading;
    reading.png.trouble = reading.readChunks(file);
    if (reading.png.trouble.isEmpty())
        reading.png.trouble = reading.decode();
    return reading.png;
}

} // namespace marrowfin::test
