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

std::optional<LaunchMode> launchMode(const QStringList& arguments) {
    for (const Flag& candidate : flags)
        if (arguments.contains(QLatin1String(candidate.text)))
            return candidate.mode;
    return std::nullopt;
}

QString flag(LaunchMode mode) {
    for (const Flag& candidate : flags)
        if (candidate.mode == mode)
            return QLatin1String(candidate.text);
    return {};
}

} // namespace marrowfin::app
