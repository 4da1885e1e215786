#include "app/LaunchMode.h"

#include <array>

namespace marrowfin::app {

namespace {
struct Flag {
    LaunchMode mode;
    const char* text;
};
// In the order in which they are tested.
constexpr std::array flags{
    Flag{LaunchMode::selfTest, "--self-test"},
    Flag{LaunchMode::panelPreview, "--panel-preview"},
    Flag{LaunchMode::editorProof, "--editor-proof"},
    Flag{LaunchMode::cropProof, "--crop-proof"},
    Flag{LaunchMode::editorUIProof, "--editor-ui-proof"},
    Flag{LaunchMode::ocrUIProof, "--ocr-ui-proof"},
    Flag{LaunchMode::heroDemo, "--hero-demo"},
    Flag{LaunchMode::blurDemo, "--blur-demo"},
    Flag{LaunchMode::cropDemo, "--crop-demo"},
};
} // namespace

std::vector<LaunchMode> launchModes(const QStringList& arguments) {
    std::vector<LaunchMode> asked;
    for (const Flag& candidate : flags)
        if (arguments.contains(QLatin1String(candidate.text)))
            asked.push_back(candidate.mode);
    return asked;
}

QString flag(LaunchMode mode) {
    for (const Flag& candidate : flags)
        if (candidate.mode == mode)
            return QLatin1String(candidate.text);
    return {};
}

} // namespace marrowfin::app
