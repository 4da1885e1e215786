// The save dialog of an editor: asks where, then writes the image there. It returns at once and never waits
// in an event loop of its own. Main thread; the file is written on its folder's queue.
#pragma once

#include "imaging/Image.h"

#include <QString>
#include <functional>

class QWidget;

namespace marrowfin::editor {

// A sheet of the view's window, one at a time, which proposes a name with the present time. The bytes are a
// PNG whatever the name's ending. When something was chosen and the image could be encoded, `written` is
// called with the path, whether or not the file could be written; the view may be gone by then. A view that
// goes while the dialog is up takes it along.
void askWhereToSave(const imaging::Image& image, QWidget* view,
                    std::function<void(const QString& path)> written);

} // namespace marrowfin::editor
