// At the end of the process: asks the clipboard manager, if one runs, to keep what we offer, and serves it
// for a moment while it does. The toolkit would do so on its own, but waits five seconds for managers that
// never answer because they took their copy when it was made. Main thread.
#pragma once

#include "platform/x11/server/Connection.h"

namespace marrowfin::x11 {

// Whether a manager can have taken its copy already: what was offered just now, it gets more time for.
enum class Offered { Before, JustNow };

// Whether the server agrees that the clipboard is ours; the toolkit only remembers having asked for it.
bool ownsClipboard(const Connection& connection);

// The connection is the toolkit's.
void handOverClipboard(const Connection& connection, Offered offered);

} // namespace marrowfin::x11
