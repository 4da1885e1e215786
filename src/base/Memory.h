// How the process keeps the memory that it no longer uses.
#pragma once

namespace marrowfin {

// Captures come and go by tens of megabytes. Left alone, the allocator takes the first of them as a reason to
// keep freed memory of that size for ever after; from here on everything large goes back to the system when
// it is freed. Main thread, once, before anything large.
void giveLargeMemoryBack();

// Small things come and go in between, and what stays keeps the pages around it. Whoever has let go of a
// window or finished with a capture says so; once nobody has for a moment, what is free goes back to the
// system, which takes a millisecond or two. Main thread.
void giveFreeMemoryBackWhenCalm();

} // namespace marrowfin
