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

Outcome<DesktopPoint> FakeScreens::pointerLocation() {
    return late.give<DesktopPoint>([this]() -> Result<DesktopPoint> {
        if (!pointer)
            return unavailable(QStringLiteral("This desktop doesn't tell where the pointer is."));
        return *pointer;
    });
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

HotKeyHandlerInstallation FakeHotKeys::installHandler(Handler handler) {
    if (installStatus != hotKeyNoError)
        return {installStatus, 0};
    ++installedHandlers;
    return {hotKeyNoError, handlers.add(std::move(handler))};
}

void FakeHotKeys::removeHandler(HotKeyHandlerRef reference) {
    --installedHandlers;
    handlers.remove(reference);
}

Outcome<HotKeyRegistration> FakeHotKeys::registerHotKey(const HotKeyRequest& request) {
    return late.give<HotKeyRegistration>([this, request] { return answer(request); });
}

HotKeyRegistration FakeHotKeys::answer(const HotKeyRequest& request) {
    ++registrations;
    if (taken.contains(request.keyCode))
        return {hotKeyExists, 0};
    if (withoutReference.contains(request.keyCode))
        return {hotKeyNoError, 0};
    const HotKeyRef reference = static_cast<HotKeyRef>(registrations);
    held[reference] = {request.keyCode, request.modifiers, request.id, request.description, request.handler};
    return {hotKeyNoError, reference};
}

HotKeyStatus FakeHotKeys::postEvent(HotKeyID id) {
    for (const auto& [reference, key] : held)
        if (key.id == id)
            return handlers.deliver(id, key.handler);
    return handlers.deliver(id, 0);
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
    return late.give<void>([this, written]() -> Result<void> {
        if (writeError)
            return tl::unexpected(*writeError);
        image = written;
        return {};
    });
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

void FakeAppearance::setAccentColor(const QColor& value) {
    accent = value;
    Q_EMIT changed();
}

Outcome<void> FakeScrollPoster::scroll(const ScreenPoint& at, int lines) {
    if (error)
        return settled<void>(tl::unexpected(*error));
    scrolls.push_back({at, lines});
    if (onScroll)
        onScroll(scrolls.back());
    return settled<void>({});
}

void FakeAppearance::setReduceMotion(bool value) {
    reduced = value;
    Q_EMIT changed();
}

Outcome<bool> FakeScreenAccess::request() {
    ++requests;
    return late.give<bool>([this] { return granted; });
}

} // namespace marrowfin::fake
