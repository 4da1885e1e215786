#include "settings/PostCaptureAction.h"

namespace marrowfin::settings {

QString rawValue(PostCaptureAction action) {
    switch (action) {
    case PostCaptureAction::openEditor:
        return QStringLiteral("Open Editor");
    case PostCaptureAction::copyToClipboard:
        return QStringLiteral("Copy to Clipboard");
    case PostCaptureAction::saveToFile:
        return QStringLiteral("Save to File");
    }
    return {};
}

std::optional<PostCaptureAction> postCaptureAction(const QString& raw) {
    for (const PostCaptureAction action : allPostCaptureActions)
        if (rawValue(action) == raw)
            return action;
    return std::nullopt;
}

} // namespace marrowfin::settings
