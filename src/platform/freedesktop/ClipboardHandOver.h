// At the end of the process: asks the clipboard manager, if one runs, to keep what we offer, and serves it
// for a moment while it does. The toolkit would do so on its own, but waits five seconds for managers that
// never answer because they took their copy when it was made. Main thread.
#pragma once

namespace marrowfin::freedesktop {

void handOverClipboard();

} // namespace marrowfin::freedesktop
