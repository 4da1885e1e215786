// A drag session that carries a file out of a card. Main thread; the session runs an event loop of its own.
#pragma once

#include "panel/PanelActions.h"

#include <QString>

class QDrag;
class QWidget;

namespace marrowfin::panel {

struct CardDrag {
    QString file;
    DragPreview preview;
};

// Runs the session to its end. The source may be hidden meanwhile, but must not be destroyed.
Drop runCardDrag(QWidget& source, const CardDrag& drag);

// The part that needs a window system; tests put another in its place.
class DragRunner {
public:
    static DragRunner& shared();
    virtual ~DragRunner() = default;
    virtual Qt::DropAction run(QDrag& drag, QWidget& source);
};

} // namespace marrowfin::panel
