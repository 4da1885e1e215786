// One of the non-interactive modes: it builds no status item and takes no hot key. Main thread.
#pragma once

#include "app/LaunchMode.h"
#include "base/Flow.h"

#include <memory>
#include <optional>

namespace marrowfin::app {

class Runtime;

class Mode {
public:
    Mode() = default;
    virtual ~Mode() = default;
    Mode(const Mode&) = delete;
    Mode& operator=(const Mode&) = delete;

    // Comes first. A mode that needs no display does its work here, in its own words, and returns the status
    // to end with; nothing: it needs one.
    virtual std::optional<int> runWithoutDesktop() { return std::nullopt; }
    // The display that it needs can't be had: its own words, and the status to end with.
    virtual int desktopMissing(const Error& error);
    // Begins once the main loop runs. Ends the process by Runtime::finish(); when the loop is left otherwise,
    // the next flag is tested.
    virtual Flow<> run(Runtime* runtime);
};

// What the program has for this mode.
std::unique_ptr<Mode> makeMode(LaunchMode mode);

} // namespace marrowfin::app
