// Alerts without a nested event loop: a flow awaits the answer while everything else goes on. Main thread.
#pragma once

#include "base/Outcome.h"

#include <QString>
#include <QStringList>

class QMessageBox;

namespace marrowfin::chrome {

struct AlertSpec {
    QString messageText;
    QString informativeText;
    QStringList buttons; // the first is the default, the last answers Escape and the window's close button
};

// The response for the first button; the next ones count up from it.
constexpr int alertFirstButton = 1000;

// A warning in a window of its own, above the others. It is destroyed once answered.
Outcome<int> runAlert(const AlertSpec& asked);

} // namespace marrowfin::chrome
