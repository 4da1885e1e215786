// The card's movements at stepped times: arrival, lift, recede, rise, countdown, appearance.
#include "chrome/PoseEffect.h"
#include "panel/CardPicture.h"
#include "panel/PanelFixture.h"

#include <cmath>

namespace marrowfin::panel {

using namespace settings;

using chrome::Property;

class CardMotion : public PanelFixture {
protected:
    CardMotion() { addDisplay(1, {0, 0, 1440, 900}); }

    static double number(const chrome::Layer& layer, Property property) {
        return std::get<double>(layer.presented(property));
    }
    static double scale(const chrome::Layer& layer) {
        return std::get<QTransform>(layer.presented(Property::Transform)).m11();
    }
    // Where bar and caption stand while they come and go.
    static chrome::Pose pose(const QWidget& view) {
        return static_cast<const chrome::PoseEffect*>(view.graphicsEffect())->pose();
    }
    static const QWidget& captionOf(const CapturePanelContentView& view) {
        return *view.findChild<CaptionLabel*>();
    }
    // What is left of a displacement on a spring of mass 1.
    static double oscillation(double stiffness, double damping, double t) {
        const double w = std::sqrt(stiffness - damping * damping / 4);
        return std::exp(-damping / 2 * t) * (std::cos(w * t) + damping / 2 / w * std::sin(w * t));
    }
};

TEST_F(CardMotion, TheCardArrivesOnItsSpringAndTheCaptureFollows) {
    CapturePanelContentView& view = present()->content();
    EXPECT_EQ(number(view.assemblyLayer(), Property::Opacity), 0);
    EXPECT_NEAR(scale(view.assemblyLayer()), 0.94, 1e-9);
    for (int frame = 1; frame <= 30; ++frame) {
        pass(1 / 60.0);
        EXPECT_NEAR(scale(view.assemblyLayer()), 1 - 0.06 * oscillation(340, 26, frame / 60.0), 1e-6)
            << frame;
        if (frame <= 5) {
            EXPECT_EQ(number(view.recedeLayer(), Property::Opacity), 0) << frame;
        }
    }
    EXPECT_EQ(number(view.assemblyLayer(), Property::Opacity), 1);
    EXPECT_EQ(number(view.recedeLayer(), Property::Opacity), 1);
    pass(1);
    EXPECT_EQ(scale(view.assemblyLayer()), 1);
}

TEST_F(CardMotion, WithReducedMotionTheArrivalIsAFade) {
    desktop.appearance.setReduceMotion(true);
    CapturePanelContentView& view = present()->content();
    pass(0.1);
    EXPECT_EQ(scale(view.assemblyLayer()), 1);
    EXPECT_NEAR(number(view.assemblyLayer(), Property::Opacity), 0.5, 1e-6);
    EXPECT_EQ(number(view.recedeLayer(), Property::Opacity), 1);
}

TEST_F(CardMotion, HoverLiftsAndRecedesOnSpringsAndShadowGrows) {
    CapturePanelContentView& view = presentSettled()->content();
    view.setHovered(true, HoverSource::Program);
    for (int frame = 1; frame <= 20; ++frame) {
        pass(1 / 60.0);
        EXPECT_NEAR(scale(view.assemblyLayer()), 1.012 - 0.012 * oscillation(380, 28, frame / 60.0), 1e-6);
        EXPECT_NEAR(scale(view.recedeLayer()), 0.6 + 0.4 * oscillation(420, 26, frame / 60.0), 1e-6);
    }
    EXPECT_NEAR(number(view.softShadow().ambientLayer(), Property::ShadowRadius), 20, 1e-9);
    EXPECT_NEAR(number(view.softShadow().ambientLayer(), Property::ShadowOpacity), 0.38, 1e-9);
    EXPECT_NEAR(number(view.softShadow().contactLayer(), Property::ShadowOpacity), 0.2, 1e-9);
    view.setHovered(false, HoverSource::Program);
    pass(0.15);
    EXPECT_EQ(scale(view.recedeLayer()), 1);
}

TEST_F(CardMotion, AReversalInMidFlightDoesNotJump) {
    CapturePanelContentView& view = presentSettled()->content();
    view.setHovered(true, HoverSource::Program);
    pass(0.05);
    const double lifted = scale(view.assemblyLayer());
    const double receded = scale(view.recedeLayer());
    const double radius = number(view.softShadow().ambientLayer(), Property::ShadowRadius);
    view.setHovered(false, HoverSource::Program);
    EXPECT_NEAR(scale(view.assemblyLayer()), lifted, 1e-9);
    EXPECT_NEAR(scale(view.recedeLayer()), receded, 1e-9);
    EXPECT_NEAR(number(view.softShadow().ambientLayer(), Property::ShadowRadius), radius, 1e-9);
}

TEST_F(CardMotion, WithReducedMotionHoverAppliesAtOnce) {
    desktop.appearance.setReduceMotion(true);
    CapturePanelContentView& view = presentSettled()->content();
    view.setHovered(true, HoverSource::Program);
    EXPECT_NEAR(scale(view.assemblyLayer()), 1.012, 1e-9);
    EXPECT_NEAR(scale(view.recedeLayer()), 0.6, 1e-9);
    pass(0.08); // half of a fade that is left
    for (const QWidget* risen : {static_cast<const QWidget*>(&view.capsuleBar()), &captionOf(view)}) {
        EXPECT_EQ(pose(*risen).offset, QPointF(0, 0));
        EXPECT_GT(pose(*risen).opacity, 0.2);
        EXPECT_LT(pose(*risen).opacity, 0.8);
    }
    pass(0.1);
    EXPECT_EQ(pose(view.capsuleBar()).opacity, 1);
    view.setHovered(false, HoverSource::Program);
    EXPECT_EQ(scale(view.recedeLayer()), 1);
    pass(0.07);
    EXPECT_EQ(pose(view.capsuleBar()).offset, QPointF(0, -7));
    EXPECT_GT(pose(view.capsuleBar()).opacity, 0.2);
    EXPECT_LT(pose(view.capsuleBar()).opacity, 0.8);
}

TEST_F(CardMotion, LeavingWhileTheBarComesUpTurnsItRoundWhereItStands) {
    CapturePanelContentView& view = presentSettled()->content();
    view.setHovered(true, HoverSource::Program);
    EXPECT_NEAR(pose(view.capsuleBar()).offset.y(), -7, 1e-9);
    pass(0.05);
    for (const QWidget* rising : {static_cast<const QWidget*>(&view.capsuleBar()), &captionOf(view)}) {
        EXPECT_GT(pose(*rising).offset.y(), -6);
        EXPECT_LT(pose(*rising).offset.y(), -0.5);
    }
    const chrome::Pose turning = pose(view.capsuleBar());
    view.setHovered(false, HoverSource::Program);
    EXPECT_NEAR(pose(view.capsuleBar()).offset.y(), turning.offset.y(), 1e-9);
    EXPECT_NEAR(pose(view.capsuleBar()).opacity, turning.opacity, 1e-9);
    pass(1 / 60.0);
    EXPECT_LT(pose(view.capsuleBar()).offset.y(), turning.offset.y()); // down from there
    EXPECT_GT(pose(view.capsuleBar()).offset.y(), turning.offset.y() - 1);
    pass(0.15);
    EXPECT_EQ(pose(view.capsuleBar()).opacity, 0);
}

TEST_F(CardMotion, TheCountdownComesUpAfterTheArrivalAndDrains) {
    CapturePanelContentView& view = present()->content();
    const chrome::Layer& line = view.countdownLayer();
    pass(0.45);
    EXPECT_EQ(number(line, Property::Opacity), 0);
    EXPECT_NEAR(number(line, Property::StrokeEnd), 1 - 0.45 / 15, 1e-6);
    pass(0.175);
    EXPECT_NEAR(number(line, Property::Opacity), 0.5, 0.01);
    pass(6.875);
    EXPECT_EQ(number(line, Property::Opacity), 1);
    EXPECT_NEAR(number(line, Property::StrokeEnd), 0.5, 1e-6);
}

TEST_F(CardMotion, HoverStopsAndFadesTheCountdownAndLeavingStartsItAnew) {
    CapturePanel* panel = present();
    const chrome::Layer& line = panel->content().countdownLayer();
    pass(5);
    pointAtPlace(panel->content(), onCard(120, 80));
    const double stopped = number(line, Property::StrokeEnd);
    EXPECT_NEAR(stopped, 10 / 15.0, 1e-6);
    pass(0.075);
    EXPECT_NEAR(number(line, Property::Opacity), 0.5, 0.01);
    pass(3);
    EXPECT_EQ(number(line, Property::StrokeEnd), stopped);
    EXPECT_EQ(number(line, Property::Opacity), 0);
    pointAway(panel->content());
    EXPECT_EQ(number(line, Property::StrokeEnd), 1);
    pass(0.125);
    EXPECT_NEAR(number(line, Property::Opacity), 0.5, 0.01); // at once, long after the arrival
}

TEST_F(CardMotion, WithNeverThereIsNoLine) {
    SettingsStore::shared().setPanelAutoClose(PanelAutoClose::never);
    CapturePanelContentView& view = present()->content();
    pass(2);
    EXPECT_EQ(number(view.countdownLayer(), Property::Opacity), 0);
}

TEST_F(CardMotion, ARestingCardWakesOnlyForItsLine) {
    CapturePanelContentView& view = presentSettled()->content();
    pass(2);
    int paints = 0;
    class Counter : public QObject {
    public:
        explicit Counter(int& count) : count(count) {}
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint;
            return false;
        }
        int& count;
    } counter(paints);
    view.installEventFilter(&counter);
    for (int step = 0; step < 500; ++step)
        pass(0.01); // a third of the line's 192 pixels
    EXPECT_NEAR(paints, 64, 2);
}

TEST_F(CardMotion, AnAppearanceThatChangesIsFollowedAtOnce) {
    CapturePanelContentView& view = presentSettled()->content();
    EXPECT_EQ(number(view.softShadow().ambientLayer(), Property::ShadowOpacity), 0.3);
    desktop.appearance.setColorScheme(ColorScheme::Dark);
    EXPECT_EQ(number(view.softShadow().ambientLayer(), Property::ShadowOpacity), 0.38);
    EXPECT_EQ(number(view.softShadow().contactLayer(), Property::ShadowOpacity), 0.28);
}

TEST_F(CardMotion, WhileItIsUpACardTurnsDarkWholeAndWithoutAMovement) {
    SettingsStore::shared().setPanelAutoClose(PanelAutoClose::never);
    CapturePanelContentView& turned = presentSettled()->content();
    turned.setHovered(true, HoverSource::Program); // with its bar and its caption
    pass(2);
    const QImage light = cardPicture(turned, 1);
    desktop.appearance.setColorScheme(ColorScheme::Dark);
    const QImage dark = cardPicture(turned, 1);
    EXPECT_FALSE(chrome::AnimationClock::shared().isRunning());
    EXPECT_NE(dark, light);
    // As one that was never anything else.
    CapturePanelContentView& born = presentSettled()->content();
    born.setHovered(true, HoverSource::Program);
    pass(2);
    EXPECT_EQ(dark, cardPicture(born, 1));
    desktop.appearance.setColorScheme(ColorScheme::Light);
    EXPECT_EQ(cardPicture(turned, 1), light);
}

} // namespace marrowfin::panel
