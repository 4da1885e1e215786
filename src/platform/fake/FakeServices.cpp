#include "platform/fake/FakeServices.h"

#include <QCursor>
#include <QMenu>

namespace marrowfin::fake {

using namespace imaging;
using namespace platform;

std::optional<Screen> FakeScreens::mainScreen() {
    if (shown.empty())
        return std::nullopt;
    for (const Screen& screen : shown)
        if (mainDisplayID == screen.displayID)
            return screen;
    return shown.front();
}

void FakeScreens::add(std::uint32_t id, const QRectF& frame, double scale, double bottomStrut,
                      double topStrut) {
    Screen screen;
    screen.displayID = id;
    screen.frame = DesktopRect{frame};
    screen.visibleFrame = DesktopRect{
        {frame.x(), frame.y() + bottomStrut, frame.width(), frame.height() - bottomStrut - topStrut}};
    screen.backingScaleFactor = scale;
    screen.name = QStringLiteral("fake-%1").arg(id);
    shown.push_back(screen);
}

void FakeScreens::remove(std::uint32_t id) {
    std::erase_if(shown, [id](const Screen& screen) { return screen.displayID == id; });
}

HotKeyStatus FakeHotKeys::installHandler(Handler wanted) {
    if (installStatus == hotKeyNoError)
        handler = std::move(wanted);
    return installStatus;
}

Outcome<HotKeyRegistration> FakeHotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                        HotKeyID id) {
    ++registrations;
    if (taken.contains(keyCode))
        return settled<HotKeyRegistration>(HotKeyRegistration{hotKeyExists, 0});
    if (withoutReference.contains(keyCode))
        return settled<HotKeyRegistration>(HotKeyRegistration{hotKeyNoError, 0});
    const HotKeyRef reference = static_cast<HotKeyRef>(registrations);
    held[reference] = {keyCode, modifiers, id};
    return settled<HotKeyRegistration>(HotKeyRegistration{hotKeyNoError, reference});
}

HotKeyStatus FakeHotKeys::press(HotKeyID id) {
    return handler ? handler(id) : hotKeyNotHandled;
}

void FakePasteboard::clearContents() {
    if (onClear)
        onClear();
    calls.push_back(QStringLiteral("clearContents"));
    image.reset();
    text.reset();
}

Outcome<void> FakePasteboard::writeImage(const Image& written) {
    calls.push_back(QStringLiteral("writeImage"));
    if (writeError)
        return settled<void>(tl::unexpected(*writeError));
    image = written;
    return settled<void>({});
}

Outcome<void> FakePasteboard::writeText(const QString& written) {
    calls.push_back(QStringLiteral("writeText"));
    text = written;
    return settled<void>({});
}

void FakeStatusItem::popUp(QMenu& menu) {
    ++popUps;
    shownMenu = &menu;
    menu.popup(QCursor::pos());
}

std::unique_ptr<StatusItem> FakeStatusBar::makeItem() {
    ++itemsMade;
    auto made = std::make_unique<FakeStatusItem>();
    made->button = button;
    item = made.get();
    return made;
}

Outcome<void> FakeOpener::openUrl(const QUrl& url) {
    urls.push_back(url);
    return settled<void>({});
}

Outcome<void> FakeOpener::openSettings(SettingsPage page) {
    pages.push_back(page);
    return settled<void>({});
}

Outcome<void> FakeOpener::reveal(const QString& path) {
    revealed.push_back(path);
    return settled<void>({});
}

std::optional<QString> FakeFolders::pictures() const {
    if (!hasPictures)
        return std::nullopt;
    return root.filePath(QStringLiteral("Pictures"));
}

void FakeAppearance::setColorScheme(ColorScheme value) {
    scheme = value;
    Q_EMIT changed();
}

void FakeAppearance::setReduceMotion(bool value) {
    reduced = value;
    Q_EMIT changed();
}

Outcome<bool> FakeScreenAccess::request() {
    ++requests;
    return settled<bool>(granted);
}

} // namespace marrowfin::fake
