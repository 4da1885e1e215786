#include "platform/freedesktop/NotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace marrowfin::freedesktop {

NotifierPixmap NotifierPixmap::from(const QImage& image) {
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    NotifierPixmap pixmap{straight.width(), straight.height(), {}};
    pixmap.bytes.reserve(straight.sizeInBytes());
    for (int y = 0; y < straight.height(); ++y) {
        const auto* row = reinterpret_cast<const quint32*>(straight.constScanLine(y));
        for (int x = 0; x < straight.width(); ++x) {
            const quint32 word = qToBigEndian(row[x]);
            pixmap.bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
        }
    }
    return pixmap;
}

QImage NotifierPixmap::image() const {
    if (width < 1 || height < 1 || bytes.size() != qsizetype(4) * width * height)
        return {};
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
            row[x] = qFromBigEndian<quint32>(bytes.constData() + 4 * (qsizetype(y) * width + x));
    }
    return image;
}

QDBusArgument& operator<<(QDBusArgument& out, const NotifierPixmap& pixmap) {
    out.beginStructure();
    out << pixmap.width << pixmap.height << pixmap.bytes;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, NotifierPixmap& pixmap) {
    in.beginStructure();
    in >> pixmap.width >> pixmap.height >> pixmap.bytes;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const NotifierToolTip& toolTip) {
    out.beginStructure();
    out << toolTip.iconName << toolTip.icons << toolTip.title << toolTip.text;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, NotifierToolTip& toolTip) {
    in.beginStructure();
    in >> toolTip.iconName >> toolTip.icons >> toolTip.title >> toolTip.text;
    in.endStructure();
    return in;
}

void registerNotifierTypes() {
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<NotifierPixmaps>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

} // namespace marrowfin::freedesktop
