// Small services of the desktop: opening things, the user's folders, the appearance. Main thread.
#pragma once

#include "base/Outcome.h"
#include "base/SystemColors.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QUrl>
#include <optional>

namespace marrowfin::platform {

enum class SettingsPage { Keyboard, ScreenRecording };

class Opener {
public:
    virtual ~Opener() = default;
    virtual Outcome<void> openUrl(const QUrl& url) = 0;
    // Unavailable, with a sentence, where this desktop has no such page.
    virtual Outcome<void> openSettings(SettingsPage page) = 0;
    // Shows the file in the file manager.
    virtual Outcome<void> reveal(const QString& path) = 0;
    virtual void beep() = 0;
};

// Absolute paths. They may not exist yet; nobody makes them here.
class Folders {
public:
    virtual ~Folders() = default;
    virtual QString applicationSupport() const = 0; // $XDG_DATA_HOME
    virtual QString configuration() const = 0;      // $XDG_CONFIG_HOME
    virtual std::optional<QString> pictures() const = 0;
    virtual std::optional<QString> movies() const = 0;
    virtual QString temporary() const = 0;
};

class Appearance : public QObject {
    Q_OBJECT
public:
    virtual ColorScheme colorScheme() const = 0;
    virtual bool reduceMotion() const = 0;
    // What the user chose for what is chosen or pressed; the blue of systemColor(controlAccent) where nobody
    // chose anything. Opaque.
    virtual QColor accentColor() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace marrowfin::platform
