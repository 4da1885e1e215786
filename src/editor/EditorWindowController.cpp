#include "editor/EditorWindowController.h"

#include "base/Log.h"
#include "base/Memory.h"
#include "base/Shared.h"
#include "editor/EditorRootView.h"
#include "platform/Screens.h"
#include "platform/Services.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <algorithm>

namespace marrowfin::editor {

using namespace imaging;

namespace {

// What the chrome takes at the sides, and above and below.
constexpr QSizeF besidesTheImage{96, 128};

class OpenEditors : public QObject {
public:
    ~OpenEditors() override {
        // A window that goes may reach for the list.
        const auto last = std::exchange(list, {});
    }
    std::vector<std::shared_ptr<EditorWindowController>> list;
};

OpenEditors& allOpen() {
    return Shared<OpenEditors>::instance();
}

QScreen* toolkitScreen(const platform::Screen& screen) {
    const QList<QScreen*> all = QGuiApplication::screens();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const QScreen* one) { return one->name() == screen.name; });
    return found == all.end() ? QGuiApplication::primaryScreen() : *found;
}

// On the screen in use, clear of its panels; a window larger than that keeps its title bar in reach.
void center(QWidget& window) {
    const std::optional<platform::Screen> screen = platform::services().screens.mainScreen();
    if (!screen)
        return;
    const QRectF& whole = screen->frame.rect;
    const QRectF& free = screen->visibleFrame.rect;
    const QPointF corner(free.left() - whole.left(), whole.bottom() - free.bottom());
    const QPointF margin((free.width() - window.width()) / 2, (free.height() - window.height()) / 2);
    QScreen* shownOn = toolkitScreen(*screen);
    window.setScreen(shownOn);
    window.move(shownOn->geometry().topLeft() +
                (corner + QPointF(std::max(margin.x(), 0.0), std::max(margin.y(), 0.0))).toPoint());
}

} // namespace

QSize editorWindowSize(const QSizeF& imageSize) {
    const QSize wanted = (imageSize + besidesTheImage).toSize();
    return wanted.expandedTo(minimumEditorWindowSize).boundedTo(maximumFirstEditorWindowSize);
}

std::shared_ptr<EditorWindowController> EditorWindowController::make(const Image& image,
                                                                     const EditorRequests& requests) {
    std::shared_ptr<EditorWindowController> made(new EditorWindowController(image));
    made->connectRootView(requests);
    allOpen().list.push_back(made);
    return made;
}

const std::vector<std::shared_ptr<EditorWindowController>>& EditorWindowController::openEditors() {
    return allOpen().list;
}

EditorWindowController::EditorWindowController(const Image& image)
    : original(image), frame(std::make_unique<QWidget>()) {
    buildWindow();
}

EditorWindowController::~EditorWindowController() = default;

void EditorWindowController::buildWindow() {
    frame->setObjectName(QStringLiteral("editor"));
    frame->setWindowTitle(QStringLiteral("Marrowfin Editor"));
    frame->setMinimumSize(minimumEditorWindowSize);
    frame->resize(editorWindowSize(original.size()));
    center(*frame);
    root = new EditorRootView(original, frame.get());
    auto* contents = new QVBoxLayout(frame.get());
    contents->setContentsMargins({});
    contents->addWidget(root);
    frame->installEventFilter(this);
}

void EditorWindowController::connectRootView(const EditorRequests& requests) {
    root->onSave = [](const QString& path) { printLine(QStringLiteral("Saved to ") + path); };
    root->onCopy = [] { printLine(QStringLiteral("Copied to clipboard")); };
    root->onPin = requests.pin;
}

void EditorWindowController::showWindow() {
    if (!frame || isClosing)
        return;
    frame->show();
    frame->raise();
    frame->activateWindow();
}

bool EditorWindowController::eventFilter(QObject* watched, QEvent* event) {
    if (watched == frame.get() && event->type() == QEvent::Close && !isClosing) {
        isClosing = true;
        Q_EMIT windowWillClose();
        // From the event loop: the close has to finish before its window may go.
        QMetaObject::invokeMethod(
            &allOpen(), [self = shared_from_this()] { self->leaveOpenEditors(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void EditorWindowController::leaveOpenEditors() {
    root = nullptr;
    frame.reset();
    giveFreeMemoryBackWhenCalm();
    std::erase_if(allOpen().list, [this](const auto& one) { return one.get() == this; });
}

} // namespace marrowfin::editor
