#include "platform/fake/FakeScrollGestures.h"

#include <algorithm>

namespace marrowfin::fake {

struct FakeScrollGestures::Listener {
    QPointer<QWidget> widget;
    Handler handler;
};

class FakeScrollGestures::Watch : public platform::ScrollWatch {
public:
    explicit Watch(std::shared_ptr<Listener> listener) : listener(std::move(listener)) {}

private:
    std::shared_ptr<Listener> listener;
};

std::unique_ptr<platform::ScrollWatch> FakeScrollGestures::watch(QWidget& widget, Handler handler) {
    auto listener = std::make_shared<Listener>(Listener{&widget, std::move(handler)});
    listeners.push_back(listener);
    return std::make_unique<Watch>(std::move(listener));
}

void FakeScrollGestures::play(const QWidget& widget, platform::ScrollPhase phase, const QPointF& delta) {
    for (const std::weak_ptr<Listener>& weak : std::vector(listeners))
        if (const std::shared_ptr<Listener> listener = weak.lock(); listener && listener->widget == &widget)
            listener->handler({phase, delta});
}

int FakeScrollGestures::watchCount() const {
    return static_cast<int>(std::count_if(listeners.begin(), listeners.end(),
                                          [](const auto& listener) { return !listener.expired(); }));
}

} // namespace marrowfin::fake
