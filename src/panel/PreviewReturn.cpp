#include "panel/PreviewReturn.h"

#include "platform/Services.h"

#include <QPainter>
#include <QWidget>

namespace marrowfin::panel {

namespace {
class Picture : public QWidget {
public:
    explicit Picture(QImage shown) : image(std::move(shown)) { setAttribute(Qt::WA_TranslucentBackground); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(rect()), image);
    }

private:
    const QImage image;
};
} // namespace

PreviewReturn::PreviewReturn(const QImage& preview, const DesktopRect& from, const DesktopRect& to)
    : picture(std::make_unique<Picture>(preview)) {
    picture->resize(from.rect.size().toSize());
    surface = platform::services().surfaceHost.host(*picture, {platform::SurfaceLevel::Card,
                                                               platform::SurfaceKeyboard::None,
                                                               platform::SurfaceBackdrop::Nothing, true});
    animator = std::make_unique<chrome::SurfaceAnimator>(*surface);
    animator->setFrame(from);
    surface->orderFront();
    animator->moveTo(to, seconds, chrome::TimingFunction::easeInEaseOut());
    arrival.start(seconds, [this] { surface->orderOut(); });
}

PreviewReturn::~PreviewReturn() = default;

} // namespace marrowfin::panel
