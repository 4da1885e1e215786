// Where the files lie that cards are dragged out as. Main thread.
#pragma once

#include <QString>

namespace marrowfin::panel {

// Below the temporary folder, our own, not a link; another name where a stranger has taken that one, and
// where both are taken a private folder of this run, which goes at its end. Made if it isn't there.
QString dragExportFolder();
bool isOursAlone(const QString& folder);
// Takes out what is older than an hour.
void pruneDragExports(const QString& folder);
// Takes out what earlier runs couldn't, because they were killed. Any thread.
void removeDragExportLeftovers(const QString& temporaryFolder);

} // namespace marrowfin::panel
