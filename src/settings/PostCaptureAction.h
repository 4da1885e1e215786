// Where a finished capture goes, besides the clipboard and the history. Values; any thread.
#pragma once

#include <QString>
#include <array>
#include <optional>

namespace marrowfin::settings {

enum class PostCaptureAction { openEditor, copyToClipboard, saveToFile };

// In the order in which they are offered.
inline constexpr std::array allPostCaptureActions{
    PostCaptureAction::openEditor, PostCaptureAction::copyToClipboard, PostCaptureAction::saveToFile};

// At once the stored form and the title on screen: a change of wording is a change of file format.
QString rawValue(PostCaptureAction action);
// Nothing for an unknown string.
std::optional<PostCaptureAction> postCaptureAction(const QString& rawValue);

} // namespace marrowfin::settings
