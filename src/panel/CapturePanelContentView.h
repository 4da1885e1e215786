// The card inside its window: its surface, the capture, the caption, the bar of buttons, and all that moves.
// Frames are points of the window, y up; regions are the widget's own (y down). It acts on nothing itself:
// wishes go to PanelActions. Main thread.
#pragma once

#include "chrome/LayerHost.h"
#include "chrome/Rise.h"
#include "imaging/Image.h"
#include "panel/CapsuleBarView.h"
#include "panel/CaptionLabel.h"
#include "panel/CardSurface.h"
#include "panel/CountdownLine.h"
#include "panel/DragExport.h"
#include "panel/PanelActions.h"
#include "panel/SoftShadow.h"
#include "panel/SwipeGesture.h"
#include "panel/Thumbnail.h"
#include "platform/ScrollGestures.h"

#include <QRegion>
#include <QWidget>
#include <optional>

namespace marrowfin::panel {

enum class HoverSource { Pointer, Program };

class CapturePanelContentView : public QWidget {
    Q_OBJECT
public:
    CapturePanelContentView(const imaging::Image& image, PanelActions actions,
                            BackdropKind kind = backdropOfThisDesktop());

    // Where the card takes the mouse; the halo around it doesn't.
    QRegion cardRegion() const;
    // The card's rounded outline, for desktops that can't show a translucent halo.
    QRegion cardOutline() const;
    // Whether the desktop blends the halo and the plate with what is behind.
    void setComposited(bool composited);

    void playArrival();
    void startCountdown(double seconds);
    void freezeCountdown();

    // Counts for the hint only when the pointer did it.
    void setHovered(bool hovered, HoverSource source);
    bool isHovered() const { return hovered; }

    QString captionText() const { return caption->text(); }
    // Shows or hides the hint, whatever has been counted; nothing is counted on this card then.
    void overrideDragHint(bool shows);
    bool showsDragHint() const { return showsHint; }
    bool isInDragSession() const { return dragging; }
    const DragExport& dragExport() const { return exported; }
    // What the card shows of its capture, each made once.
    const Thumbnail& renders() const { return thumbnail; }
    const CapsuleBarView& capsuleBar() const { return *capsule; }

    // As seen now, in the window, y up.
    QRectF captureFrame() const;
    QRectF capsuleFrame() const;
    QRectF captionFrame() const;
    const chrome::Layer& assemblyLayer() const { return assembly; }
    const chrome::Layer& recedeLayer() const { return recede; }
    const chrome::Layer& countdownLayer() const { return countdown.layer(); }
    const SoftShadow& softShadow() const { return shadow; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    chrome::Layer& buildThumbnail();
    void buildCapsule();
    void buildCaption();
    void applyAppearance();
    void updateCaption();
    void pointerAt(const QPointF& position);
    void pointerHover(bool entered);
    void lift(bool up, chrome::Motion motion);
    void recedeCapture(bool back, chrome::Motion motion);
    void countHintExposure(HoverSource source);
    void beginDrag();
    void scrolled(const platform::ScrollStep& step);

    imaging::Image image;
    PanelActions actions;
    Thumbnail thumbnail;
    chrome::LayerHost host;
    chrome::Layer& assembly;
    SoftShadow shadow;
    CardSurface surface;
    chrome::Layer& thumbHolder;
    chrome::Layer& recede;
    chrome::Layer& mount;
    chrome::Layer& sharp;
    CountdownLine countdown;
    CapsuleBarView* capsule = nullptr;
    CaptionLabel* caption = nullptr;
    std::unique_ptr<chrome::Rise> capsuleRise;
    std::unique_ptr<chrome::Rise> captionRise;
    DragExport exported;
    SwipeGesture swipe;
    std::unique_ptr<platform::ScrollWatch> scrollWatch;

    bool hovered = false;
    bool composited = true;
    std::optional<qint64> captureByteCount;
    bool showsHint = false;
    bool hintOverridden = false;
    bool hintExposureCounted = false;
    double arrivalTime = 0;
    // A press that may become a click or a drag.
    std::optional<QPointF> pressPosition;
    bool dragStarted = false;
    bool dragging = false;
};

} // namespace marrowfin::panel
