#include "app/Introductions.h"

#include "editor/EditorWindowController.h"
#include "panel/CapturePanelController.h"
#include "pin/PinManager.h"

namespace marrowfin::app {

using namespace editor;
using namespace imaging;
using namespace panel;

namespace {

void pinImage(const Image& image) {
    pin::PinManager::shared().pin(image);
}

CardEditor makeCardEditor(const Image& image, const std::function<void()>& windowWillClose) {
    const std::shared_ptr<EditorWindowController> made = makeEditor(image);
    EditorWindowController* editor = made.get();
    QObject::connect(editor, &EditorWindowController::windowWillClose, editor, windowWillClose);
    return {made, [editor] { editor->showWindow(); }};
}

} // namespace

std::shared_ptr<EditorWindowController> makeEditor(const Image& image) {
    return EditorWindowController::make(image, {pinImage});
}

void introduceCards() {
    CapturePanelController::shared().setRequests({makeCardEditor, pinImage});
}

} // namespace marrowfin::app
