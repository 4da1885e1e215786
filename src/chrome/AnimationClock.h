// Media time in seconds, and the one timer behind everything that moves. Clients say when they are next due
// and are asked again then; with no client due there is no timer at all. Frames lie on a common grid of 1/60
// s, so that many moving things cost one wake-up. Main thread.
#pragma once

#include <QTimer>
#include <optional>
#include <vector>

namespace marrowfin::chrome {

class AnimationClock {
public:
    class Client {
    public:
        virtual ~Client() = default;
        // The time has come. Returns when to be asked next, or nothing to rest.
        virtual std::optional<double> tick(double now) = 0;
    };

    static constexpr double framesPerSecond = 60;

    static AnimationClock& shared();
    AnimationClock();

    double now() const;
    // The first point of the frame grid after now.
    double nextFrame() const;
    // The client's next tick is at this time, or earlier if it already asked for an earlier one.
    void schedule(Client& client, double due);
    // No tick comes after this; clients cancel before they go.
    void cancel(Client& client);
    // False when nothing moves and nothing waits: then nothing wakes.
    bool isRunning() const { return !waiting.empty(); }

    // Tests: time stands still, at a point of the frame grid, and moves by advance() alone, which ticks every
    // client at its own due time on the way.
    void hold();
    void advance(double seconds);

private:
    struct Waiting {
        Client* client;
        double due;
    };
    void tickDue(double until);
    void arm();

    std::vector<Waiting> waiting;
    QTimer timer;
    std::optional<double> heldTime;
};

} // namespace marrowfin::chrome
