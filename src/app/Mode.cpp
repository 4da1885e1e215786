#include "app/Mode.h"

#include "app/Runtime.h"
#include "base/Log.h"

namespace marrowfin::app {

namespace {

class UnbuiltMode : public Mode {
public:
    explicit UnbuiltMode(LaunchMode mode) : mode(mode) {}

    std::optional<int> runWithoutDesktop() override {
        printLine(QStringLiteral("%1 isn't built yet.").arg(flag(mode)));
        return 1;
    }

private:
    LaunchMode mode;
};

} // namespace

int Mode::desktopMissing(const Error& error) {
    printLine(error.message);
    return 1;
}

Flow<> Mode::run(Runtime* runtime) {
    runtime->finish(0);
    co_return;
}

std::unique_ptr<Mode> makeMode(LaunchMode mode) {
    return std::make_unique<UnbuiltMode>(mode);
}

} // namespace marrowfin::app
