#include "chrome/ChromePassthroughView.h"

namespace marrowfin::chrome {

ChromePassthroughView::ChromePassthroughView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

} // namespace marrowfin::chrome
