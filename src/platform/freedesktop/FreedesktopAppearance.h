// Light or dark, and whether things should move: from the settings portal, live. Until the portal has
// answered, or where there is none, the palette that the toolkit found decides. Main thread.
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

private:
    void askPortal();
    void ask(const QString& group, const QString& key);
    void take(const QString& group, const QString& key, QVariant value);

    std::unique_ptr<SettingsProxy> settings;
    ColorScheme toolkitScheme; // before our own palette is set
    ColorScheme scheme;
    bool animationsOff = false;
    bool kdeAnimationsOff = false;
};

} // namespace marrowfin::freedesktop
