#include "capture/PermissionAlert.h"

#include "base/Log.h"
#include "chrome/Alert.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

namespace marrowfin::capture {

Flow<> showPermissionAlert(Error why) {
    chrome::AlertSpec alert;
    alert.messageText = QStringLiteral("Screen Recording Permission Required");
    alert.informativeText = QStringLiteral(
        "Marrowfin needs screen recording permission. Please enable it in System Settings > Privacy & "
        "Security > Screen Recording, then relaunch the app.");
    if (why.kind == Error::Kind::Unavailable)
        alert.informativeText += QStringLiteral("\n\n") + why.message;
    alert.buttons = {QStringLiteral("Open Settings"), QStringLiteral("Cancel")};
    const Result<int> response = co_await chrome::runAlert(alert);
    if (response != chrome::alertFirstButton)
        co_return;
    const Result<void> opened =
        co_await platform::services().opener.openSettings(platform::SettingsPage::ScreenRecording);
    if (!opened)
        printLine(opened.error().message);
}

} // namespace marrowfin::capture
