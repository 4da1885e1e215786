// The values of the StatusNotifierItem protocol as they travel over D-Bus.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

namespace marrowfin::freedesktop {

// (iiay): straight alpha, one big-endian ARGB word a pixel, row by row.
struct NotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static NotifierPixmap from(const QImage& image);
    QImage image() const;
};
using NotifierPixmaps = QList<NotifierPixmap>;

// (sa(iiay)ss)
struct NotifierToolTip {
    QString iconName;
    NotifierPixmaps icons;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& out, const NotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& in, NotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& out, const NotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& in, NotifierToolTip& toolTip);

// Makes the three known to D-Bus; more than once does no harm.
void registerNotifierTypes();

} // namespace marrowfin::freedesktop

Q_DECLARE_METATYPE(marrowfin::freedesktop::NotifierPixmap)
Q_DECLARE_METATYPE(marrowfin::freedesktop::NotifierToolTip)
