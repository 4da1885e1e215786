// Holds decoration above controls and never takes the mouse: what lies below is pressed. Points. Main thread.
#pragma once

#include <QWidget>

namespace marrowfin::chrome {

class ChromePassthroughView : public QWidget {
    Q_OBJECT
public:
    explicit ChromePassthroughView(QWidget* parent = nullptr);
};

} // namespace marrowfin::chrome
