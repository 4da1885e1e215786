// Which of the program's modes the command line asks for. Pure.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

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

// The first flag of the fixed order that any element of the list, the program's path included, equals
// exactly. Nothing: the normal application.
std::optional<LaunchMode> launchMode(const QStringList& arguments);
QString flag(LaunchMode mode);

} // namespace marrowfin::app
