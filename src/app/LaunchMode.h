// Which of the program's modes the command line asks for. Pure.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace marrowfin::app {

enum class LaunchMode {
    selfTest,
    panelPreview,
    editorProof,
    cropProof,
    editorUIProof,
    ocrUIProof,
    heroDemo,
    blurDemo,
    cropDemo,
};

// Those whose flag any element of the list, the program's path included, equals exactly; in the fixed order
// in which they are tested. None: the normal application.
std::vector<LaunchMode> launchModes(const QStringList& arguments);
QString flag(LaunchMode mode);

} // namespace marrowfin::app
