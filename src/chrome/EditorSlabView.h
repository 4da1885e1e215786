// The rounded translucent plate that the editor's controls and the text panel float on: a shadow around it, a
// rim of light along its top edge, a hairline. The widget is the plate itself, without the shadow; it is
// placed by chrome::place once it has its content's size. Points; insets and frames y up. Main thread.
#pragma once

#include "base/SystemColors.h"
#include "chrome/SlabShadowView.h"

#include <QPointer>
#include <functional>
#include <optional>

namespace marrowfin::chrome {

class GradientLayer;
class ShapeLayer;
class SlabBackdrop;

enum class SlabGround {
    Window,  // floats over a view of its own window
    Desktop, // floats over other applications' windows
};

class EditorSlabView : public QWidget {
    Q_OBJECT
public:
    EditorSlabView(SlabGround ground, double radius, QWidget* parent = nullptr);
    ~EditorSlabView() override;

    // Sizes the plate to hold content of this size, with this much room around it.
    void setContentSize(double width, double height, double top, double left, double bottom, double right);
    // Holds the controls; chrome::place(control, frame) with the content's bottom left as origin.
    QWidget* content() const { return contentView; }

    // Within a window: what the plate shows blurred, a widget that lies below it. `paint` paints a part of
    // that widget as it stands, opaque, in a space of its points. Without it the plate is plainly
    // translucent.
    void setBackdrop(QWidget& widget, std::function<void(QPainter&, const QRect& part)> paint);
    // This part of the backdrop's widget has changed, in its points.
    void backdropChanged(const QRegion& region);

    double radius() const { return cornerRadius; }
    bool isOverDesktop() const { return ground == SlabGround::Desktop; }
    // Real glass is a platform's material; there is none here.
    static constexpr bool liquidGlass = false;
    const ShapeLayer& fallbackRing() const { return ring; }
    const GradientLayer& rim() const { return rimLight; }
    // The sibling below the plate, which follows it wherever it goes; null once their parent has taken it
    // along.
    SlabShadowView* slabShadow() const { return shadow; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    class RimHost;
    void applyAppearance();
    void takeShadowAlong();
    // The plate, in the space of the backdrop's widget.
    QRect placeInBackdrop() const;
    // Fills with the blurred backdrop, where there is one.
    std::optional<QBrush> blurBrush();

    SlabGround ground;
    double cornerRadius;
    QPointer<SlabShadowView> shadow;
    QPointer<QWidget> beneath;
    std::unique_ptr<SlabBackdrop> backdrop;
    QWidget* contentView;
    RimHost* rimHost;
    ShapeLayer& ring;
    GradientLayer& rimLight;
    ShapeLayer& rimMask;
    ColorScheme scheme = ColorScheme::Light;
};

} // namespace marrowfin::chrome
