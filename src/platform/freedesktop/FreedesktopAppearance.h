// Light or dark, the accent, and whether things should move: from the settings portal, live. Until the portal
// has answered, or where there is none, the palette that the toolkit found decides. Main thread.
#pragma once

#include "platform/Desktop.h"

#include <memory>

class SettingsProxy;

namespace marrowfin::freedesktop {

class FreedesktopAppearance : public platform::Appearance {
    Q_OBJECT
public:
    FreedesktopAppearance();
    ~FreedesktopAppearance() override;

    ColorScheme colorScheme() const override { return scheme; }
    bool reduceMotion() const override { return animationsOff || kdeAnimationsOff; }
    QColor accentColor() const override;

private:
    void askPortal();
    void ask(const QString& group, const QString& key);
    void take(const QString& group, const QString& key, QVariant value);

    std::unique_ptr<SettingsProxy> settings;
    ColorScheme toolkitScheme; // before our own palette is set
    ColorScheme scheme;
    QColor accent; // invalid when the user has chosen none
    bool animationsOff = false;
    bool kdeAnimationsOff = false;
};

} // namespace marrowfin::freedesktop
