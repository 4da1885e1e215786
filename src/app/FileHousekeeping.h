// What is done about files when the program starts and when it ends. Main thread.
#pragma once

#include <chrono>

namespace marrowfin::app {

// At start: takes out, on a queue, what runs that were killed have left half-written.
void clearLeftovers();
// At the end: waits until history, captures that become files and settings are whole, no longer than this in
// all. False when the time was up: a disk hangs, and the process may only end without destructors, which
// would wait for it.
bool finishFiles(std::chrono::milliseconds patience);

} // namespace marrowfin::app
