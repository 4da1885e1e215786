// A reader of our standard output or error that went away doesn't end the program; its lines are lost.
#pragma once

namespace marrowfin {

// At start, once, before the first line.
void outliveReaders();

} // namespace marrowfin
