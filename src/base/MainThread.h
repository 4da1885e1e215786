// The main thread's event loop, from any thread.
#pragma once

#include <functional>

namespace marrowfin {

// Runs the block from the main thread's event loop, in the order of the calls; from any thread. Dropped, in
// the caller's thread, when there is no application; what still waits when the application goes is destroyed
// with it.
void postToMain(std::function<void()> block);
bool isMainThread();

} // namespace marrowfin
