// The toolkit's picture of a window lies in memory shared with the server. A large one comes page by page as
// it is first painted, which takes longer than the painting; this has all of it there before. Main thread.
#pragma once

class QWidget;

namespace marrowfin::x11 {

// For a window that is about to be shown and painted whole, at its present size. A wish: where the system
// can't, the pages come as they are painted.
void prepareBackingMemory(QWidget& window);

} // namespace marrowfin::x11
