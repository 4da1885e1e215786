// The small services of a played desktop: screens, keys, clipboard, tray, folders, appearance. Each records
// what it was asked. Tests only.
#pragma once

#include "platform/Desktop.h"
#include "platform/HotKeyHandlers.h"
#include "platform/Pasteboard.h"
#include "platform/ScreenAccess.h"
#include "platform/Screens.h"
#include "platform/ScrollPoster.h"
#include "platform/StatusItem.h"
#include "platform/fake/LateAnswers.h"

#include <QPointer>
#include <QTemporaryDir>
#include <map>
#include <set>

namespace marrowfin::fake {

class FakeScreens : public platform::Screens {
    Q_OBJECT
public:
    std::vector<platform::Screen> shown;
    std::optional<std::uint32_t> mainDisplayID; // the first screen when empty
    std::optional<DesktopPoint> pointer;        // Unavailable when empty
    LateAnswers late;                           // where the pointer is

    std::vector<platform::Screen> screens() override { return shown; }
    std::optional<platform::Screen> mainScreen() override;
    Outcome<DesktopPoint> pointerLocation() override;

    // A screen of this frame; the visible frame is what the insets leave.
    void add(std::uint32_t id, const QRectF& frame, double scale = 1, double bottomStrut = 0,
             double topStrut = 0);
    void remove(std::uint32_t id);
    void tellChanged() { Q_EMIT changed(); }
};

class FakeHotKeys : public platform::HotKeyService {
public:
    struct Held {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        platform::HotKeyID id;
        QString description;
        platform::HotKeyHandlerRef handler;
    };
    platform::HotKeyStatus installStatus = platform::hotKeyNoError;
    // Key codes that another program holds.
    std::set<std::uint32_t> taken;
    // Key codes for which success comes without a reference.
    std::set<std::uint32_t> withoutReference;
    std::map<platform::HotKeyRef, Held> held;
    int registrations = 0;
    int installedHandlers = 0;

    platform::HotKeyHandlerInstallation installHandler(Handler handler) override;
    void removeHandler(platform::HotKeyHandlerRef reference) override;
    Outcome<platform::HotKeyRegistration> registerHotKey(const platform::HotKeyRequest& request) override;
    void unregisterHotKey(platform::HotKeyRef reference) override { held.erase(reference); }
    platform::HotKeyStatus postEvent(platform::HotKeyID id) override;
    QString settingsPlace() const override { return QStringLiteral("Settings > Keyboard"); }

    // Plays a press; the status is the handler's.
    platform::HotKeyStatus press(platform::HotKeyID id) { return postEvent(id); }

    // The registrations: all of one dialog.
    LateAnswers late;

private:
    platform::HotKeyRegistration answer(const platform::HotKeyRequest& request);

    platform::HotKeyHandlers handlers;
};

class FakePasteboard : public platform::Pasteboard {
public:
    std::optional<imaging::Image> image;
    std::optional<QString> text;
    std::vector<QString> calls; // "clearContents", "writeImage", "writeText", "handOver"
    // What writing an image answers.
    std::optional<Error> writeError;
    // Called when the contents are about to be cleared.
    std::function<void()> onClear;
    std::function<void()> onHandOver;

    void clearContents() override;
    Outcome<void> writeImage(const imaging::Image& image) override;
    Outcome<void> writeText(const QString& text) override;
    Outcome<std::optional<imaging::Image>> readImage() override {
        return late.give<std::optional<imaging::Image>>([this] { return image; });
    }
    LateAnswers late; // writing and reading
    void handOver() override {
        calls.push_back(QStringLiteral("handOver"));
        if (onHandOver)
            onHandOver();
    }
};

class FakeStatusItem : public platform::StatusItem {
public:
    bool button = true;
    IconDrawer icon;
    QString toolTip;
    Action action;
    QPointer<QMenu> shownMenu;
    int popUps = 0;

    bool hasButton() const override { return button; }
    void setIcon(IconDrawer drawer) override { icon = std::move(drawer); }
    void setToolTip(const QString& text) override { toolTip = text; }
    void setAction(Action done) override { action = std::move(done); }
    void popUp(QMenu& menu) override;
};

class FakeStatusBar : public platform::StatusBar {
public:
    bool button = true;
    int itemsMade = 0;
    FakeStatusItem* item = nullptr; // the last one made; owned by its taker
    std::unique_ptr<platform::StatusItem> makeItem() override;
};

class FakeOpener : public platform::Opener {
public:
    std::vector<QUrl> urls;
    std::vector<platform::SettingsPage> pages;
    std::vector<QString> revealed;
    int beeps = 0;

    Outcome<void> openUrl(const QUrl& url) override;
    Outcome<void> openSettings(platform::SettingsPage page) override;
    Outcome<void> reveal(const QString& path) override;
    void beep() override { ++beeps; }
};

// Folders below one temporary directory.
class FakeFolders : public platform::Folders {
public:
    bool hasPictures = true;
    QTemporaryDir root;

    QString applicationSupport() const override { return root.filePath(QStringLiteral("data")); }
    QString configuration() const override { return root.filePath(QStringLiteral("config")); }
    std::optional<QString> pictures() const override;
    std::optional<QString> movies() const override { return root.filePath(QStringLiteral("Videos")); }
    QString temporary() const override { return root.filePath(QStringLiteral("tmp")); }
};

class FakeAppearance : public platform::Appearance {
    Q_OBJECT
public:
    ColorScheme scheme = ColorScheme::Light;
    bool reduced = false;
    std::optional<QColor> accent;

    ColorScheme colorScheme() const override { return scheme; }
    bool reduceMotion() const override { return reduced; }
    QColor accentColor() const override {
        return accent.value_or(systemColor(SystemColor::controlAccent, scheme));
    }
    void setAccentColor(const QColor& value);
    void setColorScheme(ColorScheme value);
    void setReduceMotion(bool value);
};

// Records where the wheel was turned.
class FakeScrollPoster : public platform::ScrollPoster {
public:
    struct Scroll {
        ScreenPoint at;
        int lines;
        friend bool operator==(const Scroll&, const Scroll&) = default;
    };
    std::vector<Scroll> scrolls;
    std::optional<Error> error;
    // What moves under the wheel.
    std::function<void(const Scroll&)> onScroll;

    Outcome<void> scroll(const ScreenPoint& at, int lines) override;
};

class FakeScreenAccess : public platform::ScreenAccess {
public:
    bool granted = true;
    int requests = 0;

    LateAnswers late;

    Outcome<bool> preflight() override {
        return late.give<bool>([this] { return granted; });
    }
    Outcome<bool> request() override;
};

} // namespace marrowfin::fake
