// What the played module hands out.
#pragma once

#include <QThread>

namespace marrowfin::testsupport {

struct PlayedModule {
    static constexpr auto entry = "marrowfinPlayedModule";
    int answer = 0;
    QThread* madeOn = nullptr;
};

} // namespace marrowfin::testsupport
