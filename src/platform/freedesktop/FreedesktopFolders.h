// The user's folders by the XDG rules. Main thread.
#pragma once

#include "platform/Desktop.h"

namespace marrowfin::freedesktop {

class FreedesktopFolders : public platform::Folders {
public:
    QString applicationSupport() const override;
    QString configuration() const override;
    std::optional<QString> pictures() const override;
    std::optional<QString> movies() const override;
    QString temporary() const override;
};

} // namespace marrowfin::freedesktop
