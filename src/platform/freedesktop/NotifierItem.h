// One status item on D-Bus (org.kde.StatusNotifierItem), known to the desktop's watcher while it lives. It
// exports no menu: hosts keep a copy of what is exported, and ours is built afresh on every click. Main
// thread.
#pragma once

#include "platform/StatusItem.h"
#include "platform/freedesktop/NotifierTypes.h"

#include <QObject>
#include <QPoint>

namespace marrowfin::freedesktop {

class NotifierItem : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(marrowfin::freedesktop::NotifierPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(marrowfin::freedesktop::NotifierToolTip ToolTip READ toolTip)

public:
    // The point is where the host says that the item is, in native pixels; (0, 0) when it doesn't say.
    using Click = std::function<void(platform::StatusItemButton, QPoint)>;

    explicit NotifierItem(Click click);
    ~NotifierItem() override;

    void setIcons(NotifierPixmaps icons);
    void setToolTip(const QString& text);

    QString category() const;
    QString id() const;
    QString title() const;
    QString status() const;
    int windowId() const { return 0; }
    bool itemIsMenu() const { return false; }
    QString iconName() const { return {}; }
    NotifierPixmaps iconPixmap() const { return pixmaps; }
    NotifierToolTip toolTip() const { return {{}, {}, tip, {}}; }

public Q_SLOTS: // called by the host, on release of a button
    void Activate(int x, int y);
    void ContextMenu(int x, int y);
    void SecondaryActivate(int x, int y);
    void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    void NewIcon();
    void NewToolTip();

private:
    Click click;
    QString service;
    NotifierPixmaps pixmaps;
    QString tip;
};

} // namespace marrowfin::freedesktop
