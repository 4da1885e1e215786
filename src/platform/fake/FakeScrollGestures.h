// Plays fingers on a touchpad: hands each step to whoever watches that widget. Tests only.
#pragma once

#include "platform/ScrollGestures.h"

#include <QPointer>
#include <QWidget>
#include <vector>

namespace marrowfin::fake {

class FakeScrollGestures : public platform::ScrollGestures {
public:
    std::unique_ptr<platform::ScrollWatch> watch(QWidget& widget, Handler handler) override;

    // The fingers over this widget.
    void play(const QWidget& widget, platform::ScrollPhase phase, const QPointF& delta = {});
    // Watches that live.
    int watchCount() const;

private:
    struct Listener;
    class Watch;
    std::vector<std::weak_ptr<Listener>> listeners;
};

} // namespace marrowfin::fake
