// How the process keeps the memory that it no longer uses. Main thread, once, before anything large.
#pragma once

namespace marrowfin {

// Captures come and go by tens of megabytes. Left alone, the allocator takes the first of them as a reason to
// keep freed memory of that size for ever after; from here on everything large goes back to the system when
// it is freed.
void giveLargeMemoryBack();

} // namespace marrowfin
