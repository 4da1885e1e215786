// Cards, pins and editors don't know each other; here each is handed what it may ask of the others. Main
// thread.
#pragma once

#include "imaging/Image.h"

#include <memory>

namespace marrowfin::editor {
class EditorWindowController;
}

namespace marrowfin::app {

// An editor whose pins are the program's; not shown yet.
std::shared_ptr<editor::EditorWindowController> makeEditor(const imaging::Image& image);
// Cards open such editors and pin where the program pins. Once, before the first card.
void introduceCards();

} // namespace marrowfin::app
